#pragma once

#include <QObject>

#include "base/Scheduler.h"
#include "desktop/HeldModifiers.h"

namespace tarnwick {

/// When the apps of the dock show the numbers of their keys: a moment after Super went down by itself, until it is let
/// go or anything else is pressed. Main thread only.
class AppNumbers final : public QObject {
  Q_OBJECT
 public:
  static constexpr double kDelay = 0.3;  ///< Seconds.

  /// Both must outlive it.
  AppNumbers(Scheduler& scheduler, HeldModifiers& modifiers);
  ~AppNumbers() override;

  /// Whether the apps have keys at all. Without them nothing is asked of the desktop.
  void setOn(bool on);
  bool areShown() const { return shown_; }
  /// A key was pressed with what is held: that is what it was held for.
  void hide();

 Q_SIGNALS:
  /// areShown() is another.
  void changed();

 private:
  void take(quint32 modifiers);
  void show(bool shown);

  Scheduler& scheduler_;
  HeldModifiers& modifiers_;
  JobHandle due_;
  quint32 held_ = 0;
  bool on_ = false;
  bool shown_ = false;
};

}  // namespace tarnwick
