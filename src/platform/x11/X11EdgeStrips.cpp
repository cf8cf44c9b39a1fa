#include "platform/x11/X11EdgeStrips.h"

#include <algorithm>
#include <utility>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

X11EdgeStrips::X11EdgeStrips(X11Events& events, const X11Screens& screens) : events_(events), screens_(screens) {
  connect(&events, &X11Events::pointerEntered, this, [this](quint32 window) {
    if (!has(window)) return;
    held_ = window;
    if (released_ == window) released_ = XCB_WINDOW_NONE;
    Q_EMIT entered();
  });
  connect(&events, &X11Events::pointerLeft, this, [this](quint32 window) {
    // It may only be below another window now, and is kept then.
    if (held_ == window) Q_EMIT left();
  });
  connect(&events, &X11Events::buttonPressed, this, &X11EdgeStrips::giveWay);
}

X11EdgeStrips::~X11EdgeStrips() { cover({}, {}); }

void X11EdgeStrips::cover(const QList<ZoneRequest>& requests, const QHash<QString, PointerZones>& zones) {
  QList<Strip> wanted;
  for (const ZoneRequest& request : requests) {
    const auto native = screens_.native(request.screen);
    if (!native || native->frame.isEmpty()) continue;
    const PointerZones pointer = zones.value(request.screen);
    const QRect& frame = native->frame;
    const auto want = [&](int y, bool isThere) {
      const Strip strip{request.screen, QRect(frame.left(), y, frame.width(), 1)};
      const auto old = std::ranges::find_if(strips_, [&](const Strip& each) { return each.isAt(strip); });
      // The answer that the pointer is there may come before the word that it entered the strip.
      if (!isThere || (old != strips_.end() && old->window != released_)) wanted << strip;
    };
    if (request.watchesTop) want(frame.top(), pointer.topEdge);
    if (request.watchesBottom) want(frame.bottom(), pointer.bottomEdge);
  }

  QList<Strip> gone = std::exchange(strips_, {});
  bool hasChanged = false;
  for (Strip& strip : wanted) {
    const auto old = std::ranges::find_if(gone, [&](const Strip& each) { return each.isAt(strip); });
    if (old == gone.end()) {
      strip.window = make(strip.line);
      hasChanged = true;
    } else {
      strip.window = old->window;
      gone.erase(old);
    }
  }
  for (const Strip& strip : std::as_const(gone)) remove(strip.window);
  strips_ = wanted;
  if (!has(held_)) held_ = XCB_WINDOW_NONE;
  released_ = XCB_WINDOW_NONE;
  if (hasChanged || !gone.isEmpty()) xcb_flush(events_.connection());
}

xcb_window_t X11EdgeStrips::make(const QRect& line) const {
  xcb_connection_t* connection = events_.connection();
  const xcb_window_t window = xcb_generate_id(connection);
  const quint32 values[] = {1, XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW};
  xcb_create_window(connection, 0, window, events_.root(), static_cast<qint16>(line.x()), static_cast<qint16>(line.y()),
                    static_cast<quint16>(line.width()), static_cast<quint16>(line.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                    values);
  // The server holds a press back until it is known who gets it.
  xcb_grab_button(connection, 0, window, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_ASYNC,
                  XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_BUTTON_INDEX_ANY, XCB_MOD_MASK_ANY);
  xcb_map_window(connection, window);
  return window;
}

/// A press that is held back, which we may not know of yet, goes to the window below: out of its way first, since the
/// press would end with a window that is destroyed.
void X11EdgeStrips::remove(xcb_window_t window) const {
  xcb_connection_t* connection = events_.connection();
  const qint32 offScreen = -2;
  xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_Y, &offScreen);
  xcb_allow_events(connection, XCB_ALLOW_REPLAY_POINTER, XCB_CURRENT_TIME);
  xcb_destroy_window(connection, window);
}

bool X11EdgeStrips::has(xcb_window_t window) const {
  return std::ranges::find(strips_, window, &Strip::window) != strips_.end();
}

bool X11EdgeStrips::letGo() {
  if (held_ == XCB_WINDOW_NONE) return false;
  released_ = std::exchange(held_, XCB_WINDOW_NONE);
  return true;
}

void X11EdgeStrips::giveWay(xcb_window_t window) {
  if (!has(window)) return;
  if (held_ == window) held_ = XCB_WINDOW_NONE;
  strips_.removeIf([window](const Strip& strip) { return strip.window == window; });
  remove(window);
  xcb_flush(events_.connection());
}

}  // namespace tarnwick
