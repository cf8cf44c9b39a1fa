#pragma once

#include <QCache>
#include <QDateTime>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>
#include <atomic>
#include <memory>

namespace tarnwick {

/// Small pictures of files: those that the desktop's file managers have made and keep in the user's cache, and of
/// pictures without one the picture itself, made small. Reads on another thread; writes nothing. Main thread only.
class Thumbnails final : public QObject {
  Q_OBJECT
 public:
  /// What is kept, in kilobytes of pixels.
  static constexpr int kCacheKilobytes = 12 * 1024;
  /// Requests that wait at most; later ones are not answered.
  static constexpr int kMostWaiting = 300;
  /// Pictures that are larger than this many bytes are not read.
  static constexpr qint64 kMostBytes = 48LL * 1024 * 1024;

  /// `cacheFolder`: the user's cache, which holds the folder "thumbnails".
  explicit Thumbnails(const QString& cacheFolder, QObject* parent = nullptr);
  ~Thumbnails() override;

  /// The picture, at most `pixels` wide and high. Null where there is none or it is not known yet; `ready` reports when
  /// that changes.
  QImage of(const QString& path, const QDateTime& modified, int pixels);

  /// Keeps a picture of a file that is not there, for pictures of the program.
  void setFixed(const QString& path, const QDateTime& modified, int pixels, const QImage& image);

  /// The same without waiting for another thread. Blocks.
  static QImage read(const QString& cacheFolder, const QString& path, const QDateTime& modified, int pixels);
  /// The name under which the cache keeps the picture of a file.
  static QString cacheName(const QString& path);

 Q_SIGNALS:
  /// of() gives more than before.
  void ready();

 private:
  void take(const QString& key, const QImage& image);

  QString cacheFolder_;
  QCache<QString, QImage> cache_;
  QSet<QString> waiting_;
  /// Whether anybody still wants an answer.
  std::shared_ptr<std::atomic<bool>> wanted_ = std::make_shared<std::atomic<bool>>(true);
};

}  // namespace tarnwick
