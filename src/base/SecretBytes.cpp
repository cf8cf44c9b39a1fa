#include "base/SecretBytes.h"

#include <QStringConverter>
#include <cstring>

namespace tarnwick {

SecretBytes::SecretBytes(const QString& text) {
  QStringEncoder encoder(QStringEncoder::Utf8);
  bytes_.resize(static_cast<std::size_t>(encoder.requiredSpace(text.size())));
  const char* end = encoder.appendToBuffer(bytes_.data(), text);
  shorten(static_cast<std::size_t>(end - bytes_.data()));
}

SecretBytes& SecretBytes::operator=(SecretBytes&& other) noexcept {
  if (this == &other) return *this;
  wipe();
  bytes_ = std::move(other.bytes_);
  return *this;
}

SecretBytes::~SecretBytes() { wipe(); }

void SecretBytes::wipe() {
  // An optimiser leaves this one in.
  if (!bytes_.empty()) explicit_bzero(bytes_.data(), bytes_.size());
}

void SecretBytes::shorten(std::size_t size) {
  if (size >= bytes_.size()) return;
  explicit_bzero(bytes_.data() + size, bytes_.size() - size);
  bytes_.resize(size);
}

std::optional<QString> SecretBytes::text() const {
  // A mark of the byte order belongs to the secret, and a sequence that breaks off at the end is an error.
  QStringDecoder decoder(QStringDecoder::Utf8,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  QString text = decoder.decode(view());
  if (!decoder.hasError()) return text;
  wipe(text);
  return std::nullopt;
}

void SecretBytes::wipe(QString& text) {
  if (!text.isEmpty() && text.isDetached())
    explicit_bzero(text.data(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
  text.clear();
}

}  // namespace tarnwick
