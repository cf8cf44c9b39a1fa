#pragma once

#include <QObject>
#include <optional>

#include "base/Scheduler.h"

namespace tarnwick {

class AppStore;
class ContrastPreference;
class Toggles;

/// Combines the desktop's answers about light, dark and contrast with the user's settings, for DesktopLook and the
/// toolkit's palette. Main thread only; all outlive it.
class Appearance final : public QObject {
  Q_OBJECT
 public:
  Appearance(AppStore& store, const Toggles& toggles, const ContrastPreference& contrast);

  /// Applies what holds at the moment; a change of the layout does the same.
  void apply();
  /// The desktop's later answers change nothing any more.
  void stop();
  /// Whether menus and windows are dark.
  bool isDark() const { return isDark_.value_or(true); }

 Q_SIGNALS:
  /// DesktopLook is another; the palette follows.
  void lookChanged();

 private:
  void switchesChanged();
  void applyLook();

  AppStore& store_;
  const Toggles& toggles_;
  const ContrastPreference& contrast_;
  JobHandle switchesAnswer_;
  std::optional<bool> isDark_;
  bool switchesAnswered_ = false;  ///< Whether the desktop had the time to report its switches.
};

}  // namespace tarnwick
