#include "platform/x11/X11Pasteboard.h"

#include <poll.h>

#include <QDeadlineTimer>
#include <QPointer>
#include <cstring>
#include <utility>

#include "platform/x11/SandboxIdentity.h"
#include "platform/x11/X11Properties.h"

namespace tarnwick {
namespace {

// An owner that offers more is up to something, and would hide a mark in it.
constexpr qint64 kMostTargets = 1024;
// Milliseconds that one turn of the event loop may be held up: who sends fast is always ready with the next piece.
constexpr int kTurn = 1;
// Milliseconds that the end of the program waits for the clipboard manager.
constexpr int kHandOver = 500;

template <typename Event>
const Event& eventAs(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

QString announcedName(const QString& text) {
  QString id = text.section(u'/', -1);
  if (id.endsWith(QLatin1StringView(".desktop"))) id.chop(8);
  return id;
}

template <class Answer>
void answerLater(QObject* context, Answer answer) {
  QMetaObject::invokeMethod(context, std::move(answer), Qt::QueuedConnection);
}

}  // namespace

X11Pasteboard::X11Pasteboard(Scheduler& scheduler, QObject* parent)
    : Pasteboard(parent), scheduler_(scheduler), supply_(link_, scheduler) {
  if (!link_.isOpen()) return;
  owner_ = link_.owner(link_.clipboard());
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(link_.connection()), QSocketNotifier::Read);
  // Where that will be done in this turn of the event loop anyway, twice would take twice the time.
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
    if (!isDispatching_) dispatch();
  });
  dispatchLater();
}

X11Pasteboard::~X11Pasteboard() = default;

Capability X11Pasteboard::capability() const {
  return link_.isOpen() ? Capability::yes() : Capability::no(tr("This X server does not let apps see what is copied."));
}

// --- Reading --------------------------------------------------------------------------------------------------------

bool X11Pasteboard::isCurrent(quint64 change) {
  const bool isOwner = link_.owner(link_.clipboard()) == owner_;
  return isOwner && !link_.hasNewsOfOwner() && change == count_;
}

void X11Pasteboard::ask(quint64 change, xcb_atom_t target, qint64 most, QObject* context, X11Reading::Done done) {
  if (!link_.isOpen()) {
    answerLater(context, [done = std::move(done)] { done({{PasteboardContent::End::Changed, {}}, false}); });
    return;
  }
  auto reading = std::make_unique<X11Reading>(link_, scheduler_, most, context, std::move(done));
  // Between these two the server listens to nobody else, so that the request meets the owner that was looked at.
  xcb_grab_server(link_.connection());
  const bool mayAsk = owner_ != XCB_WINDOW_NONE && isCurrent(change);
  if (mayAsk) reading->ask(target);
  xcb_ungrab_server(link_.connection());
  link_.flush();
  if (!mayAsk) reading->end(PasteboardContent::End::Changed);
  readings_[reading->window()] = std::move(reading);
  dispatchLater();
}

void X11Pasteboard::readTypes(quint64 change, QObject* context, Types done) {
  const auto take = [this, done = std::move(done)](const X11Reading::Answer& answer) {
    if (answer.content.end != PasteboardContent::End::Whole || !answer.isAtoms) return done(std::nullopt);
    QList<quint32> atoms(answer.content.bytes.size() / qsizetype{sizeof(quint32)});
    std::memcpy(atoms.data(), answer.content.bytes.constData(),
                static_cast<std::size_t>(atoms.size()) * sizeof(quint32));
    const QStringList names = link_.names(atoms);
    dispatchLater();
    done(names);
  };
  ask(change, link_.atom("TARGETS"), kMostTargets * qint64{sizeof(quint32)}, context, take);
}

void X11Pasteboard::readContent(quint64 change, const QString& type, const PasteboardLimits& limits, QObject* context,
                                Content done) {
  const auto take = [done = std::move(done)](const X11Reading::Answer& answer) {
    done(answer.isAtoms ? PasteboardContent() : answer.content);
  };
  ask(change, link_.atom(type.toUtf8()), limits.bytes, context, take);
}

void X11Pasteboard::confirm(quint64 change, QObject* context, Answer done) {
  const bool holds = link_.isOpen() && isCurrent(change);
  dispatchLater();
  answerLater(context, [done = std::move(done), holds] { done(holds); });
}

PasteboardOwner X11Pasteboard::owner() {
  if (!link_.isOpen() || owner_ == XCB_WINDOW_NONE) return {};
  PropertyRequest gtk(link_.connection(), owner_, link_.atom("_GTK_APPLICATION_ID"));
  PropertyRequest kde(link_.connection(), owner_, link_.atom("_KDE_NET_WM_DESKTOP_FILE"));
  PropertyRequest names(link_.connection(), owner_, XCB_ATOM_WM_CLASS);
  const QList<QByteArray> classes = names.bytes().split('\0');
  PasteboardOwner found;
  found.instance = QString::fromUtf8(classes.value(0));
  for (const QString& name : {gtk.text(), kde.text(), QString::fromUtf8(classes.value(1))}) {
    if (found.applicationId.isEmpty()) found.applicationId = announcedName(name);
  }
  found.pid = link_.processOf(owner_);
  if (found.pid > 0) found.sandboxId = SandboxIdentity::of(found.pid);
  dispatchLater();
  return found;
}

// --- Writing --------------------------------------------------------------------------------------------------------

