#pragma once

#include <QSet>
#include <memory>
#include <optional>

#include "audio/AudioRows.h"
#include "audio/AudioStreamJournal.h"
#include "audio/GainRenderer.h"

namespace tarnwick {

/// What an application plays, on its way through a gain of ours to the output. Made once, ended once; it follows no
/// change of the output. Belongs to the thread of the hardware.
class AppAudioRoute {
 public:
  struct Parts {
    AudioHardware& hardware;
    AudioStreamJournal& journal;
    AudioRows& rows;
  };

  /// The slot decides how its nodes are called. The parts must outlive it.
  AppAudioRoute(const Parts& parts, AudioProcessEntry process, int slot);
  AppAudioRoute(const AppAudioRoute&) = delete;
  AppAudioRoute& operator=(const AppAudioRoute&) = delete;
  ~AppAudioRoute();

  /// Throws DomainError; what was made until then is for `stop`.
  void start(double volume);
  /// Gives back what was taken and releases what was made; true once all of it is. Otherwise it may be called again.
  bool stop();
  /// Whether it still does what it was made for. A fault of what can be read counts as no.
  bool valid() const;
  /// Takes what the application plays since. What somebody bound elsewhere meanwhile stays there. Throws DomainError.
  void takeStreams();

  const AudioProcessEntry& process() const { return process_; }
  int slot() const { return slot_; }
  bool hasTaken(quint32 stream) const { return taken_.contains(stream); }
  /// Null before it is made and after it is released; whoever else has it may keep it.
  const std::shared_ptr<tw_gain_state>& gain() const { return gain_; }

 private:
  void makeTap();
  double makeAggregate();
  void makeCallback(double volume, double rate);

  const Parts parts_;
  const AudioProcessEntry process_;
  const int slot_;
  std::optional<qint64> launch_;  ///< Of the process, when this was started.
  quint32 tap_ = 0;
  quint32 aggregate_ = 0;
  quint32 io_ = 0;  ///< The callback of the device.
  std::shared_ptr<tw_gain_state> gain_;
  quint32 output_ = 0;
  QString identity_;  ///< Of the output.
  double rate_ = 0;
  QSet<quint32> taken_;  ///< Streams that were bound to the tap.
};

/// Binds streams as they were before a sink of ours took them: those of one slot or of all. One that somebody bound
/// elsewhere meanwhile stays, and one that is over is forgotten. Throws DomainError where the journal cannot be
/// written.
void giveBackStreams(AudioHardware& hardware, AudioStreamJournal& journal, std::optional<int> slot = std::nullopt);

}  // namespace tarnwick
