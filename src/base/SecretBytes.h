#pragma once

#include <QByteArrayView>
#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

namespace tarnwick {

/// A secret as bytes. There is one of it, which is overwritten when it goes.
class SecretBytes {
 public:
  SecretBytes() = default;
  /// Zeros, to be filled.
  explicit SecretBytes(std::size_t size) : bytes_(size) {}
  /// A text as UTF-8.
  explicit SecretBytes(const QString& text);
  SecretBytes(SecretBytes&& other) noexcept = default;
  SecretBytes& operator=(SecretBytes&& other) noexcept;
  SecretBytes(const SecretBytes&) = delete;
  SecretBytes& operator=(const SecretBytes&) = delete;
  ~SecretBytes();

  bool isEmpty() const { return bytes_.empty(); }
  std::size_t size() const { return bytes_.size(); }
  QByteArrayView view() const { return {bytes_.data(), static_cast<qsizetype>(bytes_.size())}; }
  unsigned char* data() { return reinterpret_cast<unsigned char*>(bytes_.data()); }
  const unsigned char* data() const { return reinterpret_cast<const unsigned char*>(bytes_.data()); }
  /// Drops what is behind the first `size` bytes.
  void shorten(std::size_t size);

  /// Absent where the bytes are no valid UTF-8.
  std::optional<QString> text() const;

  /// Overwrites a text and empties it, unless somebody else holds it too.
  static void wipe(QString& text);

 private:
  void wipe();

  std::vector<char> bytes_;
};

}  // namespace tarnwick
