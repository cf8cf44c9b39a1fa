#pragma once

#include <QObject>

#include "app/Autostart.h"

namespace tarnwick {

class AppStore;

/// Start at login: keeps the setting true to the entry that lets the session start the program, and the entry to the
/// switch. The switch, or its undo, is all that writes the entry. Main thread only; the store outlives it.
class LoginEntry final : public QObject {
  Q_OBJECT
 public:
  LoginEntry(AppStore& store, Autostart entry);

  /// Shows the switch as the entry is, and follows it from then on.
  void follow();
  /// The switch writes nothing any more.
  void stop();
  /// Whether the entry is one that the switch may write.
  Capability capability() const { return entry_.capability(); }

 private:
  void applySwitch();

  AppStore& store_;
  Autostart entry_;
  bool launchesAtLogin_ = false;
  bool isFollowed_ = false;
};

}  // namespace tarnwick
