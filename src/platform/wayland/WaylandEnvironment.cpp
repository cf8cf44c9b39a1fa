#include "platform/wayland/WaylandEnvironment.h"

#include <QtGlobal>
#include <array>

namespace tarnwick {
namespace {

struct Variable {
  const char* name;
  const char* value;
};

constexpr std::array kVariables{
    Variable{"QT_QPA_PLATFORM", "wayland"},
    // A window with the bypass hint is left without a role, which is for us to give.
    Variable{"QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1"},
    // Qt believes where we say that a window is.
    Variable{"QT_WAYLAND_DISABLE_FIXED_POSITIONS", "1"},
    // Nothing here is painted by the graphics card, whose driver would cost more memory than all the rest.
    Variable{"QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none"},
    // Its own window frames are painted by that card alone, so that it would look for it in vain, with two warnings.
    Variable{"QT_WAYLAND_DISABLE_WINDOWDECORATION", "1"},
    // Else a timer runs behind every picture, to see whether the compositor asks for the next one.
    Variable{"QT_WAYLAND_FRAME_CALLBACK_TIMEOUT", "0"},
};

}  // namespace

void WaylandEnvironment::prepare() {
  for (const Variable& one : kVariables) {
    if (qEnvironmentVariableIsEmpty(one.name)) qputenv(one.name, one.value);
  }
}

QStringList WaylandEnvironment::names() {
  QStringList names;
  for (const Variable& one : kVariables) names.append(QString::fromLatin1(one.name));
  return names;
}

}  // namespace tarnwick
