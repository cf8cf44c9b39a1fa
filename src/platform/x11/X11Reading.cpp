#include "platform/x11/X11Reading.h"

#include <xcb/xcbext.h>

#include <QMetaObject>
#include <cstring>
#include <utility>

namespace tarnwick {

using End = PasteboardContent::End;

X11Reading::X11Reading(X11ClipboardLink& link, Scheduler& scheduler, qint64 most, QObject* context, Done done)
    : link_(link),
      most_(most),
      context_(context),
      done_(std::move(done)),
      window_(link.makeWindow()),
      property_(link.atom("TARNWICK_CLIPBOARD")),
      watch_(scheduler, [this] { end(End::TooSlow); }),
      bytes_(most) {}

X11Reading::~X11Reading() {
  if (fetching_ != 0) xcb_discard_reply(link_.connection(), fetching_);
  xcb_destroy_window(link_.connection(), window_);
  link_.flush();
}

void X11Reading::ask(xcb_atom_t target) {
  xcb_convert_selection(link_.connection(), window_, link_.clipboard(), target, property_, XCB_CURRENT_TIME);
}

void X11Reading::notified(const xcb_selection_notify_event_t& event) {
  if (hasEnded_ || state_ != State::Asked) return;
  if (event.property == XCB_ATOM_NONE) return end(End::Refused);
  state_ = State::Fetching;
  fetch();
}

void X11Reading::propertyChanged(const xcb_property_notify_event_t& event) {
  const bool isNews = event.atom == property_ && event.state == XCB_PROPERTY_NEW_VALUE;
  if (!isNews) return;
  // The next piece is told of once the one before it was sent, so that one has arrived.
  look();
  if (hasEnded_ || state_ != State::WaitingForMore) return;
  state_ = State::Fetching;
  fetch();
}

void X11Reading::end(End why) { finish({{why, {}}, false}); }

void X11Reading::fetch() {
  if (hasEnded_) return;
  if (!context_) return end(End::Changed);
  const auto cookie = xcb_get_property(link_.connection(), 1, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, offset_,
                                       X11ClipboardLink::kPiece / 4);
  fetching_ = cookie.sequence;
  link_.flush();
}

bool X11Reading::look() {
  if (fetching_ == 0) return false;
  void* reply = nullptr;
  xcb_generic_error_t* error = nullptr;
  if (xcb_poll_for_reply(link_.connection(), fetching_, &reply, &error) == 0) return false;
  fetching_ = 0;
  const XcbReply refusal(error);
  const XcbReply piece(static_cast<xcb_get_property_reply_t*>(reply));
  if (!hasEnded_) take(piece.get());
  return true;
}

void X11Reading::take(const xcb_get_property_reply_t* reply) {
  if (!reply || reply->type == XCB_ATOM_NONE) return end(End::Refused);
  watch_.gotBytes();
  const auto* data = static_cast<const char*>(xcb_get_property_value(reply));
  const auto length = static_cast<qsizetype>(xcb_get_property_value_length(reply));
  if (reply->type == link_.atom("INCR")) {
    // Its removal, which came with the reading, asks for the first piece. What it holds is the least that will come.
    quint32 least = 0;
    if (length >= qsizetype{sizeof least}) std::memcpy(&least, data, sizeof least);
    if (least > most_) return end(End::TooLarge);
    if (std::exchange(isPiecewise_, true)) return end(End::Refused);
    state_ = State::WaitingForMore;
    return;
  }
  const bool isAtoms = reply->format == 32;
  if (reply->format == 16 || (!bytes_.isEmpty() && isAtoms != isAtoms_)) return end(End::Refused);
  isAtoms_ = isAtoms;
  if (!bytes_.hasSpaceFor(length + qint64{reply->bytes_after})) return end(End::TooLarge);
  bytes_.add(data, length);
  if (reply->bytes_after > 0) {
    if (length == 0) return end(End::Refused);
    offset_ += static_cast<quint32>(length / 4);
    return fetch();
  }
  const bool isLast = !isPiecewise_ || (length == 0 && offset_ == 0);
  offset_ = 0;
  if (isLast) return finish({{End::Whole, bytes_.take()}, isAtoms_});
  state_ = State::WaitingForMore;
}

void X11Reading::finish(const Answer& answer) {
  if (std::exchange(hasEnded_, true)) return;
  bytes_.take();
  if (!context_) return;
  QMetaObject::invokeMethod(
      context_, [done = std::exchange(done_, {}), answer] { done(answer); }, Qt::QueuedConnection);
}

}  // namespace tarnwick
