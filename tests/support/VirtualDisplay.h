#pragma once

#include <signal.h>
#include <xcb/xcb.h>

#include <QColor>
#include <QHash>
#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "support/ChildProcess.h"

namespace tarnwick::testing {

/// An X server without hardware, with what belongs to a desktop. Made before the application object: it sets DISPLAY, a
/// home and a runtime folder of its own, and Qt's platform. All coordinates are root pixels.
class VirtualDisplay {
 public:
  struct Options {
    QSize size{1280, 800};
    bool windowManager = true;  ///< openbox without key bindings.
    bool compositor = false;    ///< picom.
  };

  /// Throws std::runtime_error when something does not come up within 30 seconds.
  explicit VirtualDisplay(const Options& options);
  ~VirtualDisplay();
  /// The one that exists.
  static VirtualDisplay& current();

  /// The body of a test program's main(): the display, then `application`, which makes the application object and
  /// returns what RUN_ALL_TESTS() does. No display is started when the tests are merely listed.
  static int run(int argc, char** argv, const Options& options, const std::function<int(int&, char**)>& application);

  QString name() const { return name_; }
  /// A connection of the harness's own: to the program under test it is another program.
  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return screen_->root; }
  const xcb_screen_t& screen() const { return *screen_; }
  xcb_atom_t atom(const char* name) const;
  QList<quint32> words(xcb_window_t window, const char* property) const;
  /// Where a window's content is.
  QRect frame(xcb_window_t window) const;
  /// The child of the root window that takes a click there: a window, or what the window manager put around it.
  xcb_window_t topLevelAt(QPoint place) const;

  /// The window that what is typed goes to.
  xcb_window_t focus() const;

  /// Ends the server without a word; afterwards only the destructor may be called.
  void killServer() { server_->signal(SIGKILL); }

  void startCompositor();
  void stopCompositor();
  /// `size` in millimetres is made up. `output` is an output's name or "none".
  void setMonitor(const QString& monitor, const QRect& frame, const QString& output);
  void deleteMonitor(const QString& monitor);
  /// Runs a program and waits for it; whether it ended well.
  bool execute(const QStringList& command);

  /// Input as from a device. `code` is an X key code.
  void key(quint8 code, bool down);
  void tap(quint8 code, const QList<quint8>& held = {});
  void moveTo(QPoint place);
  /// As a mouse does it; `moveTo` is what a tablet does.
  void moveBy(QPoint way);
  void button(quint8 number, bool down);
  void click(QPoint place, quint8 number = 1);

  /// Presses of a button that reached a window of `connection()` so far.
  int clicksOn(xcb_window_t window);

  QImage screenshot() const;
  QColor pixel(QPoint place) const;

  /// Runs the event loop until the predicate holds; false after 30 seconds.
  static bool waitUntil(const std::function<bool()>& predicate);
  /// Runs the event loop until the program has seen all that the server did up to now, and has acted on it.
  void settle();

 private:
  void startServer(const QSize& size);
  void connectToServer();
  void startWindowManager();
  xcb_window_t selectionOwner(const char* selection) const;
  void fake(quint8 type, quint8 detail, QPoint place = {});

  QTemporaryDir folder_;
  QString name_;
  std::unique_ptr<ChildProcess> server_;
  std::unique_ptr<ChildProcess> windowManager_;
  std::unique_ptr<ChildProcess> compositor_;
  xcb_connection_t* connection_ = nullptr;
  const xcb_screen_t* screen_ = nullptr;
  QHash<xcb_window_t, int> clicks_;
};

}  // namespace tarnwick::testing
