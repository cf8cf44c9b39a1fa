#include "platform/x11/X11Atoms.h"

#include <string>

#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

constexpr auto kNames = std::to_array<const char*>({
    "UTF8_STRING",
    "WM_CLASS",
    "WM_NAME",
    "WM_CLIENT_MACHINE",
    "WM_CHANGE_STATE",
    "WM_STATE",
    "WM_NORMAL_HINTS",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLIENT_LIST",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLOSE_WINDOW",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_WORKAREA",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_USER_TIME",
    "_NET_WM_ICON_GEOMETRY",
    "_NET_WM_ALLOWED_ACTIONS",
    "_NET_WM_ACTION_CLOSE",
    "_NET_WM_ACTION_MINIMIZE",
    "_NET_WM_DESKTOP",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_STICKY",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SHADED",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_DEMANDS_ATTENTION",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_FRAME_EXTENTS",
    "_GTK_FRAME_EXTENTS",
    "_GTK_APPLICATION_ID",
    "_KDE_NET_WM_DESKTOP_FILE",
    "_BAMF_DESKTOP_FILE",
    "_KDE_NET_WM_BLUR_BEHIND_REGION",
    "XdndSelection",
    "EDID",
    "_NET_WM_CM_S",
});
static_assert(kNames.size() == static_cast<std::size_t>(X11Atom::Count));

}  // namespace

X11Atoms::X11Atoms(xcb_connection_t* connection, int screenNumber) {
  std::array<xcb_intern_atom_cookie_t, kNames.size()> cookies;
  for (std::size_t index = 0; index < kNames.size(); ++index) {
    std::string name = kNames[index];
    if (index == static_cast<std::size_t>(X11Atom::CompositorSelection)) name += std::to_string(screenNumber);
    cookies[index] = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  }
  for (std::size_t index = 0; index < kNames.size(); ++index) {
    const XcbReply reply(xcb_intern_atom_reply(connection, cookies[index], nullptr));
    values_[index] = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }
}

}  // namespace tarnwick
