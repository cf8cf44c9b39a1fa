#include "audio/AudioRoutes.h"

#include <QCoreApplication>
#include <algorithm>

#include "audio/AppAudioFormat.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct RoutesWords {
  Q_DECLARE_TR_FUNCTIONS(ApplicationAudio)
};

}  // namespace

AudioRoutes::AudioRoutes(const AppAudioRoute::Parts& parts, std::function<void()> changed)
    : parts_(parts), changed_(std::move(changed)) {}

AudioRoutes::~AudioRoutes() { stop(); }

AppAudioRoute* AudioRoutes::route(quint32 id) const {
  const auto found = std::ranges::find(routes_, id, [](const Route& each) { return each->process().id; });
  return found == routes_.end() ? nullptr : found->get();
}

int AudioRoutes::freeSlot() const {
  int slot = 1;
  while (std::ranges::find(routes_, slot, [](const Route& each) { return each->slot(); }) != routes_.end()) ++slot;
  return slot;
}

void AudioRoutes::refresh() {
  state_.capability = parts_.hardware.capability();
  if (!state_.capability) {
    state_.processes.clear();
    return;
  }
  try {
    list();
  } catch (const DomainError& failure) {
    state_.error = failure.message();
  }
}

void AudioRoutes::list() {
  QList<AudioProcessEntry> processes;
  for (const AudioRows::Row& row : parts_.rows.read(QT_TRANSLATE_NOOP("AppAudioHardware", "List audio apps")))
    if (row.isPlaying) processes.append(row.entry);
  QList<AudioProcessEntry> controlled;
  for (const Route& each : routes_) controlled.append(each->process());
  std::ranges::stable_sort(controlled, {}, &AudioProcessEntry::name);
  for (const AudioProcessEntry& each : controlled)
    if (std::ranges::find(processes, each.id, &AudioProcessEntry::id) == processes.end()) processes.append(each);
  std::ranges::stable_sort(processes, {}, &AudioProcessEntry::name);
  state_.processes = processes;
}

void AudioRoutes::setShown(bool shown) {
  isShown_ = shown;
  if (shown) refresh();
  listen();
}

void AudioRoutes::start(const AudioProcessEntry& process) {
  if (route(process.id)) return;
  if (const Capability can = parts_.hardware.capability(); !can) {
    state_.error = can.reason;
    return;
  }
  if (!quarantined_.empty()) {
    state_.error = RoutesWords::tr(
        "An audio driver has not released an earlier route. Restore playback before enabling another app.");
    return;
  }
  if (routes_.size() >= kMost) {
    state_.error = RoutesWords::tr("Up to eight apps can be controlled together. Stop a route before adding another.");
    return;
  }
  auto made = std::make_unique<AppAudioRoute>(parts_, process, freeSlot());
  try {
    if (!hasRecovered_) giveBackStreams(parts_.hardware, parts_.journal);
    hasRecovered_ = true;
    made->start(1);
  } catch (const DomainError& failure) {
    if (made->stop()) {
      state_.error = failure.message() + u' ' + RoutesWords::tr("Original playback is restored.");
    } else {
      quarantined_.push_back(std::move(made));
      state_.error = failure.message() + u' ' +
                     RoutesWords::tr(
                         "The driver did not release the route; restoration could not be confirmed. "
                         "Try Restore All Playback.");
    }
    return;
  }
  state_.gains.insert(process.id, made->gain());
  routes_.push_back(std::move(made));
  state_.error.clear();
  listen();
}

/// Everything but the end of listening, which waits for whoever ends several.
void AudioRoutes::letGo(quint32 id) {
  const auto found = std::ranges::find(routes_, id, [](const Route& each) { return each->process().id; });
  if (found == routes_.end()) return;
  Route ended = std::move(*found);
  routes_.erase(found);
  state_.gains.remove(id);
  if (ended->stop()) return;
  quarantined_.push_back(std::move(ended));
  state_.error = RoutesWords::tr(
      "The audio driver did not release a route. Original playback restoration is not confirmed. "
      "Try Restore All Playback.");
}

void AudioRoutes::stop(quint32 id) {
  letGo(id);
  listen();
}

void AudioRoutes::stop() {
  for (const quint32 id : state_.gains.keys()) letGo(id);
  std::erase_if(quarantined_, [](const Route& each) { return each->stop(); });
  returnRest();
  state_.error = quarantined_.empty()
                     ? QString()
                     : RoutesWords::tr(
                           "The driver still holds an audio route. Restart Tarnwick before trying again; "
                           "restoration could not be confirmed.");
  listen();
}

void AudioRoutes::validateRoutes() {
  QList<quint32> broken;
  for (const Route& each : routes_)
    if (!each->valid()) broken.append(each->process().id);
  for (const quint32 id : broken) letGo(id);
  if (!broken.isEmpty() && quarantined_.empty())
    state_.error =
        RoutesWords::tr("Audio routing changed. Affected apps were restored; reconnect to adjust their volume.");
  for (const Route& each : routes_) {
    try {
      each->takeStreams();
    } catch (const DomainError& failure) {
      state_.error = failure.message();
    }
  }
  if (!routes_.empty()) returnStrays();
  if (isShown_) refresh();
  listen();
}

/// What could not be given back with its route.
void AudioRoutes::returnRest() {
  if (parts_.journal.records().isEmpty()) return;
  try {
    giveBackStreams(parts_.hardware, parts_.journal);
  } catch (const DomainError&) {
    // It stays in the journal for the next start.
  }
}

/// The server remembers where an application played that ended while it was controlled. When it comes back it must not
/// be heard through what now controls another one.
void AudioRoutes::returnStrays() {
  for (const AudioHardware::Stream& stream : parts_.hardware.allStreams().value) {
    if (!AudioStreamJournal::isOurs(stream)) continue;
    const bool isTaken =
        std::ranges::any_of(routes_, [&stream](const Route& each) { return each->hasTaken(stream.serial); });
    if (!isTaken) parts_.hardware.bind(stream.serial, {}, {});
  }
}

void AudioRoutes::listen() {
  const bool wants = isShown_ || !routes_.empty();
  if (std::exchange(listens_, wants) != wants) parts_.hardware.listen(wants ? changed_ : nullptr);
}

}  // namespace tarnwick
