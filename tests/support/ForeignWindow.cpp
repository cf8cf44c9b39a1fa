#include "support/ForeignWindow.h"

#include <array>
#include <cstdlib>

namespace tarnwick::testing {

ForeignWindow::ForeignWindow(VirtualDisplay& display, const QRect& frame, quint32 colour)
    : display_(display), window_(xcb_generate_id(display.connection())) {
  const std::array<quint32, 2> values{colour, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_EXPOSURE};
  xcb_create_window(display.connection(), XCB_COPY_FROM_PARENT, window_, display.root(), static_cast<qint16>(frame.x()),
                    static_cast<qint16>(frame.y()), static_cast<quint16>(frame.width()),
                    static_cast<quint16>(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values.data());
  QList<quint32> sizeHints(18, 0);
  sizeHints[0] = 1;                                                 // placed by the user
  setWords("_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});  // no decoration
  setWords("WM_NORMAL_HINTS", "WM_SIZE_HINTS", sizeHints);
}

ForeignWindow::~ForeignWindow() {
  xcb_destroy_window(display_.connection(), window_);
  xcb_flush(display_.connection());
}

void ForeignWindow::setWords(const char* property, const char* type, const QList<quint32>& words) {
  xcb_change_property(display_.connection(), XCB_PROP_MODE_REPLACE, window_, display_.atom(property),
                      display_.atom(type), 32, static_cast<quint32>(words.size()), words.constData());
  xcb_flush(display_.connection());
}

void ForeignWindow::setText(const char* property, const char* type, const QByteArray& text) {
  xcb_change_property(display_.connection(), XCB_PROP_MODE_REPLACE, window_, display_.atom(property),
                      display_.atom(type), 8, static_cast<quint32>(text.size()), text.constData());
  xcb_flush(display_.connection());
}

bool ForeignWindow::show() {
  xcb_map_window(display_.connection(), window_);
  xcb_flush(display_.connection());
  return VirtualDisplay::waitUntil([this] {
    const auto cookie = xcb_get_window_attributes(display_.connection(), window_);
    xcb_get_window_attributes_reply_t* answer = xcb_get_window_attributes_reply(display_.connection(), cookie, nullptr);
    const bool isViewable = answer && answer->map_state == XCB_MAP_STATE_VIEWABLE;
    std::free(answer);
    return isViewable;
  });
}

void ForeignWindow::moveTo(QPoint corner) {
  const std::array<qint32, 2> values{corner.x(), corner.y()};
  xcb_configure_window(display_.connection(), window_, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, values.data());
  xcb_flush(display_.connection());
}

void ForeignWindow::addState(const char* first, const char* second) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window_;
  message.type = display_.atom("_NET_WM_STATE");
  message.data.data32[0] = 1;
  message.data.data32[1] = display_.atom(first);
  message.data.data32[2] = second ? display_.atom(second) : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  message.data.data32[3] = 1;
  xcb_send_event(display_.connection(), 0, display_.root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(display_.connection());
}

}  // namespace tarnwick::testing
