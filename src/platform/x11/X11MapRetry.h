#pragma once

#include <QObject>
#include <QTimer>

namespace tarnwick {

class X11Events;

/// Sees to it that every window of the program that is to be seen comes onto the screen. A window manager that is just
/// starting can lose the request to map a window: it has asked the server for such requests already and does not yet
/// answer them (openbox, when both are started within 50 ms). So what no window manager has mapped or marked after a
/// moment is asked for again, with growing pauses, and anew when another window manager takes over. Belongs to the
/// events.
class X11MapRetry final : public QObject {
 public:
  explicit X11MapRetry(X11Events& events);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void start();
  void look();
  bool askAgain();

  X11Events& events_;
  QTimer timer_;
};

}  // namespace tarnwick
