#pragma once

#include <QDBusPendingCallWatcher>
#include <memory>

#include "platform/docks/DockBackend.h"

namespace tarnwick {

/// The panels of KDE Plasma at the bottom edge, through the shell's script interface. A place is a panel's number, its
/// one setting is how it hides. Plasma knows no delay before a panel comes out. Where a call of `put` was not answered
/// in time, nothing more is asked until after the next `flush`: a shell that hangs costs one wait, however many panels
/// it has.
class PlasmaPanel final : public DockBackend {
 public:
  QList<DockSetting> own(DockPreference preference) override;
  QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) override;
  /// A panel that hides comes out at the edge without any delay.
  bool staysAway() const override { return false; }
  bool knows(DockPreference preference, const DockSetting& setting) const override;
  bool put(const DockSetting& setting, const QList<DockValue>& over) override;
  bool flush() override;
  /// The shell makes its panels after it has its name.
  bool comesAfterItsName() const override { return true; }
  void askWhetherItAnswers(const std::function<void(bool answers)>& answer) override;
  void askWhetherThere(std::function<void(bool isThere)> answer) override;

 private:
  QList<DockSetting> pending_;
  bool isSilent_ = false;  ///< It has let a call wait since the last `flush`.
  std::unique_ptr<QDBusPendingCallWatcher> question_;
  std::unique_ptr<QDBusPendingCallWatcher> call_;  ///< Whether anybody answers it.
};

}  // namespace tarnwick
