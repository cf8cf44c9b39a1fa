#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>

#include "desktop/Screens.h"

namespace tarnwick {

class AppWindow;

/// Where the program's windows open: over the one that they were asked from, else on the display that they are about,
/// else where their like was left in this run, else where the pointer is. Never beyond a display, nor behind its dock.
/// A desktop that places windows itself is given only which window belongs to which, and its size: small enough that it
/// clears the dock in the middle of the display. One that fills its display keeps its content out of the dock's way.
/// Main thread only.
class WindowPlaces final : public QObject {
  Q_OBJECT
 public:
  /// What a window is about; all may be empty.
  struct Request {
    AppWindow* over = nullptr;  ///< The window that it was asked from, and belongs to.
    QString display;            ///< The identity of a display.
  };

  /// `screens` is borrowed. `dock` gives the place of a display's dock while it is shown; empty where there is none.
  WindowPlaces(const Screens& screens, std::function<QRectF(const Screen& screen)> dock)
      : screens_(screens), dock_(std::move(dock)) {}

  /// The docks are elsewhere, or are others.
  void docksMoved();
  /// Sees to the place of a window that was never shown. Windows of the same name share what is remembered.
  void settle(AppWindow& window, const QString& name, const Request& request);

  /// The middle of a window of that size at the middle of `over`, as far as `bounds` lets it be seen whole. From what
  /// it would hide it goes a step aside. Sizes and places with their frames.
  static QRect centred(const QSize& size, const QRect& over, const QRect& bounds, const QList<QRect>& taken);
  /// The larger part of a space above or below a dock; all of it where a dock in its middle would leave too little.
  static QRect beside(const QRect& dock, const QRect& bounds);
  /// What has the same middle as `whole` and lies within `free`, a part of it; `free` where that would be too little.
  static QRect evenly(const QRect& free, const QRect& whole);
  /// Moved as little as needed, so that it lies within `bounds`; its top left does in any case.
  static QRect within(QRect place, const QRect& bounds);

 protected:
  bool eventFilter(QObject* window, QEvent* event) override;

 private:
  /// What a display has for windows, or else the display at a place; empty where there is none.
  QRect usableAt(const QString& display, const QPoint& place) const;
  std::optional<Screen> screenAt(const QString& display, const QPoint& place) const;
  QRect freeOf(const Screen& screen) const;
  void keepClear(AppWindow& window) const;
  void open(AppWindow& window, const QString& name, const Request& request);
  void remember(const AppWindow& window);

  const Screens& screens_;
  std::function<QRectF(const Screen&)> dock_;
  QHash<QString, QRect> left_;  // By name: the frame of a window that the user moved, when it was closed.
  QHash<const QObject*, QRect> opened_;
};

}  // namespace tarnwick
