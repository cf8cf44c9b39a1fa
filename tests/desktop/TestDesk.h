#pragma once

#include <linux/input-event-codes.h>

#include <QColor>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <cstdint>
#include <memory>

#include "desktop/TestTerminal.h"

namespace tarnwick::testing {

/// A window of another program; it goes with this.
class OtherWindow {
 public:
  virtual ~OtherWindow() = default;
};

/// The desktop that the scenarios play on, whichever window system it has: its displays, and a pointer.
/// Desktop coordinates.
class TestDesk {
 public:
  static TestDesk& current();
  virtual ~TestDesk() = default;

  /// Divides the desktop in two displays, or makes it one again where it can be.
  virtual void showTwo() = 0;
  virtual void showOne() = 0;
  /// The display with that number among those that are shown now.
  virtual QRect display(int number) = 0;
  /// A place on the first display where no dock is, and that a window of another program would cover.
  virtual QPoint away() const = 0;

  virtual void moveTo(QPoint place) = 0;
  virtual void button(bool down, Qt::MouseButton which = Qt::LeftButton) = 0;
  void click(QPoint place, Qt::MouseButton which = Qt::LeftButton) {
    moveTo(place);
    button(true, which);
    button(false, which);
  }
  /// Types keys, by the numbers that the kernel gives them, while others are held down.
  virtual void type(const QList<std::uint32_t>& keys, const QList<std::uint32_t>& held = {}) = 0;
  /// Types a text of small letters, digits and what stands in an address.
  virtual void write(const QString& text);
  /// One key, as the kernel numbers it, for whoever has the keyboard.
  void tap(int key, bool withControl = false) {
    type({static_cast<std::uint32_t>(key)}, withControl ? QList<std::uint32_t>{KEY_LEFTCTRL} : QList<std::uint32_t>());
  }
  /// A terminal around `away()`, once it reads keys. What is typed goes to it when the desktop gives it the focus.
  virtual std::unique_ptr<TestTerminal> terminal() = 0;
  /// What the desktop tells other programs, and lets them do.
  struct Abilities {
    bool tellsFrames = true;
    bool tellsWorkspaces = true;
    bool givesKeys = true;
    bool tellsHeldKeys = true;
    bool tellsAttention = true;
  };
  virtual Abilities abilities() const { return {}; }
  /// Whether a click that closes something of the program is still one for what was clicked.
  virtual bool passesClicksOn() const = 0;
  /// Waits until the program has seen all that happened up to now, and has acted on it.
  virtual void settle() = 0;

  /// Whether something else than the desktop's ground is seen there.
  virtual bool isPainted(QPoint place) = 0;
  /// Whether a click there would be for that window. May move the pointer there.
  virtual bool takesClicks(QPoint place, QWidget& window) = 0;

  /// A bar that keeps so much of the first display's lower edge.
  virtual std::unique_ptr<OtherWindow> bar(int thickness) = 0;
  /// A window that fills the first display and is in front.
  virtual std::unique_ptr<OtherWindow> film() = 0;
  /// Turns the first display to a workspace without windows, or back to the one with those that were made.
  virtual void turnToEmpty(bool empty) = 0;
  /// A program around `away()` from which that file can be dragged, once it is seen there. Its window has the file's
  /// path for a title.
  virtual std::unique_ptr<OtherWindow> source(const QString& file) = 0;
};

}  // namespace tarnwick::testing
