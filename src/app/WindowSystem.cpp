#include "app/WindowSystem.h"

#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QGuiApplication>

#include "base/DomainError.h"
#include "platform/wayland/WaylandClientWindows.h"
#include "platform/wayland/WaylandEnvironment.h"
#include "platform/wayland/WaylandFrameClocks.h"
#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandScreens.h"
#include "platform/wayland/WaylandSession.h"
#include "platform/wayland/WaylandZoneSensor.h"
#include "platform/x11/X11ClientWindows.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11FrameClocks.h"
#include "platform/x11/X11HotKeys.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Screens.h"
#include "platform/x11/X11ZoneSensor.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

WindowSystem makeX11() {
  WindowSystem system;
  auto events = std::make_unique<X11Events>();
  auto screens = std::make_unique<X11Screens>(*events);
  system.panels = std::make_unique<X11Panels>(*events, *screens);
  system.zones = std::make_unique<X11ZoneSensor>(*events, *screens);
  system.clocks = std::make_unique<X11FrameClocks>(*screens);
  system.windows = std::make_unique<X11ClientWindows>(*events, *screens);
  system.hotKeys = std::make_unique<X11HotKeys>(*events);
  system.screens = std::move(screens);
  system.connection = std::move(events);
  return system;
}

WindowSystem makeWayland() {
  WindowSystem system;
  auto session = std::make_unique<WaylandSession>();
  auto screens = std::make_unique<WaylandScreens>(*session);
  auto panels = std::make_unique<WaylandPanels>(*session, *screens);
  system.zones = std::make_unique<WaylandZoneSensor>(*session, *screens, panels->pointer());
  system.clocks = std::make_unique<WaylandFrameClocks>(*screens);
  system.windows = std::make_unique<WaylandClientWindows>(*session, *screens, *panels);
  system.panels = std::move(panels);
  system.screens = std::move(screens);
  system.connection = std::move(session);
  return system;
}

}  // namespace

WindowSystem::~WindowSystem() {
  hotKeys.reset();
  windows.reset();
  clocks.reset();
  zones.reset();
  panels.reset();
  screens.reset();
}

WindowSystem WindowSystem::make() {
  if (QGuiApplication::platformName() == "wayland"_L1) return makeWayland();
  if (X11Events::isAvailable()) return makeX11();
  throw DomainError::invalid(QCoreApplication::translate(
      "WindowSystem", "Tarnwick needs an X11 display or a Wayland compositor with layers for docks, and has neither."));
}

void WindowSystem::prepare() {
  // Shared-memory pictures cost two more wake-ups for every frame, and a tile is small.
  if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM")) qputenv("QT_XCB_NO_MITSHM", "1");
  const QByteArray wanted = qgetenv("QT_QPA_PLATFORM");
  if (wanted.isEmpty() ? WaylandSession::isAvailable() : wanted.startsWith("wayland")) {
    WaylandEnvironment::prepare();
  } else if (wanted.isEmpty()) {
    qputenv("QT_QPA_PLATFORM", "xcb");
  }
}

QString WindowSystem::obstacle() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (platform.startsWith("wayland")) {
    return WaylandSession::isAvailable()
               ? QString()
               : u"Tarnwick cannot run on this Wayland compositor: it has no layers for docks."_s;
  }
  if (platform != "xcb") return {};
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = connection && xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  if (answers) return {};
  const QString display = qEnvironmentVariable("DISPLAY");
  return display.isEmpty() ? u"Tarnwick needs a display, and DISPLAY names none."_s
                           : u"Tarnwick cannot reach the display \"%1\"."_s.arg(display);
}

}  // namespace tarnwick
