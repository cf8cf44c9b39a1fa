#pragma once

#include <xcb/xcb.h>

#include <array>

#include "platform/x11/X11Atoms.h"

namespace tarnwick {

/// A connection and what is asked for through it. Borrowed: the connection and the names must outlive it.
class X11Server {
 public:
  X11Server(xcb_connection_t* connection, xcb_window_t root, const X11Atoms& atoms)
      : connection_(connection), root_(root), atoms_(&atoms) {}

  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return root_; }
  xcb_atom_t atom(X11Atom name) const { return (*atoms_)[name]; }
  /// Asks the window manager for something about `window`.
  void askManager(xcb_window_t window, X11Atom request, const std::array<quint32, 5>& data) const;

 private:
  xcb_connection_t* connection_;
  xcb_window_t root_;
  const X11Atoms* atoms_;
};

}  // namespace tarnwick
