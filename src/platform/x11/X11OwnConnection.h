#pragma once

#include <QDeadlineTimer>
#include <functional>
#include <memory>

#include "platform/x11/X11Properties.h"
#include "platform/x11/X11Server.h"

namespace tarnwick {

/// A connection to the server beside Qt's, for a thread that waits for answers and for a process without windows. What
/// was asked for through it ends with it. Belongs to one thread.
class X11OwnConnection {
 public:
  /// Null where there is no server.
  static std::unique_ptr<X11OwnConnection> open();
  /// What is there, opened anew where it broke; null where there is no server.
  static X11OwnConnection* keep(std::unique_ptr<X11OwnConnection>& kept);

  bool isBroken() const { return xcb_connection_has_error(connection()) != 0; }
  xcb_connection_t* connection() const { return opened_.get(); }
  const X11Server& server() const { return server_; }
  PropertyRequest ofRoot(X11Atom name) const { return {connection(), server_.root(), server_.atom(name)}; }
  PropertyRequest of(xcb_window_t window, X11Atom name) const { return {connection(), window, server_.atom(name)}; }

  using Take = std::function<void(const xcb_generic_event_t& event)>;
  /// Whether an event came before the end. All that were there are passed to `take`.
  bool wait(const QDeadlineTimer& end, const Take& take = {}) const;
  /// Requests that may fail are no news where what they name is gone.
  void forget(xcb_void_cookie_t checked) const { xcb_discard_reply(connection(), checked.sequence); }

 private:
  using Opened = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

  X11OwnConnection(Opened opened, int number, xcb_window_t root)
      : opened_(std::move(opened)), atoms_(opened_.get(), number), server_(opened_.get(), root, atoms_) {}

  Opened opened_;
  X11Atoms atoms_;
  X11Server server_;
};

}  // namespace tarnwick
