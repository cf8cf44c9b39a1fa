#include "platform/x11/X11RawInput.h"

#include <xcb/xinput.h>

#include <utility>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

constexpr quint32 kFirstWheelButton = 4;
constexpr quint32 kLastWheelButton = 7;

X11RawInput::Pointer pointerOf(const xcb_query_pointer_reply_t* reply) {
  if (!reply) return {};
  constexpr quint16 kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
  return {.place = QPoint(reply->root_x, reply->root_y), .hasButton = (reply->mask & kButtons) != 0};
}

QPointF wayOf(const xcb_input_raw_motion_event_t* event) {
  if (event->valuators_len == 0) return {};
  const quint32 axes = *xcb_input_raw_button_press_valuator_mask(event);
  const xcb_input_fp3232_t* value = xcb_input_raw_button_press_axisvalues(event);
  const auto next = [&](quint32 axis) {
    if ((axes & axis) == 0) return 0.0;
    const xcb_input_fp3232_t& one = *value++;
    return one.integral + one.frac / 4294967296.0;
  };
  const double across = next(1);
  return {across, next(2)};
}

}  // namespace

X11RawInput::X11RawInput(X11Events& events, std::optional<quint8> opcode) : events_(events), opcode_(opcode) {
  xcb_connection_t* connection = events.connection();
  // From this version on a grab by another program hides nothing.
  if (opcode_) xcb_discard_reply(connection, xcb_input_xi_query_version(connection, 2, 2).sequence);
  mark_ = xcb_generate_id(connection);
  xcb_create_window(connection, 0, mark_, events.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
}

X11RawInput::~X11RawInput() {
  if (question_) xcb_discard_reply(events_.connection(), question_->sequence);
  xcb_destroy_window(events_.connection(), mark_);
  xcb_flush(events_.connection());
}

X11RawInput::Subscription X11RawInput::subscribe(int& count) {
  if (count++ == 0) select();
  return {this, [this, &count](void*) {
            if (--count == 0) select();
          }};
}

void X11RawInput::select() const {
  if (!opcode_) return;
  struct {
    xcb_input_event_mask_t head;
    quint32 mask;
  } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, 0};
  if (motionSubscribers_ > 0) selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
  if (buttonSubscribers_ > 0) {
    selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
  }
  xcb_input_xi_select_events(events_.connection(), events_.root(), 1, &selection.head);
  xcb_flush(events_.connection());
}

// A reply does not wake the event loop, an event does: a message to ourselves follows the question, and behind it the
// reply is there.
quint64 X11RawInput::ask() {
  if (question_) {
    asksAgain_ = true;
    return number_ + 1;
  }
  ++number_;
  xcb_connection_t* connection = events_.connection();
  question_ = xcb_query_pointer(connection, events_.root());
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = mark_;
  xcb_send_event(connection, 0, mark_, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
  xcb_flush(connection);
  return number_;
}

X11RawInput::Pointer X11RawInput::read() const {
  const auto cookie = xcb_query_pointer(events_.connection(), events_.root());
  const XcbReply reply(xcb_query_pointer_reply(events_.connection(), cookie, nullptr));
  return pointerOf(reply.get());
}

void X11RawInput::handle(const xcb_generic_event_t* event) {
  const quint8 kind = event->response_type & 0x7f;
  if (kind == XCB_CLIENT_MESSAGE) {
    if (reinterpret_cast<const xcb_client_message_event_t*>(event)->window == mark_) finish();
    return;
  }
  if (kind != XCB_GE_GENERIC || event->pad0 != opcode_) return;
  const auto* raw = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(event);
  if (raw->event_type == XCB_INPUT_RAW_MOTION) {
    Q_EMIT moved(raw->sourceid, wayOf(raw));
  } else if (raw->event_type == XCB_INPUT_RAW_BUTTON_PRESS || raw->event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
    if (raw->detail >= kFirstWheelButton && raw->detail <= kLastWheelButton) return;
    Q_EMIT buttonChanged(raw->event_type == XCB_INPUT_RAW_BUTTON_PRESS, raw->time);
  }
}

void X11RawInput::finish() {
  if (!question_) return;
  const XcbReply reply(xcb_query_pointer_reply(events_.connection(), *question_, nullptr));
  question_.reset();
  Pointer pointer = pointerOf(reply.get());
  pointer.question = number_;
  if (std::exchange(asksAgain_, false)) ask();
  if (reply) Q_EMIT answered(pointer);
}

}  // namespace tarnwick
