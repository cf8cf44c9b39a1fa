#include "store/BeatClients.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {
namespace {

/// What must be there before the first beat. Those that are not here follow, in the order of their steps.
constexpr BeatStep kStartOrder[] = {BeatStep::Media, BeatStep::Productivity, BeatStep::Clipboard};

/// What still acts on the desktop is stopped first. Those that are not here follow, in the order of their steps.
constexpr BeatStep kEndOrder[] = {BeatStep::Media,           BeatStep::Meetings,       BeatStep::Sounds,
                                  BeatStep::KeyboardCleaner, BeatStep::WindowPreviews, BeatStep::RemoteValues,
                                  BeatStep::VoiceRecorder};

auto placeAtTheStart(BeatStep step) { return std::ranges::find(kStartOrder, step) - std::begin(kStartOrder); }

auto placeAtTheEnd(BeatStep step) { return std::ranges::find(kEndOrder, step) - std::begin(kEndOrder); }

auto startPlaceOf(const BeatClient* client) { return placeAtTheStart(client->step()); }

auto endPlaceOf(const BeatClient* client) { return placeAtTheEnd(client->step()); }

}  // namespace

BeatClients::BeatClients(const QList<BeatClient*>& clients) : beating_(clients) {
  std::ranges::stable_sort(beating_, {}, &BeatClient::step);
  starting_ = beating_;
  std::ranges::stable_sort(starting_, {}, startPlaceOf);
  ending_ = beating_;
  std::ranges::stable_sort(ending_, {}, endPlaceOf);
}

void BeatClients::startThrough(BeatStep last, const DockConfiguration& config, const ActiveSets& active) const {
  for (BeatClient* client : starting_) {
    if (startPlaceOf(client) <= placeAtTheStart(last)) client->start(config, active);
  }
}

void BeatClients::startAfter(BeatStep last, const DockConfiguration& config, const ActiveSets& active) const {
  for (BeatClient* client : starting_) {
    if (startPlaceOf(client) > placeAtTheStart(last)) client->start(config, active);
  }
}

void BeatClients::beat(BeatStep from, BeatStep to, qint64 tick, const ActiveSets& active) const {
  for (BeatClient* client : beating_) {
    if (client->step() < from || client->step() > to) continue;
    const int every = client->everyTicks();
    if (every > 0 && tick % every == 0 && client->isNeededBy(active)) client->beat(active);
  }
}

void BeatClients::wake() const {
  for (BeatClient* client : beating_) client->wake();
}

void BeatClients::endThrough(BeatStep last) const {
  for (BeatClient* client : ending_) {
    if (endPlaceOf(client) <= placeAtTheEnd(last)) client->end();
  }
}

void BeatClients::endAfter(BeatStep last) const {
  for (BeatClient* client : ending_) {
    if (endPlaceOf(client) > placeAtTheEnd(last)) client->end();
  }
}

}  // namespace tarnwick
