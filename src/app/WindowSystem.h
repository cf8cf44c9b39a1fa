#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "base/Scheduler.h"
#include "clipboard/ports/Pasteboard.h"
#include "desktop/ClientWindows.h"
#include "desktop/FrameClock.h"
#include "desktop/HeldModifiers.h"
#include "desktop/HotKeys.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "desktop/Zones.h"
#include "facilities/StoreCalls.h"
#include "windows/ReservedSpace.h"
#include "windows/ports/WindowFrames.h"
#include "windows/ports/WindowPictures.h"

namespace tarnwick {

/// The adapters that belong to one window system, in the order in which they are made; they go in the other order.
struct WindowSystem {
  std::unique_ptr<QObject> connection;  ///< What all others share.
  std::unique_ptr<Screens> screens;
  std::unique_ptr<Panels> panels;
  std::unique_ptr<ZoneSensor> zones;
  std::unique_ptr<FrameClocks> clocks;
  std::unique_ptr<ClientWindows> windows;
  std::unique_ptr<HotKeys> hotKeys;
  std::unique_ptr<HeldModifiers> modifiers;
  std::unique_ptr<Pasteboard> pasteboard;
  /// The permission with which a started application's window may come to the front; left empty where none is needed.
  std::function<QString(const QString& application)> activationToken;
  /// A dock as the window system's own pixels have it.
  std::function<ReservedSpace(const ReservingDock& dock)> inPixels;
  /// Makes what takes pictures of windows, on the thread that uses it; empty where ClientWindows::pictures() says no.
  std::function<std::unique_ptr<WindowPictures>()> pictures;
  /// The same for what moves them; empty where nobody could have.
  std::function<std::unique_ptr<WindowFrames>()> frames;
  bool framesWindows = true;  ///< Whether it puts a frame with a title around a program's windows.

  WindowSystem() = default;
  WindowSystem(WindowSystem&&) = default;
  ~WindowSystem();

  /// The one that the application object runs on. The scheduler must outlive it. Throws DomainError where it is not
  /// supported.
  static WindowSystem make(Scheduler& scheduler);
  /// Chooses before the application object is made and sets what the toolkit needs: Wayland where the compositor has
  /// layers for docks, X11 otherwise, and a plain window on Wayland where there is no X11; what the user set in
  /// QT_QPA_PLATFORM wins. The variables are for this program alone.
  static void prepare();
  /// Whether the chosen one answers; where it doesn't, a finished sentence.
  static QString obstacle();
  /// Gives the status with which the process is to end once all objects of ours are gone, or ends it with that at once.
  static int end(int status);
};

}  // namespace tarnwick
