#pragma once

#include <QString>
#include <QVariant>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/DurableFile.h"
#include "base/HandoverLock.h"
#include "config/DockLayout.h"
#include "dock/ports/DockGuard.h"
#include "dock/ports/DockPreferenceAccess.h"

namespace tarnwick {

/// Takes the screen's edge from the system's own dock while a layout wants it, and gives it back. The user's values are
/// on the disk before the first one is changed, and the file goes only after they are back; whatever happens in
/// between, the next start (or the guard) finishes the work. Other processes may repair at the same time; see
/// docs/handover.md. Main thread only.
class NativeDockState {
 public:
  /// How the work of an earlier run is finished at creation.
  struct Terms {
    /// For how long another process may hold it up. After that `recoveryError` says so, and `apply` tries again.
    std::chrono::milliseconds patience{2000};
    /// Only the recovery file that is open here is used; -1 for whichever is there.
    int file = -1;
    /// A lock that the caller holds; null for one of its own.
    HandoverLock* lock = nullptr;
    /// Whether docks are asked first whether they answer at all, so that one that hangs does not block. What was
    /// found is given back when they do; until then `apply` does nothing, or says why it cannot.
    bool asksFirst = false;
  };

  /// A recovery file that an earlier run left in `directory` is used at once. Never fails: what went wrong is
  /// `recoveryError`. The access and the guard are borrowed.
  NativeDockState(const QString& directory, DockPreferenceAccess& preferences, DockGuard& guard = NoGuard::shared())
      : NativeDockState(directory, preferences, guard, Terms()) {}
  NativeDockState(const QString& directory, DockPreferenceAccess& preferences, DockGuard& guard, Terms terms);
  ~NativeDockState();
  NativeDockState(const NativeDockState&) = delete;
  NativeDockState& operator=(const NativeDockState&) = delete;

  /// Makes the system's dock fit a layout; nothing to do when it does already. Throws DomainError.
  void apply(DockLayout layout);
  /// Puts the user's values back, if they are changed. Throws DomainError; then nothing is forgotten.
  void restore();
  /// The same; after it `apply` leaves the system's dock alone until it is called for another layout than this.
  void restoreUntilChanged(DockLayout layout);
  /// Unsets both preferences. Whether that reached the disk. The caller holds the lock.
  static bool resetToSystemDefaults(DockPreferenceAccess& preferences);

  static QString recoveryFile(const QString& directory);

  /// The user's values, exactly while a change may be in effect.
  const std::optional<QVariantMap>& original() const { return original_; }
  /// The layout last applied; absent after a start and after a restore.
  std::optional<DockLayout> current() const { return current_; }
  /// Why the recovery file of an earlier run cannot be used; blocks `apply`.
  const std::optional<QString>& recoveryError() const { return recoveryError_; }
  /// Whether the last attempt failed only because another process was giving back; the next may go through.
  bool othersAreAtIt() const { return othersAreAtIt_; }

  /// Once for each layout and reason, after a hiding layout was applied where the dock cannot be hidden as it asks: the
  /// sentence that says so.
  std::optional<QString> takeNotice() { return std::exchange(notice_, std::nullopt); }

  /// Called when a dock came up after ours had looked for one, and the layout is to be applied again. What was changed
  /// before is given back by then; where that failed, `apply` begins with it and says why it cannot.
  void setNeedsApply(std::function<void()> needsApply) { needsApply_ = std::move(needsApply); }

 private:
  /// A recovery file as it was read or written; another one of that name belongs to another process.
  struct Record {
    DurableFile::Stamp stamp;
    QByteArray content;

    bool operator==(const Record& other) const {
      return stamp.device == other.stamp.device && stamp.inode == other.stamp.inode && content == other.content;
    }
  };

  HandoverLock::Hold hold();
  void repairEarlierRun(bool asks);
  bool theyAnswer();
  void answered(bool theyAnswer);
  void doNotAnswer();
  void recover(int onlyFile = -1);
  void takeSnapshot();
  void hide(DockLayout layout);
  void giveBack();
  std::optional<Record> recordOnDisk() const;
  void removeRecord();
  void dockAppeared();

  QString file_;
  DockPreferenceAccess& preferences_;
  DockGuard& guard_;
  Terms terms_;
  HandoverLock ownLock_;
  HandoverLock& lock_;
  std::optional<QVariantMap> original_;
  Record record_;  ///< Where `original_` is on the disk.
  std::optional<DockLayout> current_;
  std::optional<DockLayout> leftAlone_;  ///< The layout that `apply` does nothing for.
  std::optional<QString> recoveryError_;
  std::optional<QString> notice_;
  std::pair<DockLayout, QString> lastNotice_;
  bool othersAreAtIt_ = false;
  bool isAsking_ = false;        ///< Docks have been asked whether they answer.
  bool saysFirst_ = false;       ///< They did not, which `apply` is to say before it asks again.
  bool mustRepair_ = false;      ///< What creation is to do has not been done yet.
  bool givesBackFirst_ = false;  ///< The docks changed, and what is recorded is of those before.
  std::function<void()> needsApply_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  ///< For an answer that comes late.
};

}  // namespace tarnwick
