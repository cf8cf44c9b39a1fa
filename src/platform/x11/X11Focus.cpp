#include "platform/x11/X11Focus.h"

#include <QList>
#include <utility>

#include "platform/x11/X11Events.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

QList<X11Focus*> loans;

}  // namespace

X11Focus::X11Focus(X11Events& events) : events_(events) { loans.append(this); }

X11Focus::~X11Focus() {
  giveBack();
  loans.removeOne(this);
}

void X11Focus::take(xcb_window_t window) {
  const xcb_window_t before = current();
  if (before != window) previous_ = before;
  window_ = window;
  known_ = clients();
  set(window, XCB_CURRENT_TIME);
}

void X11Focus::takeFromNewWindow() {
  if (window_ == XCB_WINDOW_NONE) return;
  const xcb_window_t holder = current();
  const bool isNobody = holder <= XCB_INPUT_FOCUS_POINTER_ROOT || holder == events_.root();
  if (isNobody || known_.contains(holder) || isUnmanaged(holder)) return;
  known_.append(holder);
  set(window_, XCB_CURRENT_TIME);
}

bool X11Focus::isUnmanaged(xcb_window_t window) const {
  const auto cookie = xcb_get_window_attributes(events_.connection(), window);
  const XcbReply reply(xcb_get_window_attributes_reply(events_.connection(), cookie, nullptr));
  return reply && reply->override_redirect;
}

QList<quint32> X11Focus::clients() const {
  return PropertyRequest(events_.connection(), events_.root(), events_.atom(X11Atom::NetClientList), 1 << 16).words();
}

void X11Focus::giveBack(xcb_timestamp_t time) {
  if (window_ == XCB_WINDOW_NONE) return;
  const xcb_window_t window = std::exchange(window_, XCB_WINDOW_NONE);
  const xcb_window_t previous = std::exchange(previous_, XCB_WINDOW_NONE);
  if (current() == window) set(previous, time);
  // Another of our windows may have taken it from this one, which will not be there to have it back.
  for (X11Focus* loan : loans) {
    if (loan->previous_ == window) loan->previous_ = previous;
  }
}

xcb_window_t X11Focus::current() const {
  const auto cookie = xcb_get_input_focus(events_.connection());
  const XcbReply reply(xcb_get_input_focus_reply(events_.connection(), cookie, nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

void X11Focus::set(xcb_window_t window, xcb_timestamp_t time) const {
  const auto cookie = xcb_set_input_focus_checked(events_.connection(), XCB_INPUT_FOCUS_PARENT, window, time);
  xcb_discard_reply(events_.connection(), cookie.sequence);  // It may be gone by now; then the window manager decides.
  xcb_flush(events_.connection());
}

}  // namespace tarnwick
