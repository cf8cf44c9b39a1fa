#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "base/Scheduler.h"
#include "files/MappedNames.h"
#include "files/NameWatch.h"

namespace tarnwick {

/// Keeps an index of the names below a folder in a file, for as long as somebody looks for files there. All of it is
/// done while the machine has nothing else to do, and only between opened() and closed(): then there is neither a
/// thread nor a watch nor a map. What was not done goes on the next time. A file that is missing or damaged is made
/// anew; one that cannot be written is done without. Main thread only.
class NameIndexKeeper final : public QObject {
  Q_OBJECT
 public:
  /// So many seconds lie between the beginnings of two walks, unless one was ended before it was done.
  static constexpr double kBetweenWalks = 60;
  /// On battery only folders are looked at that were changed within so many days.
  static constexpr int kDaysOnBattery = 30;
  /// So many changes are remembered while the bar is open.
  static constexpr qsizetype kMostChanges = 200;

  /// `root`: the folder, as the system writes its path. `clock` must outlive this. `isOnBattery` may be left out. It is
  /// asked before each walk, on another thread, where it may block, and holds all that it touches.
  NameIndexKeeper(const QString& file, const QByteArray& root, const Scheduler& clock,
                  std::function<bool()> isOnBattery = {}, QObject* parent = nullptr);
  /// Waits for nothing.
  ~NameIndexKeeper() override;

  /// Whether there is to be an index, as there is at the beginning. Otherwise its file is removed.
  void setOn(bool on);
  /// Somebody begins to look for files, and is done with it.
  void opened();
  void closed();

  /// Whether files are not found because the first walk has not come to them yet.
  bool isGrowing() const { return isGrowing_; }
  /// Whether something is done, or is to be done, on another thread.
  bool isBusy() const { return jobs_ > 0; }
  /// What searches use.
  const std::shared_ptr<MappedNames>& names() const { return names_; }
  /// What came or was saved in watched folders since opened(), the latest first.
  QStringList changes() const { return changes_; }
  /// The folders that are watched.
  qsizetype watched() const { return watch_ ? watch_->size() : 0; }

 Q_SIGNALS:
  void growingChanged();
  /// Nothing is done on another thread any more.
  void rested();

 private:
  struct Disk;
  struct Look;
  struct Walked;

  void begin();
  void end();
  void prepareNames();
  void lookAround(bool isBeforeWalk);
  void walk(bool isWhole);
  void took(std::shared_ptr<NameWatch> watch);
  void noteChanges();
  void setGrowing(bool growing);
  /// Does `work` on another thread, in order, and then `done` here with what it gave.
  template <class Work, class Done>
  void start(Work work, Done done);

  const Scheduler& clock_;
  std::function<bool()> isOnBattery_;
  std::shared_ptr<Disk> disk_;
  std::shared_ptr<MappedNames> names_;
  std::shared_ptr<NameIndexKeeper*> self_;  ///< Null inside once this is gone.
  bool isOn_ = true;
  bool isRemoved_ = false;  ///< Whether the file was removed since it was last to be there.
  bool isOpen_ = false;
  bool isGrowing_ = false;
  int jobs_ = 0;
  quint64 opening_ = 0;
  std::stop_source stop_;           ///< Of the latest opening.
  std::optional<double> lastWalk_;  ///< When the last one began that needs not be gone on with.
  std::shared_ptr<NameWatch> watch_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QStringList changes_;
};

}  // namespace tarnwick
