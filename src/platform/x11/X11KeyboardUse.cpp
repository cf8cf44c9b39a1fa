#include "platform/x11/X11KeyboardUse.h"

#include <QCoreApplication>
#include <utility>

#include "platform/x11/X11Properties.h"
#ifdef TARNWICK_HAS_XCB_SYNC
#include <xcb/sync.h>
#endif

namespace tarnwick {

X11KeyboardUse::X11KeyboardUse(X11Events& events) : events_(events) {}

X11KeyboardUse::~X11KeyboardUse() { watch(false); }

#ifdef TARNWICK_HAS_XCB_SYNC

namespace {

/// The keyboard that all others are attached to has this number on every server.
constexpr QByteArrayView kCounter = "DEVICEIDLETIME 3";
/// Milliseconds. What comes sooner after the key before is no use of its own.
constexpr quint32 kIdle = 20;

}  // namespace

void X11KeyboardUse::find() {
  if (std::exchange(isFound_, true)) return;
  xcb_connection_t* connection = events_.connection();
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_sync_id);
  if (!extension || !extension->present) return;
  alarmEvent_ = static_cast<quint8>(extension->first_event + XCB_SYNC_ALARM_NOTIFY);
  const auto version = xcb_sync_initialize(connection, XCB_SYNC_MAJOR_VERSION, XCB_SYNC_MINOR_VERSION);
  const auto asked = xcb_sync_list_system_counters(connection);
  xcb_discard_reply(connection, version.sequence);
  const XcbReply counters(xcb_sync_list_system_counters_reply(connection, asked, nullptr));
  if (!counters) return;
  for (auto each = xcb_sync_list_system_counters_counters_iterator(counters.get()); each.rem > 0;
       xcb_sync_systemcounter_next(&each)) {
    // The name follows the fields at once, without the space that a structure has at its end here.
    const auto* name = reinterpret_cast<const char*>(&each.data->name_len) + sizeof(each.data->name_len);
    if (QByteArrayView(name, each.data->name_len) == kCounter) counter_ = each.data->counter;
  }
}

void X11KeyboardUse::watch(bool watched) {
  if (watched == (alarm_ != XCB_NONE)) return;
  xcb_connection_t* connection = events_.connection();
  if (!watched) {
    xcb_sync_destroy_alarm(connection, std::exchange(alarm_, XCB_NONE));
    xcb_flush(connection);
    qApp->removeNativeEventFilter(this);
    return;
  }
  find();
  if (!counter_) return;
  alarm_ = xcb_generate_id(connection);
  constexpr quint32 mask = XCB_SYNC_CA_COUNTER | XCB_SYNC_CA_VALUE_TYPE | XCB_SYNC_CA_VALUE | XCB_SYNC_CA_TEST_TYPE |
                           XCB_SYNC_CA_DELTA | XCB_SYNC_CA_EVENTS;
  // Each time that the count falls below; 64 bits are two words, the higher one first.
  const quint32 values[] = {
      *counter_, XCB_SYNC_VALUETYPE_ABSOLUTE, 0, kIdle, XCB_SYNC_TESTTYPE_NEGATIVE_TRANSITION, 0, 0, 1};
  xcb_sync_create_alarm(connection, alarm_, mask, values);
  xcb_flush(connection);
  qApp->installNativeEventFilter(this);
}

bool X11KeyboardUse::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  if ((event->response_type & 0x7f) != alarmEvent_) return false;
  const auto* told = reinterpret_cast<const xcb_sync_alarm_notify_event_t*>(event);
  if (told->alarm == alarm_ && told->state == XCB_SYNC_ALARMSTATE_ACTIVE) Q_EMIT used();
  return false;
}

#else

void X11KeyboardUse::find() {}
void X11KeyboardUse::watch(bool) {}
bool X11KeyboardUse::nativeEventFilter(const QByteArray&, void*, qintptr*) { return false; }

#endif

}  // namespace tarnwick
