#include "files/Thumbnails.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QImageReader>
#include <QUrl>
#include <algorithm>
#include <array>

#include "base/Background.h"
#include "files/FolderReading.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct CacheSize {
  QLatin1StringView folder;
  int pixels;
};
constexpr std::array kSizes = {CacheSize{"normal"_L1, 128}, CacheSize{"large"_L1, 256}, CacheSize{"x-large"_L1, 512},
                               CacheSize{"xx-large"_L1, 1024}};

QString keyOf(const QString& path, const QDateTime& modified, int pixels) {
  return u"%1|%2|%3"_s.arg(path).arg(modified.toSecsSinceEpoch()).arg(pixels);
}

QByteArray addressOf(const QString& path) {
  return "file://" + QUrl::toPercentEncoding(path, QByteArrayLiteral("!$&'()*+,:=@/"));
}

/// The folders of the cache, the best for a size first: the least that is large enough, then larger ones, then smaller.
QStringList foldersFor(int pixels) {
  QStringList enough;
  QStringList small;
  for (const CacheSize& size : kSizes) size.pixels >= pixels ? enough.append(size.folder) : small.prepend(size.folder);
  return enough + small;
}

QImage fitted(const QImage& image, int pixels) {
  if (image.isNull() || (image.width() <= pixels && image.height() <= pixels)) return image;
  return image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage fromCache(const QString& cacheFolder, const QString& path, const QDateTime& modified, int pixels) {
  const QString name = Thumbnails::cacheName(path);
  for (const QString& folder : foldersFor(pixels)) {
    const QString file = u"%1/thumbnails/%2/%3"_s.arg(cacheFolder, folder, name);
    if (!QFileInfo(file).isFile()) continue;
    QImageReader reader(file, "png");
    const QImage image = reader.read();
    // One of an older state of the file shows what it is no more.
    if (image.isNull() || image.text(u"Thumb::MTime"_s).toLongLong() != modified.toSecsSinceEpoch()) continue;
    return fitted(image, pixels);
  }
  return {};
}

QImage fromPicture(const QString& path, int pixels) {
  const QFileInfo info(path);
  // A pipe with the name of a picture would never end.
  if (!FolderReading::isPicture(path) || !info.isFile() || info.size() > Thumbnails::kMostBytes) return {};
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (const QSize size = reader.size(); size.isValid() && (size.width() > pixels || size.height() > pixels))
    reader.setScaledSize(size.scaled(pixels, pixels, Qt::KeepAspectRatio).expandedTo({1, 1}));
  return fitted(reader.read(), pixels);
}

/// Most formats are decoded whole before they are made small.
bool isLarge(const QString& path) {
  constexpr qint64 kMuch = 1024 * 1024;
  const QSize size = QImageReader(path).size();
  return qint64{size.width()} * size.height() > kMuch;
}

}  // namespace

Thumbnails::Thumbnails(const QString& cacheFolder, QObject* parent)
    : QObject(parent), cacheFolder_(cacheFolder), cache_(kCacheKilobytes) {}

Thumbnails::~Thumbnails() { *wanted_ = false; }

QImage Thumbnails::of(const QString& path, const QDateTime& modified, int pixels) {
  const QString key = keyOf(path, modified, pixels);
  if (const QImage* known = cache_.object(key)) return *known;
  if (waiting_.contains(key) || waiting_.size() >= kMostWaiting) return {};
  waiting_.insert(key);
  Background::run(Background::Lane::Pictures,
                  [this, key, path, modified, pixels, folder = cacheFolder_, wanted = wanted_] {
                    if (!*wanted) return;
                    const QImage image = read(folder, path, modified, pixels);
                    if (!image.isNull() && isLarge(path)) Background::giveBackMemory();
                    Background::answer([this, key, image, wanted] {
                      if (*wanted) take(key, image);
                    });
                  });
  return {};
}

void Thumbnails::setFixed(const QString& path, const QDateTime& modified, int pixels, const QImage& image) {
  take(keyOf(path, modified, pixels), image);
}

void Thumbnails::take(const QString& key, const QImage& image) {
  waiting_.remove(key);
  // What has no picture is remembered too, so that it is not looked for again.
  cache_.insert(key, new QImage(image), std::max<qsizetype>(1, image.sizeInBytes() / 1024));
  if (!image.isNull()) Q_EMIT ready();
}

QImage Thumbnails::read(const QString& cacheFolder, const QString& path, const QDateTime& modified, int pixels) {
  const QImage kept = fromCache(cacheFolder, path, modified, pixels);
  return kept.isNull() ? fromPicture(path, pixels) : kept;
}

QString Thumbnails::cacheName(const QString& path) {
  return QString::fromLatin1(QCryptographicHash::hash(addressOf(path), QCryptographicHash::Md5).toHex()) + u".png"_s;
}

}  // namespace tarnwick
