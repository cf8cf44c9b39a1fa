#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstddef>

namespace tarnwick {

/// The names that are exchanged with window managers, compositors and other programs.
enum class X11Atom : std::size_t {
  Utf8String,
  WmClass,
  WmName,
  WmClientMachine,
  WmChangeState,
  WmState,
  WmNormalHints,
  NetSupported,
  NetSupportingWmCheck,
  NetClientList,
  NetActiveWindow,
  NetCloseWindow,
  NetMoveresizeWindow,
  NetCurrentDesktop,
  NetWorkarea,
  NetWmName,
  NetWmPid,
  NetWmUserTime,
  NetWmIconGeometry,
  NetWmAllowedActions,
  NetWmActionClose,
  NetWmActionMinimize,
  NetWmDesktop,
  NetWmStrut,
  NetWmStrutPartial,
  NetWmState,
  NetWmStateAbove,
  NetWmStateSticky,
  NetWmStateSkipTaskbar,
  NetWmStateSkipPager,
  NetWmStateHidden,
  NetWmStateShaded,
  NetWmStateFullscreen,
  NetWmStateMaximizedVert,
  NetWmStateMaximizedHorz,
  NetWmStateDemandsAttention,
  NetWmWindowType,
  NetWmWindowTypeDock,
  NetWmWindowTypeDesktop,
  NetWmWindowTypeToolbar,
  NetWmWindowTypeMenu,
  NetWmWindowTypeUtility,
  NetWmWindowTypeSplash,
  NetWmWindowTypeNotification,
  NetFrameExtents,
  GtkFrameExtents,
  GtkApplicationId,
  KdeDesktopFile,
  BamfDesktopFile,
  KdeBlurBehind,
  XdndSelection,
  Edid,
  CompositorSelection,  ///< The selection whose owner composites our screen.
  Count
};

/// The server's numbers for those names, asked for in one round trip.
class X11Atoms {
 public:
  X11Atoms(xcb_connection_t* connection, int screenNumber);

  xcb_atom_t operator[](X11Atom atom) const { return values_[static_cast<std::size_t>(atom)]; }

 private:
  std::array<xcb_atom_t, static_cast<std::size_t>(X11Atom::Count)> values_{};
};

}  // namespace tarnwick
