#include "platform/x11/X11Supply.h"

#include <algorithm>

namespace tarnwick {
namespace {

// Seconds that somebody may take for one piece.
constexpr double kPatience = 20;
// More at one time is more than anybody who means well asks for.
constexpr std::size_t kMostDeliveries = 64;
constexpr qsizetype kMostMultiple = 64;

bool isLatin1(const QString& text) {
  return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x100; });
}

}  // namespace

X11Supply::~X11Supply() = default;

void X11Supply::offer(const PasteboardOffer& offer) {
  forms_.clear();
  time_ = XCB_CURRENT_TIME;
  for (const PasteboardOffer::Form& form : offer.forms) {
    const QByteArray type = form.type.toLatin1();
    add(type, type, form.bytes);
    if (type != "text/plain;charset=utf-8") continue;
    add("UTF8_STRING", "UTF8_STRING", form.bytes);
    add("TEXT", "UTF8_STRING", form.bytes);
    if (const QString text = QString::fromUtf8(form.bytes); isLatin1(text)) add("STRING", "STRING", text.toLatin1());
  }
}

void X11Supply::add(const QByteArray& target, const QByteArray& type, const QByteArray& bytes) {
  forms_.append({link_.atom(target), link_.atom(type), bytes});
}

QList<quint32> X11Supply::targets() const {
  QList<quint32> found;
  for (const Form& form : forms_) found.append(form.target);
  return found;
}

void X11Supply::requested(const xcb_selection_request_event_t& event) {
  // Programs of old name no property and mean the target's name.
  const xcb_atom_t property = event.property == XCB_ATOM_NONE ? event.target : event.property;
  const bool isGiven = !forms_.isEmpty() && answer(event.requestor, event.target, property);
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = event.time;
  notice.requestor = event.requestor;
  notice.selection = event.selection;
  notice.target = event.target;
  notice.property = isGiven ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  xcb_send_event(link_.connection(), 0, event.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&notice));
  link_.flush();
}

bool X11Supply::answer(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) {
  if (target == link_.atom("TARGETS")) {
    QList<quint32> known{target, link_.atom("TIMESTAMP"), link_.atom("MULTIPLE"), link_.atom("SAVE_TARGETS")};
    putWords(window, property, XCB_ATOM_ATOM, known + targets());
    return true;
  }
  if (target == link_.atom("TIMESTAMP")) {
    putWords(window, property, XCB_ATOM_INTEGER, {time_});
    return true;
  }
  if (target == link_.atom("MULTIPLE")) return answerMultiple(window, property);
  // That it is known tells a clipboard manager that it is handed everything in the end, and need not ask before.
  if (target == link_.atom("SAVE_TARGETS")) {
    putWords(window, property, link_.atom("NULL"), {});
    return true;
  }
  const auto form = std::ranges::find(forms_, target, &Form::target);
  if (form == forms_.end()) return false;
  give(window, property, *form);
  return true;
}

bool X11Supply::answerMultiple(xcb_window_t window, xcb_atom_t property) {
  QList<quint32> pairs = PropertyRequest(link_.connection(), window, property).words();
  if (pairs.isEmpty() || pairs.size() % 2 != 0 || pairs.size() > 2 * kMostMultiple) return false;
  for (qsizetype i = 0; i < pairs.size(); i += 2) {
    const bool isNested = pairs[i] == link_.atom("MULTIPLE") || pairs[i + 1] == XCB_ATOM_NONE;
    if (isNested || !answer(window, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
  }
  putWords(window, property, link_.atom("ATOM_PAIR"), pairs);
  return true;
}

void X11Supply::give(xcb_window_t window, xcb_atom_t property, const Form& form) {
  if (form.bytes.size() <= qsizetype{X11ClipboardLink::kPiece}) {
    xcb_change_property(link_.connection(), XCB_PROP_MODE_REPLACE, window, property, form.type, 8,
                        static_cast<quint32>(form.bytes.size()), form.bytes.constData());
    return;
  }
  sweep();
  std::erase_if(deliveries_, [&](const auto& each) { return each->window == window && each->property == property; });
  if (deliveries_.size() >= kMostDeliveries) {
    end(*deliveries_.front());
    sweep();
  }
  const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(link_.connection(), window, XCB_CW_EVENT_MASK, &mask);
  putWords(window, property, link_.atom("INCR"), {static_cast<quint32>(form.bytes.size())});
  auto made = std::make_unique<Delivery>();
  made->window = window;
  made->property = property;
  made->type = form.type;
  made->bytes = form.bytes;
  made->patience = scheduler_.after(kPatience, [this, delivery = made.get()] { end(*delivery); });
  deliveries_.push_back(std::move(made));
}

void X11Supply::propertyChanged(const xcb_property_notify_event_t& event) {
  const bool isTaken = event.state == XCB_PROPERTY_DELETE;
  for (const auto& each : deliveries_) {
    const bool isNext = isTaken && each->window == event.window && each->property == event.atom;
    if (isNext && !each->hasEnded) giveNext(*each);
  }
  sweep();
}

void X11Supply::giveNext(Delivery& delivery) {
  const qsizetype left = delivery.bytes.size() - delivery.given;
  const qsizetype size = std::min(left, qsizetype{X11ClipboardLink::kPiece});
  // The last of all is one of no bytes.
  xcb_change_property(link_.connection(), XCB_PROP_MODE_REPLACE, delivery.window, delivery.property, delivery.type, 8,
                      static_cast<quint32>(size), delivery.bytes.constData() + delivery.given);
  delivery.given += size;
  delivery.patience = scheduler_.after(kPatience, [this, that = &delivery] { end(*that); });
  if (size == 0) end(delivery);
  link_.flush();
}

void X11Supply::windowGone(xcb_window_t window) {
  std::erase_if(deliveries_, [window](const auto& each) { return each->window == window; });
}

// What has ended goes with the next event, since this may be its own clock's call.
void X11Supply::end(Delivery& delivery) {
  delivery.hasEnded = true;
  delivery.bytes.clear();
}

void X11Supply::sweep() {
  QList<xcb_window_t> left;
  for (const auto& each : deliveries_) {
    if (each->hasEnded) left.append(each->window);
  }
  if (left.isEmpty()) return;
  std::erase_if(deliveries_, [](const auto& each) { return each->hasEnded; });
  for (const xcb_window_t window : left) {
    const bool stillTakes = std::ranges::any_of(deliveries_, [=](const auto& each) { return each->window == window; });
    if (stillTakes || link_.made(window)) continue;
    // What else that window is used for wakes nobody here.
    const quint32 none = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(link_.connection(), window, XCB_CW_EVENT_MASK, &none);
  }
  link_.flush();
}

void X11Supply::putWords(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const QList<quint32>& words) {
  xcb_change_property(link_.connection(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                      static_cast<quint32>(words.size()), words.constData());
}

}  // namespace tarnwick
