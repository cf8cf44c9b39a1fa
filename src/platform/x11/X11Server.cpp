#include "platform/x11/X11Server.h"

#include <algorithm>

namespace tarnwick {

void X11Server::askManager(xcb_window_t window, X11Atom request, const std::array<quint32, 5>& data) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom(request);
  std::ranges::copy(data, message.data.data32);
  xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
}

}  // namespace tarnwick
