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

// An owner that offers more is up to something, and would hide a mark in it.
constexpr qsizetype kMostTypes = 1024;

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

/// What some program offers.
class WaylandPasteboard::Offer {
 public:
  explicit Offer(zwlr_data_control_offer_v1* offer) : offer_(offer) {
    static constexpr zwlr_data_control_offer_v1_listener kListener{
        .offer = [](void* data, zwlr_data_control_offer_v1*, const char* type) {
          auto& types = static_cast<Offer*>(data)->types_;
          if (types.size() <= kMostTypes) types.append(QString::fromUtf8(type));
        }};
    zwlr_data_control_offer_v1_add_listener(offer, &kListener, this);
  }

  zwlr_data_control_offer_v1* object() const { return offer_.get(); }
  const QStringList& types() const { return types_; }

 private:
  WaylandOwned<zwlr_data_control_offer_v1> offer_;
  QStringList types_;
};

/// What we offer.
class WaylandPasteboard::Source {
 public:
  Source(WaylandPasteboard& owner, PasteboardOffer offer, quint64 claim)
      : owner_(owner),
        offer_(std::move(offer)),
        source_(zwlr_data_control_manager_v1_create_data_source(owner.manager_.get())) {
    static constexpr zwlr_data_control_source_v1_listener kListener{
        .send =
            [](void* data, zwlr_data_control_source_v1*, const char* type, int32_t into) {
              const auto* self = static_cast<Source*>(data);
              self->owner_.send(self->offer_, QString::fromUtf8(type), FileDescriptor(into));
            },
        .cancelled =
            [](void* data, zwlr_data_control_source_v1*) {
              const auto* self = static_cast<Source*>(data);
              self->owner_.ended(self);
            }};
    zwlr_data_control_source_v1_add_listener(source_.get(), &kListener, this);
    for (const auto& form : offer_.forms) {
      for (const QString& name : namesOf(form.type)) give(name);
    }
    give(claimType(claim));
  }

  zwlr_data_control_source_v1* object() const { return source_.get(); }

 private:
  void give(const QString& type) { zwlr_data_control_source_v1_offer(source_.get(), type.toUtf8().constData()); }

  WaylandPasteboard& owner_;
  PasteboardOffer offer_;
  WaylandOwned<zwlr_data_control_source_v1> source_;
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
    : session_(session), windows_(windows), scheduler_(scheduler), manager_(session.bindDataControl()) {
  if (!manager_ || !session.seat()) return;
  device_.reset(zwlr_data_control_manager_v1_get_data_device(manager_.get(), session.seat()));
  static constexpr zwlr_data_control_device_v1_listener kListener{
      .data_offer = [](void* data, zwlr_data_control_device_v1*,
                       zwlr_data_control_offer_v1* offer) { static_cast<WaylandPasteboard*>(data)->offered(offer); },
      .selection = [](void* data, zwlr_data_control_device_v1*,
                      zwlr_data_control_offer_v1* offer) { static_cast<WaylandPasteboard*>(data)->selected(offer); },
      .finished = [](void* data, zwlr_data_control_device_v1*) { static_cast<WaylandPasteboard*>(data)->finished(); },
      .primary_selection = [](void*, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1*) {}};
  zwlr_data_control_device_v1_add_listener(device_.get(), &kListener, this);
  // Some compositors say nothing at first where nothing is there, and the first copy would be taken for old.
  static constexpr wl_callback_listener kFirst{.done = [](void* data, wl_callback*, uint32_t) {
    auto* self = static_cast<WaylandPasteboard*>(data);
    self->knowsFirst_ = true;
    self->first_.reset();
  }};
  first_.reset(wl_display_sync(session.display()));
  wl_callback_add_listener(first_.get(), &kFirst, this);
  wl_display_flush(session.display());
}

WaylandPasteboard::~WaylandPasteboard() = default;

Capability WaylandPasteboard::capability() const {
  return device_ ? Capability::yes() : Capability::no(tr("This desktop does not let apps see what is copied."));
}

Capability WaylandPasteboard::endOfOwners() const {
  if (!device_) return capability();
  return Capability::no(tr("This desktop does not tell whether an app emptied the clipboard or ended."));
}

Capability WaylandPasteboard::owners() const {
  if (!device_) return capability();
  return Capability::no(tr("This desktop does not tell which app copied. The app whose window is active counts."));
}

bool WaylandPasteboard::isOwn() const {
  const auto isClaim = [](const QString& type) { return type.startsWith(kClaim); };
  return isClaiming_ || (offer_ && std::ranges::any_of(offer_->types(), isClaim));
}

// --- Reading --------------------------------------------------------------------------------------------------------

void WaylandPasteboard::readTypes(quint64 change, QObject* context, Types done) {
  std::optional<QStringList> types;
  if (change == count_ && offer_ && offer_->types().size() <= kMostTypes) types = offer_->types();
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
  zwlr_data_control_offer_v1_receive(offer_->object(), type.toUtf8().constData(), into.number());
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
  if (!device_) return count_;
  sources_.push_back(std::make_unique<Source>(*this, offer, ++claims_));
  zwlr_data_control_device_v1_set_selection(device_.get(), sources_.back()->object());
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
  if (!device_) return;
  zwlr_data_control_device_v1_set_selection(device_.get(), nullptr);
  wl_display_flush(session_.display());
}

void WaylandPasteboard::send(const PasteboardOffer& offer, const QString& type, FileDescriptor into) {
  removeEnded(writings_);
  for (const auto& form : offer.forms) {
    if (!namesOf(form.type).contains(type)) continue;
    writings_.push_back(std::make_unique<PipeWriting>(std::move(into), form.bytes, scheduler_));
    return;
  }
}

void WaylandPasteboard::ended(const Source* source) {
  std::erase_if(sources_, [source](const auto& each) { return each.get() == source; });
}

// --- Events ---------------------------------------------------------------------------------------------------------

void WaylandPasteboard::offered(zwlr_data_control_offer_v1* offer) {
  coming_.push_back(std::make_unique<Offer>(offer));
}

void WaylandPasteboard::selected(zwlr_data_control_offer_v1* offer) {
  offer_.reset();
  const auto found = std::ranges::find_if(coming_, [offer](const auto& each) { return each->object() == offer; });
  if (found != coming_.end()) offer_ = std::move(*found);
  coming_.clear();
  // What was there before is no change.
  if (!std::exchange(knowsFirst_, true) && !isClaiming_) return;
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

// The seat went, or another program took the place of this one.
void WaylandPasteboard::finished() {
  endReadings();
  offer_.reset();
  coming_.clear();
  sources_.clear();
  device_.reset();
}

void WaylandPasteboard::endReadings() {
  for (const auto& each : readings_) each->end(PasteboardContent::End::Changed);
}

void WaylandPasteboard::sweep() { removeEnded(readings_); }

}  // namespace tarnwick
