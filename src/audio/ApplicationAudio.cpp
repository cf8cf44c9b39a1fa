#include "audio/ApplicationAudio.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

namespace tarnwick {

/// What the thread works with; made there, when it is needed first.
class ApplicationAudio::Routing {
 public:
  Routing(Setup setup, std::function<void()> changed) : setup_(std::move(setup)), changed_(std::move(changed)) {}

  AudioRoutes& routes() {
    if (!routes_) {
      hardware_ = setup_.hardware();
      journal_.emplace(setup_.directory, kPatience);
      rows_.emplace(*hardware_, setup_.appOf, setup_.launchOf, QCoreApplication::applicationPid());
      routes_.emplace(AppAudioRoute::Parts{*hardware_, *journal_, *rows_}, changed_);
    }
    return *routes_;
  }
  void end() {
    routes_.reset();
    rows_.reset();
    hardware_.reset();
  }

 private:
  const Setup setup_;
  const std::function<void()> changed_;
  std::unique_ptr<AudioHardware> hardware_;
  std::optional<AudioStreamJournal> journal_;
  std::optional<AudioRows> rows_;
  std::optional<AudioRoutes> routes_;
};

ApplicationAudio::ApplicationAudio(Setup setup) {
  const auto changed = [this] {
    if (!isAsked_.exchange(true)) QMetaObject::invokeMethod(this, &ApplicationAudio::validate, Qt::QueuedConnection);
  };
  routing_ = std::make_shared<Routing>(std::move(setup), changed);
}

ApplicationAudio::~ApplicationAudio() {
  if (!isUsed_) return;
  work_.start(
      [routing = routing_] {
        routing->end();
        return true;
      },
      [](bool) {});
  work_.finish();
}

void ApplicationAudio::ask(std::function<void(AudioRoutes& routes)> what) {
  isUsed_ = true;
  work_.start(
      [routing = routing_, what = std::move(what)] {
        AudioRoutes& routes = routing->routes();
        what(routes);
        return routes.state();
      },
      [this](const AudioRoutes::State& state) { publish(state); });
}

void ApplicationAudio::refresh() {
  ask([](AudioRoutes& routes) { routes.refresh(); });
}

void ApplicationAudio::setShown(bool shown) {
  ask([shown](AudioRoutes& routes) { routes.setShown(shown); });
}

void ApplicationAudio::start(const AudioProcessEntry& process) {
  ask([process](AudioRoutes& routes) { routes.start(process); });
}

void ApplicationAudio::stop(quint32 id) {
  ask([id](AudioRoutes& routes) { routes.stop(id); });
}

void ApplicationAudio::stop() {
  ask([](AudioRoutes& routes) { routes.stop(); });
}

/// What changes while this is on its way is asked for once more.
void ApplicationAudio::validate() {
  isAsked_ = false;
  ask([](AudioRoutes& routes) { routes.validateRoutes(); });
}

void ApplicationAudio::publish(const AudioRoutes::State& state) {
  const auto before = std::tuple(capability_, processes_, volumes_, error_);
  capability_ = state.capability;
  processes_ = state.processes;
  error_ = state.error;
  for (auto gain = state.gains.cbegin(); gain != state.gains.cend(); ++gain) {
    if (gains_.value(gain.key()) == gain.value()) continue;
    volumes_.insert(gain.key(), 1);
    unmuted_.remove(gain.key());
  }
  const auto isOver = [&state](const auto& entry) { return !state.gains.contains(entry.key()); };
  volumes_.removeIf(isOver);
  unmuted_.removeIf(isOver);
  gains_ = state.gains;
  if (before != std::tie(capability_, processes_, volumes_, error_)) Q_EMIT changed();
}

void ApplicationAudio::setVolume(quint32 id, double volume) {
  if (!std::isfinite(volume) || !gains_.contains(id)) return;
  const double clamped = std::clamp(volume, 0.0, 1.0);
  tw_gain_set(gains_[id].get(), static_cast<float>(clamped));
  if (std::exchange(volumes_[id], clamped) != clamped) Q_EMIT changed();
}

void ApplicationAudio::toggleMute(quint32 id) {
  if (!volumes_.contains(id)) return;
  const double volume = volumes_[id];
  if (volume > 0) unmuted_.insert(id, volume);
  setVolume(id, volume > 0 ? 0 : unmuted_.value(id, 1));
}

}  // namespace tarnwick
