#include "platform/x11/X11OwnConnection.h"

#include <poll.h>

#include <cerrno>

namespace tarnwick {

std::unique_ptr<X11OwnConnection> X11OwnConnection::open() {
  int number = 0;
  Opened opened(xcb_connect(nullptr, &number), &xcb_disconnect);
  if (xcb_connection_has_error(opened.get()) != 0) return nullptr;
  auto screen = xcb_setup_roots_iterator(xcb_get_setup(opened.get()));
  for (int left = number; left > 0 && screen.rem > 1; --left) xcb_screen_next(&screen);
  const xcb_window_t root = screen.data->root;
  return std::unique_ptr<X11OwnConnection>(new X11OwnConnection(std::move(opened), number, root));
}

X11OwnConnection* X11OwnConnection::keep(std::unique_ptr<X11OwnConnection>& kept) {
  if (kept && kept->isBroken()) kept.reset();
  if (!kept) kept = open();
  return kept.get();
}

bool X11OwnConnection::wait(const QDeadlineTimer& end, const Take& take) const {
  bool came = false;
  while (const XcbReply event{xcb_poll_for_event(connection())}) {
    came = true;
    if (take) take(*event);
  }
  if (came) return true;
  pollfd waiting{xcb_get_file_descriptor(connection()), POLLIN, 0};
  xcb_flush(connection());
  int ready = 0;
  do {
    ready = ::poll(&waiting, 1, static_cast<int>(end.remainingTime()));
  } while (ready < 0 && errno == EINTR);
  return ready > 0 && !isBroken();
}

}  // namespace tarnwick
