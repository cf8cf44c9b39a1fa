#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QTemporaryDir>
#include <cstdint>
#include <memory>

#include "support/ChildProcess.h"

struct org_kde_kwin_fake_input;
struct wl_display;

namespace tarnwick::testing {

/// KWin without hardware, with two displays of 1280×800 beside each other, a pointer and a keyboard. Made before the
/// application object, on a session bus that runs already and with a home and a runtime folder set: it sets
/// WAYLAND_DISPLAY. Every program may ask it for everything. Desktop coordinates.
class HeadlessKWin {
 public:
  /// Throws std::runtime_error when it does not come up.
  HeadlessKWin();
  Q_DISABLE_COPY_MOVE(HeadlessKWin)
  ~HeadlessKWin();
  /// The one that exists.
  static HeadlessKWin& current();

  /// Ends it without a word; afterwards only the destructor may be called.
  void kill();

  void moveTo(QPoint place);
  /// `code`: as the kernel numbers buttons and keys.
  void button(bool down, std::uint32_t code);
  void key(std::uint32_t code, bool down);
  void tap(std::uint32_t code);
  /// Puts a finger down, or lifts it.
  void touch(QPoint place);
  void lift();

  /// One display, by its name; null where KWin gives none.
  QImage screenshot(const QString& output);

 private:
  void connectInput();
  void flush();

  QTemporaryDir folder_;
  std::unique_ptr<ChildProcess> compositor_;
  wl_display* display_ = nullptr;
  org_kde_kwin_fake_input* input_ = nullptr;
  QPoint place_;
  bool isHolding_ = false;
};

}  // namespace tarnwick::testing
