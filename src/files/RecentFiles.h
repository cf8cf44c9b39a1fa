#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <stop_token>

#include "files/FileWatch.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// A file that the user has had open.
struct RecentFile {
  QString path;
  QDateTime used;

  bool operator==(const RecentFile&) const = default;
};

/// The files that the user had open lately, as applications list them in the desktop's shared list. Nothing is
/// read before the first question; then the list is watched. Main thread only.
class RecentFiles final : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype most = 60;
  /// A list that is larger than this many bytes is not read.
  static constexpr qint64 kMostBytes = 8LL * 1024 * 1024;

  /// Where the desktop's list lies.
  static QString sharedList();

  /// `file`: the shared list; `scheduler` must outlive it.
  RecentFiles(const QString& file, Scheduler& scheduler, QObject* parent = nullptr);

  /// The latest first, only what is still there. Empty until `changed`, if it was never asked for.
  const QList<RecentFile>& list();
  /// Shows this list and reads nothing, for pictures.
  void setFixed(const QList<RecentFile>& list);
  bool loaded() const { return loaded_; }

  /// Everything in the text of a list that may be shown, the latest first. Of a broken one what is before the
  /// fault.
  static QList<RecentFile> parse(const QByteArray& text);
  /// The paths in a list that lies there, the latest first, whether they are still there or not. Blocks; any thread may
  /// ask.
  static QStringList paths(const QString& file);

 Q_SIGNALS:
  void changed();

 private:
  void read();

  QString file_;
  FileWatch watch_;
  QList<RecentFile> list_;
  bool asked_ = false;
  bool loaded_ = false;
  LatestWork work_;
};

}  // namespace tarnwick
