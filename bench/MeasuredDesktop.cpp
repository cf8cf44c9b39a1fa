#include "MeasuredDesktop.h"

#include <poll.h>
#include <xcb/damage.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstring>

MeasuredDesktop::MeasuredDesktop() : connection_(xcb_connect(nullptr, nullptr)) {
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const auto damage = xcb_damage_query_version(connection_, 1, 1);
  own(xcb_damage_query_version_reply(connection_, damage, nullptr));
  damageNotify_ = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event + XCB_DAMAGE_NOTIFY;
}

MeasuredDesktop::~MeasuredDesktop() { xcb_disconnect(connection_); }

// --- Hands ----------------------------------------------------------------------------------------------------------

void MeasuredDesktop::moveTo(int x, int y) const {
  const auto at = own(xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr));
  moveBy(x - at->root_x, y - at->root_y);
}

void MeasuredDesktop::moveBy(int x, int y) const {
  xcb_test_fake_input(connection_, XCB_MOTION_NOTIFY, 1, XCB_CURRENT_TIME, XCB_NONE, static_cast<int16_t>(x),
                      static_cast<int16_t>(y), 0);
  xcb_flush(connection_);
}

void MeasuredDesktop::fake(uint8_t type, uint8_t detail) const {
  xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void MeasuredDesktop::click(int x, int y) const {
  moveTo(x, y);
  fake(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1);
  fake(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
  xcb_flush(connection_);
}

void MeasuredDesktop::tap(uint8_t key, uint8_t held) const {
  if (held != 0) fake(XCB_KEY_PRESS, held);
  fake(XCB_KEY_PRESS, key);
  fake(XCB_KEY_RELEASE, key);
  if (held != 0) fake(XCB_KEY_RELEASE, held);
  xcb_flush(connection_);
}

// --- What is seen ---------------------------------------------------------------------------------------------------

void MeasuredDesktop::watchDrawing(xcb_window_t window) const {
  xcb_damage_create(connection_, xcb_generate_id(connection_), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  xcb_flush(connection_);
}

MeasuredDesktop::Reply<xcb_generic_event_t> MeasuredDesktop::nextEvent(Clock::time_point end) const {
  for (;;) {
    if (auto event = own(xcb_poll_for_event(connection_))) return event;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0) return own<xcb_generic_event_t>(nullptr);
    pollfd ready{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&ready, 1, static_cast<int>(left.count()));
  }
}

xcb_atom_t MeasuredDesktop::atom(const char* name) const {
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(std::strlen(name)), name);
  return own(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

std::vector<uint32_t> MeasuredDesktop::words(xcb_window_t window, const char* name) const {
  const auto cookie = xcb_get_property(connection_, 0, window, atom(name), XCB_ATOM_ANY, 0, 256);
  const auto reply = own(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply) return {};
  const auto* first = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

bool MeasuredDesktop::belongsTo(xcb_window_t window, const std::string& pid) const {
  return words(window, "_NET_WM_PID") == std::vector<uint32_t>{static_cast<uint32_t>(std::stoul(pid))};
}

std::vector<xcb_window_t> MeasuredDesktop::windowsOf(const std::string& pid) const {
  std::vector<xcb_window_t> all = words(root_, "_NET_CLIENT_LIST");
  std::erase_if(all, [&](xcb_window_t window) { return !belongsTo(window, pid); });
  return all;
}
