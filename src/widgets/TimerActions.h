#pragma once

#include <QDateTime>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// What the user does to a timer, and what the beat finds when one has ended. Pure: each gives the widget as it is to
/// be stored.
struct TimerActions {
  /// Starts, pauses or goes on. A countdown that has run out starts over.
  static DockWidget toggled(const DockWidget& widget, const QDateTime& at);
  /// Back to the beginning, standing still.
  static DockWidget reset(const DockWidget& widget);

  /// Whether a beat could find something in a widget at all; a cheap question to ask first.
  static bool mayBeat(const DockWidget& widget);

  struct Beat {
    DockWidget widget;
    QString announcement;  ///< For the user; empty when nothing ended.
  };
  /// Moves a running timer on. What has ended is announced by this one beat and by no later one, restarts included.
  /// Also reminds of the next glass of water when its interval has passed.
  static Beat beat(const DockWidget& widget, const QDateTime& at);
};

}  // namespace tarnwick
