#include "app/WindowSystem.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <cstdio>

#include "app/HotKeyTable.h"
#include "base/DomainError.h"
#include "platform/dbus/PortalHotKeys.h"
#include "platform/kwin/KWinWindowFrames.h"
#include "platform/kwin/KWinWindowPictures.h"
#include "platform/qt/TimerFrameClocks.h"
#include "platform/wayland/PlainPanels.h"
#include "platform/wayland/PlainZoneSensor.h"
#include "platform/wayland/PlasmaClientWindows.h"
#include "platform/wayland/WaylandActivation.h"
#include "platform/wayland/WaylandClientWindows.h"
#include "platform/wayland/WaylandEnvironment.h"
#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandPasteboard.h"
#include "platform/wayland/WaylandScreens.h"
#include "platform/wayland/WaylandSession.h"
#include "platform/wayland/WaylandZoneSensor.h"
#include "platform/x11/X11ClientWindows.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11HeldModifiers.h"
#include "platform/x11/X11HotKeys.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11WindowFrames.h"
#include "platform/x11/X11WindowPictures.h"
#include "platform/x11/X11ZoneSensor.h"

namespace tarnwick {
namespace {

struct WindowSystemWords {
  Q_DECLARE_TR_FUNCTIONS(WindowSystem)
};

using namespace Qt::StringLiterals;

/// An X server within a Wayland desktop knows where the pointer is only while that is over a window of X11.
Capability edgesOnX11() {
  if (WaylandSession::offer() == WaylandSession::Offer::Nothing) return Capability::yes();
  return Capability::no(WindowSystemWords::tr(
      "On this desktop X11 apps cannot see where the pointer is, so only the layout Fixed is available."));
}

std::unique_ptr<HotKeys> portalKeys() {
  return std::make_unique<PortalHotKeys>(QGuiApplication::desktopFileName(), &HotKeyTable::action);
}

std::unique_ptr<HeldModifiers> noModifiers() {
  return std::make_unique<NoHeldModifiers>(
      WindowSystemWords::tr("This desktop does not tell which keys are held, so the apps show no numbers."));
}

std::unique_ptr<Pasteboard> noPasteboard() {
  return std::make_unique<StillPasteboard>(Capability::no(WindowSystemWords::tr(
      "This desktop does not tell an X11 app what is copied elsewhere, so there is no history.")));
}

WindowSystem makeX11(Scheduler& scheduler) {
  WindowSystem system;
  auto events = std::make_unique<X11Events>();
  auto screens = std::make_unique<X11Screens>(*events);
  const Capability edges = edgesOnX11();
  system.panels = std::make_unique<X11Panels>(*events, *screens);
  system.zones = std::make_unique<X11ZoneSensor>(*events, *screens, edges);
  system.clocks = std::make_unique<TimerFrameClocks>([known = screens.get()](const QString& id) {
    const auto native = known->native(id);
    return native ? native->screen.data() : nullptr;
  });
  system.windows = std::make_unique<X11ClientWindows>(
      *events, *screens,
      edges ? Capability::yes()
            : Capability::no(WindowSystemWords::tr("On this desktop loose windows stay where they are.")));
  // What the X server cannot see it cannot grab either.
  system.hotKeys = edges ? std::make_unique<X11HotKeys>(*events) : portalKeys();
  system.modifiers = edges ? std::make_unique<X11HeldModifiers>(*events) : noModifiers();
  // Nor does it see what is copied in windows that are not of X11.
  system.pasteboard = edges ? std::unique_ptr<Pasteboard>(std::make_unique<X11Pasteboard>(scheduler)) : noPasteboard();
  system.pictures = [] { return std::make_unique<X11WindowPictures>(); };
  system.frames = [] { return std::make_unique<X11WindowFrames>(); };
  system.inPixels = [known = screens.get()](const ReservingDock& dock) {
    const auto native = known->native(dock.screen.id);
    if (!native) return ReservedSpace();
    return ReservedSpace{native->toRoot(dock.frame), native->toRoot(dock.screen.usable), native->scale};
  };
  system.screens = std::move(screens);
  system.connection = std::move(events);
  return system;
}

WindowSystem makeWayland(Scheduler& scheduler) {
  WindowSystem system;
  auto session = std::make_unique<WaylandSession>();
  auto screens = std::make_unique<WaylandScreens>(*session);
  system.clocks =
      std::make_unique<TimerFrameClocks>([known = screens.get()](const QString& id) { return known->native(id); });
  if (session->layerShell()) {
    auto panels = std::make_unique<WaylandPanels>(*session, *screens);
    system.zones = std::make_unique<WaylandZoneSensor>(*session, *screens, panels->pointer());
    if (auto windows = PlasmaClientWindows::make(*session, *screens, *panels)) {
      system.pictures = [table = windows->table()] { return std::make_unique<KWinWindowPictures>(table); };
      system.frames = [table = windows->table()] { return std::make_unique<KWinWindowFrames>(table); };
      system.windows = std::move(windows);
    } else {
      system.windows = std::make_unique<WaylandClientWindows>(*session, *screens, panels.get());
    }
    system.panels = std::move(panels);
  } else {
    system.zones = std::make_unique<PlainZoneSensor>();
    system.windows = std::make_unique<WaylandClientWindows>(*session, *screens, nullptr);
    system.panels = std::make_unique<PlainPanels>(*screens);
  }
  system.hotKeys = portalKeys();
  system.modifiers = noModifiers();
  system.pasteboard = std::make_unique<WaylandPasteboard>(*session, *system.windows, scheduler);
  system.framesWindows = session->framesWindows();
  system.activationToken = [known = session.get()](const QString& application) {
    return WaylandActivation::token(*known, application);
  };
  system.inPixels = [](const ReservingDock& dock) { return ReservedSpace{dock.frame, dock.screen.usable, 1}; };
  system.screens = std::move(screens);
  system.connection = std::move(session);
  return system;
}

/// Where the compositor has no layer shell, the X server within it can at least place a dock.
bool prefersWayland() {
  switch (WaylandSession::offer()) {
    case WaylandSession::Offer::Layers:
      return true;
    case WaylandSession::Offer::PlainWindows:
      return !X11Events::serverAnswers();
    case WaylandSession::Offer::Nothing:
      break;
  }
  return false;
}

bool isWayland(const QByteArray& platform) { return platform.startsWith("wayland"); }

/// The toolkit takes the first of a list that it can reach, and what it needs must be known before.
QByteArray reachable(const QByteArray& wanted) {
  const QList<QByteArray> platforms = wanted.split(';');
  for (const QByteArray& one : platforms) {
    if (isWayland(one) ? WaylandSession::offer() != WaylandSession::Offer::Nothing
                       : !one.startsWith("xcb") || X11Events::serverAnswers()) {
      return one;
    }
  }
  return platforms.first();
}

}  // namespace

WindowSystem::~WindowSystem() {
  pasteboard.reset();
  modifiers.reset();
  hotKeys.reset();
  windows.reset();
  clocks.reset();
  zones.reset();
  panels.reset();
  screens.reset();
}

WindowSystem WindowSystem::make(Scheduler& scheduler) {
  if (QGuiApplication::platformName().startsWith("wayland"_L1)) return makeWayland(scheduler);
  if (X11Events::isAvailable()) return makeX11(scheduler);
  throw DomainError::invalid(WindowSystemWords::tr("Tarnwick needs a Wayland or X11 display, but found neither."));
}

void WindowSystem::prepare() {
  // Shared-memory pictures cost two more wake-ups for every frame, and a tile is small.
  if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM")) qputenv("QT_XCB_NO_MITSHM", "1");
  const QByteArray wanted = qgetenv("QT_QPA_PLATFORM");
  const QByteArray chosen = wanted.isEmpty() ? (prefersWayland() ? "wayland" : "xcb") : reachable(wanted);
  qputenv("QT_QPA_PLATFORM", chosen);
  if (isWayland(chosen)) WaylandEnvironment::prepare();
}

/// Qt 6.4 may wait for ever for a thread of its own when the compositor still says something while the connection is
/// taken down, which the kernel does as well.
int WindowSystem::end(int status) {
  if (QGuiApplication::platformName().startsWith("wayland"_L1)) {
    std::fflush(nullptr);
    ::_exit(status);
  }
  return status;
}

QString WindowSystem::obstacle() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (isWayland(platform)) {
    const bool answers = WaylandSession::offer() != WaylandSession::Offer::Nothing;
    return answers ? QString() : WindowSystemWords::tr("Tarnwick cannot reach a Wayland display.");
  }
  if (!platform.startsWith("xcb") || X11Events::serverAnswers()) return {};
  const QString display = qEnvironmentVariable("DISPLAY");
  return display.isEmpty()
             ? WindowSystemWords::tr("Tarnwick needs a display, but neither WAYLAND_DISPLAY nor DISPLAY is set.")
             : WindowSystemWords::tr("Tarnwick cannot reach the display \"%1\".").arg(display);
}

}  // namespace tarnwick
