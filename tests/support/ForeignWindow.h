#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QList>
#include <QRect>

#include "support/VirtualDisplay.h"

namespace tarnwick::testing {

/// A bare window of another program: undecorated, of one colour, counting the clicks that reach it.
class ForeignWindow {
 public:
  ForeignWindow(VirtualDisplay& display, const QRect& frame, quint32 colour = 0x336699);
  ~ForeignWindow();

  xcb_window_t id() const { return window_; }
  void setWords(const char* property, const char* type, const QList<quint32>& words);
  void setText(const char* property, const char* type, const QByteArray& text);
  /// Shows it and waits until it is on the screen.
  bool show();
  /// Asks the window manager to add a state of _NET_WM_STATE.
  void addState(const char* first, const char* second = nullptr);
  /// Asks the window manager to move it.
  void moveTo(QPoint corner);
  QRect frame() const { return display_.frame(window_); }
  /// Presses of a button that reached it so far.
  int clicks() { return display_.clicksOn(window_); }

 private:
  VirtualDisplay& display_;
  xcb_window_t window_;
};

}  // namespace tarnwick::testing