quint64 X11Pasteboard::set(const PasteboardOffer& offer) {
  if (!link_.isOpen()) return count_;
  supply_.offer(offer);
  xcb_set_selection_owner(link_.connection(), link_.window(), link_.clipboard(), XCB_CURRENT_TIME);
  link_.flush();
  ++unseenClaims_;
  owner_ = link_.window();
  ++count_;
  for (const auto& [window, reading] : readings_) reading->end(PasteboardContent::End::Changed);
  return count_;
}

void X11Pasteboard::clear() {
  if (!link_.isOpen()) return;
  supply_.withdraw();
  xcb_set_selection_owner(link_.connection(), XCB_WINDOW_NONE, link_.clipboard(), XCB_CURRENT_TIME);
  link_.flush();
}

void X11Pasteboard::handOver() {
  if (!link_.isOpen() || supply_.isEmpty()) return;
  const xcb_atom_t manager = link_.atom("CLIPBOARD_MANAGER");
  if (link_.owner(manager) == XCB_WINDOW_NONE) return;
  const xcb_atom_t property = link_.atom("TARNWICK_SAVE");
  const QList<quint32> targets = supply_.targets();
  xcb_change_property(link_.connection(), XCB_PROP_MODE_REPLACE, link_.window(), property, XCB_ATOM_ATOM, 32,
                      static_cast<quint32>(targets.size()), targets.constData());
  xcb_convert_selection(link_.connection(), link_.window(), manager, link_.atom("SAVE_TARGETS"), property,
                        XCB_CURRENT_TIME);
  link_.flush();
  isSaved_.reset();
  const QDeadlineTimer deadline(kHandOver);
  dispatch();
  while (!isSaved_ && link_.isOpen() && !deadline.hasExpired()) {
    pollfd waiting{.fd = xcb_get_file_descriptor(link_.connection()), .events = POLLIN, .revents = 0};
    // What has arrived already makes the descriptor ready no more.
    if (!isDispatching_) poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
    dispatch();
  }
}

// --- Events ---------------------------------------------------------------------------------------------------------

void X11Pasteboard::dispatchLater() {
  if (std::exchange(isDispatching_, true)) return;
  QMetaObject::invokeMethod(this, &X11Pasteboard::dispatch, Qt::QueuedConnection);
}

void X11Pasteboard::dispatch() {
  isDispatching_ = false;
  // A listener may end this.
  const QPointer<X11Pasteboard> guard(this);
  const QDeadlineTimer turn(kTurn, Qt::PreciseTimer);
  bool hasMore = true;
  while (hasMore && !turn.hasExpired()) {
    const auto event = link_.next();
    hasMore = event != nullptr;
    // Pieces of content come first: an event may tell of the next.
    for (const auto& [window, reading] : readings_) hasMore |= reading->look();
    if (!event) continue;
    handle(*event);
    if (!guard) return;
  }
  if (hasMore) dispatchLater();
  sweep();
  if (notifier_ && !link_.isOpen()) notifier_->setEnabled(false);
}

void X11Pasteboard::handle(const xcb_generic_event_t& event) {
  const int kind = event.response_type & 0x7f;
  if (kind == link_.fixesEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
    return ownerChanged(eventAs<xcb_xfixes_selection_notify_event_t>(event));
  }
  switch (kind) {
    case XCB_SELECTION_NOTIFY: {
      const auto& notice = eventAs<xcb_selection_notify_event_t>(event);
      if (notice.requestor == link_.window()) isSaved_ = notice.property != XCB_ATOM_NONE;
      if (const auto found = readings_.find(notice.requestor); found != readings_.end())
        found->second->notified(notice);
      return;
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& change = eventAs<xcb_property_notify_event_t>(event);
      // A window may be on both sides: what we copied ourselves is read like everything else.
      if (const auto found = readings_.find(change.window); found != readings_.end())
        found->second->propertyChanged(change);
      return supply_.propertyChanged(change);
    }
    case XCB_SELECTION_REQUEST:
      return supply_.requested(eventAs<xcb_selection_request_event_t>(event));
    case XCB_DESTROY_NOTIFY:
      return supply_.windowGone(eventAs<xcb_destroy_notify_event_t>(event).window);
    default:
      return;  // Errors are of windows that went meanwhile.
  }
}

void X11Pasteboard::ownerChanged(const xcb_xfixes_selection_notify_event_t& event) {
  const bool isTaken = event.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
  const bool isOurs = isTaken && event.owner == link_.window();
  if (isOurs && unseenClaims_ > 0) {
    supply_.setTime(event.selection_timestamp);
    if (--unseenClaims_ == 0) Q_EMIT changed(PasteboardChange::Taken);
    return;
  }
  // Older than what we put there, and gone since.
  if (unseenClaims_ > 0) return;
  owner_ = isTaken ? event.owner : xcb_window_t{XCB_WINDOW_NONE};
  if (!isOurs) supply_.withdraw();
  ++count_;
  for (const auto& [window, reading] : readings_) reading->end(PasteboardContent::End::Changed);
  const auto gone = isTaken ? PasteboardChange::Cleared : PasteboardChange::OwnerGone;
  Q_EMIT changed(owner_ == XCB_WINDOW_NONE ? gone : PasteboardChange::Taken);
}

void X11Pasteboard::sweep() {
  std::erase_if(readings_, [](const auto& each) { return each.second->hasEnded(); });
}

}  // namespace tarnwick
