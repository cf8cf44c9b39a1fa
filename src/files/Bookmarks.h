#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include "files/BookmarkText.h"
#include "files/FileWatch.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// Where browsers keep their bookmarks below a home folder.
struct BookmarkPlaces {
  QString home;
  QString configHome;
  QString dataHome;
};

/// The bookmarks of the browsers that are installed, read-only. Nothing is read before the first question; then their
/// files are watched. Main thread only.
class Bookmarks final : public QObject {
  Q_OBJECT
 public:
  /// A file that is larger than this many bytes is not read.
  static constexpr qint64 kMostBytes = 24LL * 1024 * 1024;

  /// `scheduler` must outlive it.
  Bookmarks(BookmarkPlaces places, Scheduler& scheduler, QObject* parent = nullptr);

  /// Each address once, in the order of the browsers. Empty until `changed`, if it was never asked for.
  const QList<Bookmark>& list();
  /// Shows this list and reads nothing, for pictures.
  void setFixed(const QList<Bookmark>& list);
  bool loaded() const { return loaded_; }

  /// Where there may be a bookmark file; the profiles of browsers are looked for. Blocks.
  static QStringList files(const BookmarkPlaces& places);
  /// The bookmarks of these files. Blocks.
  static QList<Bookmark> read(const QStringList& files, const std::stop_token& stop = {});

 Q_SIGNALS:
  void changed();

 private:
  void load();

  struct Read {
    QStringList files;
    QList<Bookmark> list;
  };

  BookmarkPlaces places_;
  FileWatch watch_;
  QList<Bookmark> list_;
  bool asked_ = false;
  bool loaded_ = false;
  LatestWork work_;
};

}  // namespace tarnwick
