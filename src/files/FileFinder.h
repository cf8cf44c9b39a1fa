#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <stop_token>

#include "base/Scheduler.h"
#include "files/FolderReading.h"
#include "files/LatestWork.h"

namespace tarnwick {

/// Looks for files and folders by their names below a folder, on another thread, a moment after the last key. Main
/// thread only.
class FileFinder final : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype most = 12;
  static constexpr qsizetype leastLetters = 2;
  /// Seconds between the last key and the search.
  static constexpr double kPatience = 0.15;
  /// How many names one search looks at.
  static constexpr qsizetype kMostNames = 400'000;

  /// `scheduler` must outlive it.
  FileFinder(const QString& folder, Scheduler& scheduler, QObject* parent = nullptr);

  /// Looks for what is written in a field; too short a text finds nothing at once.
  void find(const QString& text);
  const QList<FolderEntry>& found() const { return found_; }
  /// Whether a search is still to end.
  bool busy() const { return waiting_ || work_.busy(); }

  /// The things below `folder` whose names hold `text`, whatever the case and the accents: names that begin with it
  /// first, then those that lie less deep, then the latest. Hidden folders are left out. Blocks.
  static QList<FolderEntry> search(const QString& folder, const QString& text, const std::stop_token& stop = {});

 Q_SIGNALS:
  void changed();

 private:
  void start(const QString& text);

  QString folder_;
  Scheduler& scheduler_;
  QList<FolderEntry> found_;
  JobHandle waiting_;
  LatestWork work_;
};

}  // namespace tarnwick
