#include "services/RemoteValues.h"

#include <QCoroTask>
#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <utility>

#include "services/RemoteRules.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

namespace {

constexpr double kInstant = 1e-6;  ///< Seconds between two moments that are the same.

}  // namespace

double RemoteValues::systemBootClock() {
  timespec time{};
  clock_gettime(CLOCK_BOOTTIME, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

RemoteValues::RemoteValues(Setup setup)
    : scheduler_(setup.scheduler),
      session_(setup.session),
      network_(setup.network),
      loader_(std::move(setup.loader)),
      bootClock_(std::move(setup.bootClock)),
      headlines_(setup.scheduler, std::move(setup.cacheFile)) {
  connect(&setup.session, &SessionEvents::lockedChanged, this, [this](bool locked) {
    isLocked_ = locked;
    startOwed();
  });
  connect(&setup.session, &SessionEvents::willSleep, this, [this] {
    isAsleep_ = true;
    tellOwed();
  });
  connect(&setup.session, &SessionEvents::didWake, this, [this] {
    isAsleep_ = false;
    renewNetwork();
    startOwed();
  });
  connect(&setup.session, &SessionEvents::lockKnown, this, &RemoteValues::startSoon);
  connect(&network_, &NetworkReach::changed, this, [this] {
    if (const bool was = std::exchange(wasOnline_, network_.isOnline()); !was && wasOnline_) renewNetwork();
    startOwed();
  });
}

RemoteValues::~RemoteValues() = default;

// --- What is shown --------------------------------------------------------------------------------------------------

std::optional<RemoteReading> RemoteValues::reading(QUuid widget) const {
  RemoteReading reading;
  if (const auto known = known_.constFind(widget); known != known_.constEnd() && owed_.contains(widget))
    reading.waitsFor = waitOf(*known);
  const auto found = remote_.constFind(widget);
  // Of one that was never asked it is known at most why.
  if (found == remote_.constEnd()) return reading.waitsFor ? std::optional(reading) : std::nullopt;
  reading.value = *found;
  reading.isAsking = jobs_.contains(widget);
  reading.isLoading = found->loading && reading.isAsking && !unnoticed_.contains(widget);
  // A list or chart that would vanish for the time of a fetch stays, and so does the sentence of a failure.
  if (const auto settled = settled_.constFind(widget); found->loading && settled != settled_.constEnd())
    reading.value = *settled;
  if (const auto at = goodAt_.constFind(widget); at != goodAt_.constEnd()) reading.goodAt = *at;
  if (isPaused(widget)) reading.pausedUntil = pauses_.value(widget).until;
  return reading;
}

std::optional<QDateTime> RemoteValues::nextRefresh(QUuid widget) const {
  const auto shown = std::ranges::find(current_, widget, &DockWidget::id);
  if (shown == current_.end() || !RemoteRules::isSetUp(*shown) || waitOf(*shown)) return std::nullopt;
  double seconds = std::max(0.0, beatAt_ + everyTicks() - scheduler_.reference());
  if (isPaused(widget)) {
    // Its end begins nothing; the first beat behind it does.
    const double left = static_cast<double>(scheduler_.now().msecsTo(pauses_.value(widget).until)) / 1000;
    if (left > seconds) seconds += std::ceil((left - seconds) / everyTicks()) * everyTicks();
  }
  return scheduler_.now().addMSecs(static_cast<qint64>(seconds * 1000));
}

void RemoteValues::write(QUuid widget, const RemoteValue& value) {
  remote_.insert(widget, value);
  Q_EMIT changed(widget);
}

void RemoteValues::settle(QUuid widget, const RemoteValue& value) {
  unnoticed_.erase(widget);
  settled_.insert(widget, value);
  write(widget, value);
}

void RemoteValues::forget(QUuid widget) {
  endFetch(widget);
  const bool was = remote_.remove(widget);
  settled_.remove(widget);
  goodAt_.remove(widget);
  headlines_.forget(widget);
  if (was) Q_EMIT changed(widget);
}

// --- The document ---------------------------------------------------------------------------------------------------

namespace {

/// Whether a change asks for other values. What shows the weather beside something else may change that alone.
bool asksAnew(const DockWidget& before, const DockWidget& after) {
  if (before.kind != after.kind || !KindTraits::of(after.kind).showsCityWeather) return before != after;
  return std::ranges::any_of(std::array{option::city, option::cityPosition, option::weatherLocation},
                             [&](const auto& key) { return before.options.value(key) != after.options.value(key); });
}

}  // namespace

void RemoteValues::follow(const DockConfiguration& config, const ActiveSets& active) {
  usesFahrenheit_ = config.weatherUsesFahrenheit();
  QHash<QUuid, DockWidget> known;
  for (const DockProfile& profile : config.profiles) {
    for (const DockWidget& widget : profile.widgets) {
      if (RemoteRules::isRemote(widget.kind)) known.insert(widget.id, widget);
    }
  }
  std::swap(known, known_);
  for (const DockWidget& before : std::as_const(known)) {
    const auto after = known_.constFind(before.id);
    if (after == known_.constEnd()) {
      forget(before.id);
      unseenSince_.remove(before.id);
    } else if (RemoteRules::isSetUp(before) && !RemoteRules::isSetUp(*after)) {
      forget(before.id);  // Connected to nothing, it shows nothing, as a new one.
    } else if (asksAnew(before, *after)) {
      // An answer to what was asked before the edit is an answer to something else. What is shown stays.
      endFetch(before.id);
      if (after->kind != before.kind || after->options != before.options) headlines_.forget(before.id);
    }
  }
  for (const DockWidget& widget : std::as_const(known_)) {
    // One that comes while its dock is hidden has not been seen since now.
    if (seen_ && !known.contains(widget.id) && !seen_->contains(widget.id))
      unseenSince_.insert(widget.id, scheduler_.reference());
  }
  current_ = active.widgets;
  current_.removeIf([](const DockWidget& widget) { return !RemoteRules::isRemote(widget.kind); });
}

/// Ends what is under way for a widget, and what its service asked for.
void RemoteValues::endFetch(QUuid widget) {
  jobs_.erase(widget);
  unnoticed_.erase(widget);
  pauses_.remove(widget);
  owed_.remove(widget);
  early_.remove(widget);
  again_.remove(widget);
  waiting_.removeIf([widget](const Waiting& waiting) { return waiting.widget == widget; });
  // A place is free for who waits.
  if (!next_) startSoon();
}

// --- Who is refreshed when ------------------------------------------------------------------------------------------

void RemoteValues::start(const DockConfiguration& config, const ActiveSets& active) {
  beatAt_ = scheduler_.reference();
  follow(config, active);
  headlines_.read([this] { return known_.values(); },
                  [this](const DockWidget& widget, const RemoteValue& value) { takeKept(widget, value); });
}

void RemoteValues::beat(const ActiveSets&) {
  beatAt_ = scheduler_.reference();
  spread(current_, kSpread);
}

void RemoteValues::refreshAll() { spread(current_, kSpreadOnRequest); }

/// Lets those that are set up begin one after the other, the seen ones first.
void RemoteValues::spread(const QList<DockWidget>& widgets, double seconds) {
  if (isOver_) return;
  QList<QUuid> wanted;
  for (const DockWidget& widget : widgets) {
    if (RemoteRules::isSetUp(widget) && !wanted.contains(widget.id)) wanted << widget.id;
  }
  if (wanted.isEmpty()) return;
  if (!knownBy_) {
    knownBy_ = scheduler_.reference() + kPatience;
    renewNetwork();
    network_.start();
  }
  std::ranges::stable_partition(wanted, [this](QUuid id) { return !seen_ || seen_->contains(id); });
  waiting_.removeIf([&](const Waiting& waiting) { return wanted.contains(waiting.widget); });
  const double gap = std::min(seconds / static_cast<double>(wanted.size()), kLongestGap);
  double due = scheduler_.reference();
  for (const QUuid id : std::as_const(wanted)) {
    waiting_.append({id, due});
    due += gap;
  }
  std::ranges::stable_sort(waiting_, std::ranges::less(), &Waiting::due);
  startSoon();
}

void RemoteValues::startSoon() {
  if (!waiting_.isEmpty()) next_ = scheduler_.after(0, [this] { startWaiting(); });
}

/// Lets one begin at a moment.
void RemoteValues::wait(QUuid widget, double due) {
  waiting_.removeIf([widget](const Waiting& waiting) { return waiting.widget == widget; });
  waiting_.append({widget, due});
  std::ranges::stable_sort(waiting_, std::ranges::less(), &Waiting::due);
  startSoon();
}

void RemoteValues::owe(QUuid widget) {
  if (owed_.contains(widget)) return;
  owed_.insert(widget);
  Q_EMIT changed(widget);
}

void RemoteValues::startWaiting() {
  next_.reset();
  // What is asked before it is known that there is no network fails for nothing.
  if (!network_.isKnown() || !session_.isLockKnown()) {
    if (const double left = knownBy_.value_or(0) - scheduler_.reference(); left > kInstant) {
      next_ = scheduler_.after(left, [this] { startWaiting(); });
      return;
    }
  }
  while (!waiting_.isEmpty() && std::ssize(jobs_) < kMostAtOnce) {
    const double left = waiting_.constFirst().due - scheduler_.reference();
    if (left > kInstant) {
      next_ = scheduler_.after(left, [this] { startWaiting(); });
      return;
    }
    const auto widget = known_.constFind(waiting_.takeFirst().widget);
    if (widget == known_.constEnd()) continue;
    if (!waitOf(*widget)) {
      if (!isPaused(widget->id)) begin(*widget);
      owed_.remove(widget->id);
    } else {
      owe(widget->id);
    }
  }
}

bool RemoteValues::isUnseen(QUuid widget) const {
  const auto since = unseenSince_.constFind(widget);
  return since != unseenSince_.constEnd() && scheduler_.reference() - *since >= kUnseen;
}

/// What keeps a widget from being refreshed by itself; absent where nothing does.
std::optional<RemoteWait> RemoteValues::waitOf(const DockWidget& widget, Cause cause) const {
  if (isAsleep_) return RemoteWait::Waking;
  if (isLocked_) return RemoteWait::Unlocking;
  if (!network_.isOnline() && RemoteRules::asksTheNet(widget)) return RemoteWait::Network;
  if (cause == Cause::News && isUnseen(widget.id)) return RemoteWait::BeingSeen;
  return std::nullopt;
}

/// Whether what cannot be reached now may be found in a moment.
bool RemoteValues::isNetworkFresh() const {
  return network_.isOnItsWay() || freshUntil_ - scheduler_.reference() > kInstant;
}

void RemoteValues::renewNetwork() { freshUntil_ = scheduler_.reference() + kFresh; }

void RemoteValues::startOwed() {
  if (network_.isOnline() && !network_.isOnItsWay()) {
    for (const QUuid& widget : std::exchange(again_, {})) wait(widget, scheduler_.reference());
  }
  QList<DockWidget> due;
  for (const DockWidget& widget : std::as_const(current_)) {
    if (owed_.contains(widget.id) && !waitOf(widget)) due << widget;
  }
  spread(due, kSpreadOnRequest);
  startSoon();
  tellOwed();
}

/// What they wait for may be something else by now.
void RemoteValues::tellOwed() {
  const QSet<QUuid> owed = owed_;
  for (const QUuid& widget : owed) Q_EMIT changed(widget);
}

void RemoteValues::setSeen(const QSet<QUuid>& widgets) {
  if (seen_ == widgets) return;
  const double now = scheduler_.reference();
  for (const DockWidget& widget : std::as_const(known_)) {
    if (widgets.contains(widget.id)) {
      unseenSince_.remove(widget.id);
    } else if (!unseenSince_.contains(widget.id)) {
      unseenSince_.insert(widget.id, now);
    }
  }
  seen_ = widgets;
  startOwed();
}

// --- One fetch ------------------------------------------------------------------------------------------------------

bool RemoteValues::isPaused(QUuid widget) const {
  const auto pause = pauses_.constFind(widget);
  return pause != pauses_.constEnd() && pause->until > scheduler_.now() && pause->bootEnd > bootClock_();
}

void RemoteValues::refresh(const DockWidget& widget) {
  if (!isOver_) begin(widget);
}

void RemoteValues::refreshByItself(const DockWidget& widget, Cause cause) {
  if (isOver_ || isPaused(widget.id)) return;
  if (waitOf(widget, cause)) {
    owe(widget.id);
  } else {
    begin(widget);
  }
}

void RemoteValues::begin(const DockWidget& widget) {
  const QUuid id = widget.id;
  owed_.remove(id);
  again_.remove(id);
  early_.remove(id);
  if (RemoteRules::asksTheNet(widget) && isNetworkFresh()) early_.insert(id);
  waiting_.removeIf([id](const Waiting& waiting) { return waiting.widget == id; });
  const bool replaces = jobs_.erase(id) > 0;
  // What is read again by the second would flicker.
  const auto settled = settled_.constFind(id);
  const bool staysShown = !RemoteRules::asksTheNet(widget) && settled != settled_.constEnd() && !settled->failed;
  const auto previous = remote_.constFind(id);
  const std::optional<RemoteValue> before = previous == remote_.constEnd() ? std::nullopt : std::optional(*previous);
  if (!staysShown) {
    // One that takes the place of another goes on with what is seen of it.
    if (!replaces)
      unnoticed_[id] = scheduler_.after(kUnnoticed, [this, id] {
        const JobHandle job = std::move(unnoticed_.extract(id).mapped());
        Q_EMIT changed(id);
      });
    write(id, RemoteRules::placeholder(before, scheduler_.now()));
  }
  jobs_[id] = std::make_unique<RemoteFetch>(
      scheduler_,
      [loader = loader_, widget, fahrenheit = usesFahrenheit_](std::stop_token stop) {
        return loader(widget, fahrenheit, stop);
      },
      [this, widget](const RemoteValue& value) { succeed(widget, value); },
      [this, widget](const FetchFailure& failure) { fail(widget, failure); });
}

void RemoteValues::succeed(const DockWidget& widget, RemoteValue value) {
  const auto job = jobs_.extract(widget.id);  // Lives until this returns: it is its function that runs.
  pauses_.remove(widget.id);
  early_.remove(widget.id);
  value = RemoteRules::cleaned(std::move(value));
  goodAt_.insert(widget.id, scheduler_.now());
  headlines_.keep(widget, value);
  settle(widget.id, value);
  startWaiting();
}

void RemoteValues::fail(const DockWidget& widget, const FetchFailure& failure) {
  const auto job = jobs_.extract(widget.id);
  const QDateTime now = scheduler_.now();
  if (const auto until = RemoteRules::pause(failure, now)) {
    const double length = static_cast<double>(now.msecsTo(*until)) / 1000;
    pauses_.insert(widget.id, {*until, bootClock_() + length});
  }
  const auto previous = remote_.constFind(widget.id);
  const std::optional<RemoteValue> before = previous == remote_.constEnd() ? std::nullopt : std::optional(*previous);
  settle(widget.id, RemoteRules::failed(before, failure.sentence, now));
  if (early_.remove(widget.id) && failure.isUnreachable) {
    if (network_.isOnItsWay())
      again_.insert(widget.id);
    else
      wait(widget.id, std::max(scheduler_.reference(), freshUntil_));
  }
  startWaiting();
}

/// What was there before a fetch that came to nothing is there again.
void RemoteValues::cancelAll() {
  next_.reset();
  waiting_.clear();
  owed_.clear();
  again_.clear();
  unnoticed_.clear();
  const auto ended = std::exchange(jobs_, {});
  for (const auto& [id, job] : ended) {
    if (!remote_.value(id).loading) continue;
    if (const auto settled = settled_.constFind(id); settled != settled_.constEnd())
      remote_.insert(id, *settled);
    else
      remote_.remove(id);
    Q_EMIT changed(id);
  }
}

void RemoteValues::end() {
  isOver_ = true;
  next_.reset();
  jobs_.clear();
  unnoticed_.clear();
  waiting_.clear();
  headlines_.end();
}

/// What an answer was faster than stays.
void RemoteValues::takeKept(const DockWidget& widget, const RemoteValue& value) {
  goodAt_.insert(widget.id, value.updated);
  const auto shown = remote_.constFind(widget.id);
  if (shown == remote_.constEnd()) {
    settle(widget.id, value);
  } else if (!shown->value) {
    RemoteValue kept = *shown;
    kept.value = value.value;
    if (kept.loading) settled_.insert(widget.id, value);
    write(widget.id, kept);
  }
}

}  // namespace tarnwick
