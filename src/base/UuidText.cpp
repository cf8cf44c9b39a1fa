#include "base/UuidText.h"

#include <array>

namespace tarnwick {
namespace {

constexpr qsizetype kLength = 36;
constexpr size_t kBytes = 16;

int hexDigit(char16_t character) {
  if (character >= u'0' && character <= u'9') return character - u'0';
  if (character >= u'a' && character <= u'f') return character - u'a' + 10;
  if (character >= u'A' && character <= u'F') return character - u'A' + 10;
  return -1;
}

bool isHyphenPlace(qsizetype place) { return place == 8 || place == 13 || place == 18 || place == 23; }

}  // namespace

QString UuidText::write(const QUuid& id) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  QString text(kLength, u'-');
  QChar* to = text.data();
  for (const char byte : id.toRfc4122()) {
    const qsizetype place = to - text.constData();
    if (isHyphenPlace(place)) ++to;
    *to++ = QLatin1Char(kDigits[static_cast<unsigned char>(byte) >> 4]);
    *to++ = QLatin1Char(kDigits[byte & 15]);
  }
  return text;
}

std::optional<QUuid> UuidText::read(QStringView text) {
  if (text.size() != kLength) return std::nullopt;
  std::array<char, kBytes> bytes;
  size_t filled = 0;
  for (qsizetype i = 0; i < kLength; ++i) {
    if (isHyphenPlace(i)) {
      if (text[i] != u'-') return std::nullopt;
      continue;
    }
    // Hyphens are between whole bytes, so digits come in pairs.
    const int high = hexDigit(text[i].unicode());
    const int low = hexDigit(text[++i].unicode());
    if (high < 0 || low < 0) return std::nullopt;
    bytes[filled++] = static_cast<char>(high << 4 | low);
  }
  return QUuid::fromRfc4122(QByteArrayView(bytes.data(), kBytes));
}

}  // namespace tarnwick
