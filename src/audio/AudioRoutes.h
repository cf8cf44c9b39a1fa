#pragma once

#include <QMap>
#include <memory>
#include <vector>

#include "audio/AppAudioRoute.h"

namespace tarnwick {

/// Which applications are controlled, and what is said about it. Belongs to the thread of the hardware, which it waits
/// for; `ApplicationAudio` is what others talk to.
class AudioRoutes {
 public:
  static constexpr std::size_t kMost = AudioStreamJournal::kSlots;

  struct State {
    Capability capability;                                ///< As of the last refresh.
    QList<AudioProcessEntry> processes;                   ///< By name.
    QMap<quint32, std::shared_ptr<tw_gain_state>> gains;  ///< Of what is controlled, by its id.
    QString error;                                        ///< A sentence; empty where there is nothing to say.

    bool operator==(const State&) const = default;
  };

  /// `changed` is called on any thread whenever `validateRoutes` has something to look at. The parts must outlive it.
  AudioRoutes(const AppAudioRoute::Parts& parts, std::function<void()> changed);
  ~AudioRoutes();

  const State& state() const { return state_; }

  /// Lists what plays and what is controlled.
  void refresh();
  /// Whether somebody looks at the list, which then follows what changes.
  void setShown(bool shown);
  void start(const AudioProcessEntry& process);
  void stop(quint32 id);
  /// Ends all, and tries again what could not be released.
  void stop();
  /// Ends what does no longer do what it was made for, and takes what others play since.
  void validateRoutes();

 private:
  using Route = std::unique_ptr<AppAudioRoute>;

  AppAudioRoute* route(quint32 id) const;
  int freeSlot() const;
  void list();
  void letGo(quint32 id);
  void returnRest();
  void returnStrays();
  void listen();

  const AppAudioRoute::Parts parts_;
  const std::function<void()> changed_;
  State state_;
  std::vector<Route> routes_;
  std::vector<Route> quarantined_;  ///< May still hold something.
  bool hasRecovered_ = false;       ///< What an earlier run left was given back.
  bool isShown_ = false;
  bool listens_ = false;
};

}  // namespace tarnwick
