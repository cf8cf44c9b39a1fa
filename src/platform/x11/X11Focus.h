#pragma once

#include <xcb/xcb.h>

#include <QList>

namespace tarnwick {

class X11Events;

/// The keyboard on loan to a window of ours: it goes back to whoever had it, unless the user has handed it on in the
/// meantime. The events must outlive it.
class X11Focus {
 public:
  explicit X11Focus(X11Events& events);
  ~X11Focus();
  X11Focus(const X11Focus&) = delete;
  X11Focus& operator=(const X11Focus&) = delete;

  /// The window must be on the screen.
  void take(xcb_window_t window);
  /// After the window lost it: takes it once more from a window, also one of ours, that was not there when it was
  /// taken. Each such window gives it up once; whoever turns to it after that keeps it there.
  void takeFromNewWindow();
  /// Before the window goes. `time`: up to when no other window may have taken the keyboard; what others do later wins.
  void giveBack(xcb_timestamp_t time = XCB_CURRENT_TIME);
  /// The window of any program that has the keyboard now; the toolkit may not have received the event yet.
  xcb_window_t current() const;

 private:
  QList<quint32> clients() const;
  /// Whether no window manager looks after it, as after menus and popups: it took the keyboard by itself.
  bool isUnmanaged(xcb_window_t window) const;
  void set(xcb_window_t window, xcb_timestamp_t time) const;

  X11Events& events_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_window_t previous_ = XCB_WINDOW_NONE;
  QList<quint32> known_;  ///< Windows that may have the keyboard: there when it was taken, or had it taken from them.
};

}  // namespace tarnwick
