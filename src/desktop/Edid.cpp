#include "desktop/Edid.h"

#include <numeric>

namespace tarnwick {
namespace {

constexpr qsizetype kBlockSize = 128;
constexpr qsizetype kDescriptors[] = {54, 72, 90, 108};
constexpr quint8 kSerialText = 0xff;
constexpr quint8 kModelText = 0xfc;

quint8 at(const QByteArray& bytes, qsizetype index) { return static_cast<quint8>(bytes[index]); }

bool isIntact(const QByteArray& bytes) {
  if (bytes.size() < kBlockSize || !bytes.startsWith(QByteArray("\x00\xff\xff\xff\xff\xff\xff\x00", 8))) return false;
  const int sum = std::accumulate(bytes.begin(), bytes.begin() + kBlockSize, 0,
                                  [](int total, char byte) { return total + static_cast<quint8>(byte); });
  return sum % 256 == 0;
}

// Two bytes, the high one first: a clear bit and three letters of five bits, 1 for A.
QString makerOf(const QByteArray& bytes) {
  const int packed = at(bytes, 8) << 8 | at(bytes, 9);
  QString letters;
  for (const int shift : {10, 5, 0}) {
    const int letter = packed >> shift & 0x1f;
    if (letter < 1 || letter > 26) return {};
    letters += QChar(u'A' + letter - 1);
  }
  return letters;
}

QString descriptorText(const QByteArray& bytes, quint8 tag) {
  for (const qsizetype start : kDescriptors) {
    const bool isText = at(bytes, start) == 0 && at(bytes, start + 1) == 0 && at(bytes, start + 2) == 0;
    if (!isText || at(bytes, start + 3) != tag) continue;
    QByteArray text = bytes.mid(start + 5, 13);
    if (const qsizetype end = text.indexOf('\n'); end >= 0) text.truncate(end);
    if (const qsizetype end = text.indexOf('\0'); end >= 0) text.truncate(end);
    return QString::fromLatin1(text).trimmed();
  }
  return {};
}

}  // namespace

std::optional<Edid> Edid::parse(const QByteArray& bytes) {
  if (!isIntact(bytes)) return std::nullopt;
  Edid edid;
  edid.maker = makerOf(bytes);
  if (edid.maker.isEmpty()) return std::nullopt;
  edid.product = static_cast<quint16>(at(bytes, 10) | at(bytes, 11) << 8);
  edid.serial = descriptorText(bytes, kSerialText);
  if (edid.serial.isEmpty()) {
    quint32 number = 0;
    for (const qsizetype index : {15, 14, 13, 12}) number = number << 8 | at(bytes, index);
    if (number != 0) edid.serial = QString::number(number);
  }
  edid.model = descriptorText(bytes, kModelText);
  return edid;
}

}  // namespace tarnwick
