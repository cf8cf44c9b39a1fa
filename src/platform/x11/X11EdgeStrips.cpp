#include "platform/x11/X11EdgeStrips.h"

#include <algorithm>
#include <utility>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

X11EdgeStrips::X11EdgeStrips(X11Events& events, const X11Screens& screens) : events_(events), screens_(screens) {
  connect(&events, &X11Events::pointerEntered, this, [this](quint32 window) {
    if (of(window)) Q_EMIT entered();
  });
  connect(&events, &X11Events::buttonPressed, this, [this](quint32 window) {
    if (const Strip* strip = of(window)) Q_EMIT pressed(QString(strip->screen));
  });
}

X11EdgeStrips::~X11EdgeStrips() { cover({}, {}); }

void X11EdgeStrips::cover(const QList<ZoneRequest>& requests, const QHash<QString, PointerZones>& zones) {
  QList<Strip> wanted;
  for (const ZoneRequest& request : requests) {
    const auto native = screens_.native(request.screen);
    if (!native || native->frame.isEmpty()) continue;
    const PointerZones pointer = zones.value(request.screen);
    const QRect& frame = native->frame;
    if (request.watchesTop && !pointer.topEdge)
      wanted << Strip{request.screen, QRect(frame.left(), frame.top(), frame.width(), 1)};
    if (request.watchesBottom && !pointer.bottomEdge)
      wanted << Strip{request.screen, QRect(frame.left(), frame.bottom(), frame.width(), 1)};
  }

  QList<Strip> gone = std::exchange(strips_, {});
  bool hasChanged = false;
  for (Strip& strip : wanted) {
    const auto old = std::ranges::find_if(
        gone, [&](const Strip& each) { return each.screen == strip.screen && each.line == strip.line; });
    if (old == gone.end()) {
      strip.window = make(strip.line);
      hasChanged = true;
    } else {
      strip.window = old->window;
      gone.erase(old);
    }
  }
  for (const Strip& strip : std::as_const(gone)) xcb_destroy_window(events_.connection(), strip.window);
  strips_ = wanted;
  if (hasChanged || !gone.isEmpty()) xcb_flush(events_.connection());
}

xcb_window_t X11EdgeStrips::make(const QRect& line) const {
  xcb_connection_t* connection = events_.connection();
  const xcb_window_t window = xcb_generate_id(connection);
  const quint32 values[] = {1, XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_create_window(connection, 0, window, events_.root(), static_cast<qint16>(line.x()), static_cast<qint16>(line.y()),
                    static_cast<quint16>(line.width()), static_cast<quint16>(line.height()), 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                    values);
  xcb_map_window(connection, window);
  return window;
}

const X11EdgeStrips::Strip* X11EdgeStrips::of(xcb_window_t window) const {
  const auto strip = std::ranges::find(strips_, window, &Strip::window);
  return strip == strips_.end() ? nullptr : &*strip;
}

}  // namespace tarnwick
