#pragma once

#include <QString>
#include <QVariant>
#include <functional>
#include <optional>
#include <utility>

#include "config/DockLayout.h"
#include "dock/ports/DockGuard.h"
#include "dock/ports/DockPreferenceAccess.h"

namespace tarnwick {

/// Takes the screen's edge from the system's own dock while a layout wants it, and gives it back. The user's values are
/// on the disk before the first one is changed, and the file goes only after they are back; whatever happens in
/// between, the next start (or the guard) finishes the work. Main thread only.
class NativeDockState {
 public:
  /// A recovery file that an earlier run left in `directory` is used at once. Never fails: what went wrong is
  /// `recoveryError`. The access and the guard are borrowed.
  NativeDockState(const QString& directory, DockPreferenceAccess& preferences, DockGuard* guard = nullptr);
  ~NativeDockState();
  NativeDockState(const NativeDockState&) = delete;
  NativeDockState& operator=(const NativeDockState&) = delete;

  /// Makes the system's dock fit a layout; nothing to do when it does already. Throws DomainError.
  void apply(DockLayout layout);
  /// Puts the user's values back, if they are changed. Throws DomainError; then nothing is forgotten.
  void restore();
  /// Unsets both preferences. Whether that reached the disk.
  static bool resetToSystemDefaults(DockPreferenceAccess& preferences);

  static QString recoveryFile(const QString& directory);

  /// The user's values, exactly while a change may be in effect.
  const std::optional<QVariantMap>& original() const { return original_; }
  /// The layout last applied; absent after a start and after a restore.
  std::optional<DockLayout> current() const { return current_; }
  /// Why the recovery file of an earlier run cannot be used; blocks `apply`.
  const std::optional<QString>& recoveryError() const { return recoveryError_; }

  /// Once for each layout and reason, after a hiding layout was applied where the dock cannot be hidden as it asks: the
  /// sentence that says so.
  std::optional<QString> takeNotice() { return std::exchange(notice_, std::nullopt); }

  /// Called when a dock came up after ours had looked for one, and the layout is to be applied again. What was changed
  /// before is given back by then; where that failed, `apply` begins with it and says why it cannot.
  void setNeedsApply(std::function<void()> needsApply) { needsApply_ = std::move(needsApply); }

 private:
  void recover();
  void takeSnapshot();
  void hide(DockLayout layout);
  void dockAppeared();

  QString directory_;
  QString file_;
  DockPreferenceAccess& preferences_;
  DockGuard* guard_;
  std::optional<QVariantMap> original_;
  std::optional<DockLayout> current_;
  std::optional<QString> recoveryError_;
  std::optional<QString> notice_;
  std::pair<DockLayout, QString> lastNotice_;
  bool givesBackFirst_ = false;  // The docks changed, and what is recorded is of those before.
  std::function<void()> needsApply_;
};

}  // namespace tarnwick
