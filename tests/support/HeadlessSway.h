#pragma once

#include <QColor>
#include <QImage>
#include <QJsonDocument>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdint>
#include <functional>
#include <memory>

#include "support/ChildProcess.h"
#include "support/VirtualPointer.h"

namespace tarnwick::testing {

/// A Wayland compositor without hardware, with two displays: HEADLESS-1 of 1280×800, and beside it HEADLESS-2 of
/// 640×400 at a scale of 2; or one within another, whose displays (WL-1, …) can be unplugged. The focus follows clicks
/// alone. Made before the application object: it sets
/// WAYLAND_DISPLAY, a home and a runtime folder of its own. All coordinates are those of the layout.
class HeadlessSway {
 public:
  enum class Kind { Plain, Nested };

  /// Throws std::runtime_error when something does not come up within 10 seconds.
  explicit HeadlessSway(Kind kind);
  ~HeadlessSway();
  /// The one that exists.
  static HeadlessSway& current();

  /// The body of a test program's main(): the compositor, then `application`, which makes the application object and
  /// returns what RUN_ALL_TESTS() does. Nothing is started when the tests are merely listed. It ends the process once
  /// the tests have run, and the application object is never deleted: Qt 6.4 may wait for ever for a thread of its own
  /// when it takes a connection down on which something still comes.
  static int run(int argc, char** argv, Kind kind, const std::function<int(int&, char**)>& application);

  /// A compositor beside this one, with a display of its own, to be ended at will.
  struct Another {
    QString display;  ///< For WAYLAND_DISPLAY.
    std::unique_ptr<ChildProcess> process;
  };
  Another another();

  /// To the compositor that programs are shown on.
  void signal(int number) { compositor_->signal(number); }
  /// Gives an order; whether it was carried out.
  bool order(const QString& command);
  /// Takes a display of a nested compositor away; whether it was there.
  bool unplug(const QString& output);
  /// The answer to a question, such as "get_tree".
  QJsonDocument ask(const QString& question);
  /// The application id of the window that has the keyboard, if any.
  QString focused();
  /// A terminal with that application id, once it is there.
  std::unique_ptr<ChildProcess> terminal(const QString& applicationId);
  /// Types into whatever has the keyboard. `arguments` are those of wtype.
  void type(const QStringList& arguments);

  void moveTo(QPoint place);
  /// `code`: as the kernel numbers buttons; the left one unless set otherwise.
  void button(bool down, std::uint32_t code = 0x110);
  void click(QPoint place);
  /// Takes the only pointer device away, or brings it back.
  void plugPointer(bool in);

  /// One display, in device pixels.
  QImage screenshot(const QString& output);
  QColor pixel(QPoint place, const QString& output = QStringLiteral("HEADLESS-1"));

 private:
  [[noreturn]] void endWith(int status);
  static QByteArray run(const QStringList& command);
  std::unique_ptr<ChildProcess> startCompositor(const char* name, const char* settings);

  QTemporaryDir folder_;
  QString outerSocket_;
  std::unique_ptr<ChildProcess> outer_;
  std::unique_ptr<ChildProcess> compositor_;
  std::unique_ptr<VirtualPointer> pointer_;
  QPoint place_;
  bool isHolding_ = false;
  std::unique_ptr<ChildProcess> keyboard_;
};

}  // namespace tarnwick::testing
