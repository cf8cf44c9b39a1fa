#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

#include "base/Scheduler.h"
#include "config/ContentJournal.h"
#include "config/DockConfiguration.h"

namespace tarnwick {

/// Keeps the settings file true to the document in memory: writes it in its time after a change, notes what was entered
/// meanwhile in the content journal, and tries again by itself after a failure. Main thread only; borrowed parts
/// outlive it. Nothing here throws.
class SettingsWriter {
 public:
  /// Seconds between two notes in the journal, at least.
  static constexpr double kBetweenNotes = 1;
  static constexpr double kFirstRetry = 5;
  static constexpr double kLongestRetry = 300;

  SettingsWriter(Scheduler& scheduler, const QString& path, std::function<const DockConfiguration&()> document);

  /// Called after each save that was not asked for by `save`: what went wrong, empty when nothing did. `isRepeated`:
  /// the same failure was reported before and only tried again.
  std::function<void(const QString& failure, bool isRepeated)> onSaved;

  /// Bytes that are free in the folder of a file; absent where it is not known. Asked after a save that failed.
  std::function<std::optional<qint64>(const QString& file)> freeBytes;

  /// The loaded document with what a run before had entered and not saved; it is saved soon then.
  DockConfiguration resume(const DockConfiguration& loaded);
  /// Instead of `resume`, where the file could not be loaded and new settings take its place: what was entered is kept
  /// as `content-recovery-<seconds>.json`.
  void keepJournalAside(qint64 unixSeconds);
  /// Instead of `resume`, where there was no file.
  void startAnew();

  /// The document is another.
  void changed(bool layoutChanged);
  /// Writes the document at once; gives what went wrong.
  QString save();
  /// The last save of a run: afterwards nothing is planned.
  QString saveLast();

 private:
  void planSave(double delay);
  void saveByItself(bool isRetry);
  void note();
  void noteNow();
  void compact();
  void planRetry(qint64 bytes);
  void lookAgain();
  bool hasSpace() const;

  Scheduler& scheduler_;
  QString path_;
  std::function<const DockConfiguration&()> document_;
  ContentJournal journal_;

  JobHandle saveWork_;
  double saveDue_ = 0;  // On the reference clock; means something while saveWork_ is there.
  QDateTime lastSave_;

  DockConfiguration written_;  // As the settings file has it.
  DockConfiguration noted_;    // As the settings file and the journal have it together.
  JobHandle noteWork_;
  std::optional<double> lastNote_;  // On the reference clock.

  JobHandle retryWork_;
  QString failure_;  // Of the last save.
  double retryPause_ = kFirstRetry;
  double retryAt_ = 0;  // On the reference clock.
  qint64 needed_ = 0;   // Bytes that the last save needed.
  bool lackedSpace_ = false;
};

}  // namespace tarnwick
