#include "platform/wayland/WaylandPasteboard.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <utility>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// By this type we know our own offers when the compositor tells us of them. The process is in it, since the offer of an
// earlier run may still be there.
constexpr auto kClaim = "application/x-tarnwick-claim;"_L1;
QString claimType(quint64 claim) {
  return kClaim + u"process=%1;number=%2"_s.arg(QCoreApplication::applicationPid()).arg(claim);
}

/// The names under which programs of X11 look for a form.
QStringList namesOf(const QString& type) {
  if (type == u"text/plain;charset=utf-8"_s) return {type, u"UTF8_STRING"_s, u"TEXT"_s, u"STRING"_s};
  return {type};
}

template <class Transfers>
void removeEnded(Transfers& transfers) {
  std::erase_if(transfers, [](const auto& each) { return each->hasEnded(); });
}

}  // namespace

/// What we offer.
struct WaylandPasteboard::Given {
  PasteboardOffer offer;
  std::unique_ptr<DataControl::Source> source;
};

/// A round trip that is under way.
struct WaylandPasteboard::Question {
  WaylandPasteboard* owner;
  quint64 change;
  QPointer<QObject> context;
  Answer done;
  WaylandOwned<wl_callback> callback;
};

WaylandPasteboard::WaylandPasteboard(const WaylandSession& session, const ClientWindows& windows, Scheduler& scheduler)
    : session_(session),
      windows_(windows),
      scheduler_(scheduler),
      control_(DataControl::bind(session, scheduler, *this)) {}

WaylandPasteboard::~WaylandPasteboard() = default;

Capability WaylandPasteboard::capability() const {
  return isThere() ? Capability::yes() : Capability::no(tr("This desktop does not let apps see what is copied."));
}

Capability WaylandPasteboard::endOfOwners() const {
  if (!isThere()) return capability();
  return Capability::no(tr("This desktop does not tell whether an app emptied the clipboard or ended."));
}

Capability WaylandPasteboard::owners() const {
  if (!isThere()) return capability();
  return Capability::no(tr("This desktop does not tell which app copied. The app whose window is active counts."));
}

bool WaylandPasteboard::isOwn() const {
  const auto isClaim = [](const QString& type) { return type.startsWith(kClaim); };
  return isClaiming_ || (offer_ && std::ranges::any_of(offer_->types(), isClaim));
}

// --- Reading --------------------------------------------------------------------------------------------------------

void WaylandPasteboard::readTypes(quint64 change, QObject* context, Types done) {
  std::optional<QStringList> types;
  if (change == count_ && offer_ && offer_->types().size() <= DataControl::kMostTypes) types = offer_->types();
  QMetaObject::invokeMethod(
      context, [types, done = std::move(done)] { done(types); }, Qt::QueuedConnection);
}

void WaylandPasteboard::readContent(quint64 change, const QString& type, const PasteboardLimits& limits,
                                    QObject* context, Content done) {
  std::array<int, 2> ends{-1, -1};
  const bool isCurrent = change == count_ && offer_;
  if (!isCurrent || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
    const auto why = isCurrent ? PasteboardContent::End::Refused : PasteboardContent::End::Changed;
    QMetaObject::invokeMethod(
        context,
        [why, done = std::move(done)] {
          done({why, {}});
        },
        Qt::QueuedConnection);
    return;
  }
  FileDescriptor from(ends[0]);
  const FileDescriptor into(ends[1]);
  offer_->receive(type, into);
  // The other end must be on its way before ours is closed.
  wl_display_flush(session_.display());
  sweep();
  readings_.push_back(
      std::make_unique<PipeReading>(std::move(from), scheduler_, limits.bytes, context, std::move(done)));
}

void WaylandPasteboard::confirm(quint64 change, QObject* context, Answer done) {
  static constexpr wl_callback_listener kListener{.done = [](void* data, wl_callback*, uint32_t) {
    const auto* question = static_cast<Question*>(data);
    WaylandPasteboard* self = question->owner;
    const bool holds = question->change == self->count_;
    const auto asker = question->context;
    const Answer answer = question->done;
    self->questions_.remove_if([question](const Question& each) { return &each == question; });
    if (asker) answer(holds);
  }};
  Question& question = questions_.emplace_back(Question{this, change, context, std::move(done), nullptr});
  question.callback.reset(wl_display_sync(session_.display()));
  wl_callback_add_listener(question.callback.get(), &kListener, &question);
  wl_display_flush(session_.display());
}

// --- Writing --------------------------------------------------------------------------------------------------------

quint64 WaylandPasteboard::set(const PasteboardOffer& offer) {
  if (!isThere()) return count_;
  QStringList types;
  for (const auto& form : offer.forms) types += namesOf(form.type);
  types += claimType(++claims_);
  given_.push_back({offer, control_->set(types)});
  // The compositor may refuse without a word; what others copy is news again then.
  static constexpr wl_callback_listener kClaimed{.done = [](void* data, wl_callback*, uint32_t) {
    auto* self = static_cast<WaylandPasteboard*>(data);
    self->isClaiming_ = false;
    self->claimed_.reset();
  }};
  claimed_.reset(wl_display_sync(session_.display()));
  wl_callback_add_listener(claimed_.get(), &kClaimed, this);
  wl_display_flush(session_.display());
  isClaiming_ = true;
  owner_ = {};
  ++count_;
  endReadings();
  return count_;
}

void WaylandPasteboard::clear() {
  if (!isThere()) return;
  control_->clear();
  wl_display_flush(session_.display());
}

void WaylandPasteboard::send(const DataControl::Source& source, const QString& type, FileDescriptor into) {
  removeEnded(writings_);
  const auto given = std::ranges::find(given_, &source, [](const Given& each) { return each.source.get(); });
  if (given == given_.end()) return;
  for (const auto& form : given->offer.forms) {
    if (!namesOf(form.type).contains(type)) continue;
    writings_.push_back(std::make_unique<PipeWriting>(std::move(into), form.bytes, scheduler_));
    return;
  }
}

void WaylandPasteboard::cancelled(const DataControl::Source& source) {
  std::erase_if(given_, [&source](const Given& each) { return each.source.get() == &source; });
}

// --- Events ---------------------------------------------------------------------------------------------------------

void WaylandPasteboard::selected(std::unique_ptr<DataControl::Offer> offer, bool isNews) {
  offer_ = std::move(offer);
  // What was there before is no change.
  if (!isNews && !isClaiming_) return;
  if (isClaiming_) {
    // Until then it is news of what was there before ours.
    if (!offer_ || !offer_->types().contains(claimType(claims_))) return;
    isClaiming_ = false;
  } else {
    ++count_;
    endReadings();
    owner_ = {};
    for (const ClientWindow& window : windows_.all()) {
      if (window.active) owner_ = {window.applicationId, window.instance, window.sandboxId, window.pid};
    }
  }
  Q_EMIT changed(offer_ ? PasteboardChange::Taken : PasteboardChange::Cleared);
}

// What is copied until it is listened to again is not known, and what is there then may have been there before.
void WaylandPasteboard::ended() {
  ++count_;
  endReadings();
  offer_.reset();
  isClaiming_ = false;
  owner_ = {};
  Q_EMIT changed(PasteboardChange::Cleared);
}

void WaylandPasteboard::endReadings() {
  for (const auto& each : readings_) each->end(PasteboardContent::End::Changed);
}

void WaylandPasteboard::sweep() { removeEnded(readings_); }

}  // namespace tarnwick
