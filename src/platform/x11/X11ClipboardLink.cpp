#include "platform/x11/X11ClipboardLink.h"

#include <xcb/res.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

// Of the extension that tells which process a window belongs to.
constexpr quint8 kResMajor = 1;
constexpr quint8 kResMinor = 2;
// More names than this are forgotten: a hostile program can make up any number.
constexpr qsizetype kMostNames = 4096;

bool isThere(xcb_connection_t* connection, xcb_extension_t* extension) {
  const xcb_query_extension_reply_t* found = xcb_get_extension_data(connection, extension);
  return found && found->present;
}

}  // namespace

X11ClipboardLink::X11ClipboardLink() : connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) return;
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  if (!screen_ || !isThere(connection_, &xcb_xfixes_id)) return;
  const XcbReply fixes(
      xcb_xfixes_query_version_reply(connection_, xcb_xfixes_query_version(connection_, 4, 0), nullptr));
  if (!fixes) return;
  fixesEvent_ = xcb_get_extension_data(connection_, &xcb_xfixes_id)->first_event;
  if (isThere(connection_, &xcb_res_id)) {
    const XcbReply res(
        xcb_res_query_version_reply(connection_, xcb_res_query_version(connection_, kResMajor, kResMinor), nullptr));
    tellsProcesses_ =
        res && std::pair(res->server_major, res->server_minor) >= std::pair<quint16, quint16>(kResMajor, kResMinor);
  }
  clipboard_ = atom("CLIPBOARD");
  window_ = makeWindow();
  constexpr quint32 kAll = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                           XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(connection_, window_, clipboard_, kAll);
  flush();
}

X11ClipboardLink::~X11ClipboardLink() { xcb_disconnect(connection_); }

bool X11ClipboardLink::isOpen() const {
  return window_ != XCB_WINDOW_NONE && xcb_connection_has_error(connection_) == 0;
}

xcb_atom_t X11ClipboardLink::atom(const QByteArray& name) {
  if (const auto known = atoms_.constFind(name); known != atoms_.cend()) return *known;
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<quint16>(name.size()), name.constData());
  const XcbReply reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  const xcb_atom_t found = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  if (atoms_.size() >= kMostNames) atoms_.clear();
  atoms_.insert(name, found);
  return found;
}

QStringList X11ClipboardLink::names(const QList<quint32>& atoms) {
  if (names_.size() >= kMostNames) names_.clear();
  QList<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
  for (const xcb_atom_t each : atoms) {
    if (!names_.contains(each)) asked.append({each, xcb_get_atom_name(connection_, each)});
  }
  for (const auto& [each, cookie] : asked) {
    const XcbReply reply(xcb_get_atom_name_reply(connection_, cookie, nullptr));
    if (!reply) continue;
    names_.insert(each,
                  QString::fromUtf8(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())));
  }
  QStringList found;
  for (const xcb_atom_t each : atoms) {
    if (const auto name = names_.constFind(each); name != names_.cend()) found.append(*name);
  }
  return found;
}

xcb_window_t X11ClipboardLink::makeWindow() const {
  const xcb_window_t made = xcb_generate_id(connection_);
  const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, made, screen_->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  return made;
}

bool X11ClipboardLink::made(xcb_window_t window) const {
  const xcb_setup_t* setup = xcb_get_setup(connection_);
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

xcb_window_t X11ClipboardLink::owner(xcb_atom_t selection) const {
  const XcbReply reply(
      xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection), nullptr));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

qint64 X11ClipboardLink::processOf(xcb_window_t window) const {
  if (!tellsProcesses_ || window == XCB_WINDOW_NONE) return 0;
  const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const XcbReply reply(
      xcb_res_query_client_ids_reply(connection_, xcb_res_query_client_ids(connection_, 1, &wanted), nullptr));
  if (!reply) return 0;
  for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
       xcb_res_client_id_value_next(&each)) {
    const bool isProcess = (each.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
    if (isProcess && xcb_res_client_id_value_value_length(each.data) > 0)
      return *xcb_res_client_id_value_value(each.data);
  }
  return 0;
}

XcbReply<xcb_generic_event_t> X11ClipboardLink::next() {
  if (waiting_.empty()) return XcbReply<xcb_generic_event_t>(xcb_poll_for_event(connection_));
  XcbReply<xcb_generic_event_t> first = std::move(waiting_.front());
  waiting_.pop_front();
  return first;
}

bool X11ClipboardLink::hasNewsOfOwner() {
  while (XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) waiting_.push_back(std::move(event));
  return std::ranges::any_of(waiting_, [this](const auto& event) {
    return (event->response_type & 0x7f) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY;
  });
}

}  // namespace tarnwick
