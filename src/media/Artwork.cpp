#include "media/Artwork.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <array>

#include "base/SmallFile.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kHost = "i.scdn.co"_L1;
constexpr qint64 kMostPixels = 40'000'000;
/// What is drawn by instructions is no picture here: it would take what time its author likes.
constexpr std::array kFormats = {"png", "jpeg", "webp", "gif", "bmp", "tiff"};

}  // namespace

bool Artwork::mayFetch(const QUrl& address) { return address.scheme() == "https"_L1 && address.host() == kHost; }

bool Artwork::isLocal(const QUrl& address) { return address.isLocalFile() && address.host().isEmpty(); }

std::optional<Artwork::Picture> Artwork::decode(const QByteArray& bytes) {
  if (bytes.isEmpty() || bytes.size() > kMostBytes) return std::nullopt;
  QByteArray content = bytes;
  QBuffer buffer(&content);
  buffer.open(QIODevice::ReadOnly);
  const QByteArray format = QImageReader::imageFormat(&buffer);
  if (std::ranges::none_of(kFormats, [&](const char* known) { return format == known; })) return std::nullopt;
  QImageReader reader(&buffer, format);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.isEmpty() || qint64{size.width()} * size.height() > kMostPixels) return std::nullopt;
  if (size.width() > kPixels || size.height() > kPixels)
    reader.setScaledSize(size.scaled(kPixels, kPixels, Qt::KeepAspectRatio).expandedTo({1, 1}));
  const QImage image = reader.read();
  if (image.isNull()) return std::nullopt;
  return Picture{bytes, image.convertToFormat(QImage::Format_ARGB32_Premultiplied)};
}

std::optional<Artwork::Picture> Artwork::read(const QUrl& file) {
  const auto bytes = SmallFile::read(file.toLocalFile(), kMostBytes);
  return bytes ? decode(*bytes) : std::nullopt;
}

}  // namespace tarnwick
