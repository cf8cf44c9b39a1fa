#pragma once

#include <QMap>
#include <QObject>
#include <atomic>
#include <memory>

#include "audio/AudioRoutes.h"
#include "base/OrderedWork.h"

namespace tarnwick {

/// The volume of each application that plays. What asks the sound server is done on a thread of its own, and nothing of
/// it is there before it is asked for first. Nothing is kept beyond the end of a route. Main thread only.
class ApplicationAudio final : public QObject {
  Q_OBJECT
 public:
  /// How long another process that gives streams back is waited for.
  static constexpr std::chrono::milliseconds kPatience{2000};

  struct Setup {
    /// Makes the adapter, on the thread that uses it.
    std::function<std::unique_ptr<AudioHardware>()> hardware;
    QString directory;  ///< Where the journal lies.
    AudioRows::AppOf appOf;
    AudioRows::LaunchOf launchOf;
  };

  explicit ApplicationAudio(Setup setup);
  /// Waits for what runs, and ends all routes.
  ~ApplicationAudio() override;

  /// Whether there can be any, as of the last refresh.
  const Capability& capability() const { return capability_; }
  const QList<AudioProcessEntry>& processes() const { return processes_; }
  /// From 0 to 1, of what is controlled, by its id.
  const QMap<quint32, double>& volumes() const { return volumes_; }
  /// What went wrong, or what happened, as a sentence; empty where there is nothing to say.
  const QString& error() const { return error_; }

  /// Lists anew. Like all that follows it is answered by `changed`, later.
  void refresh();
  /// Tells whether the list is seen. It then follows what changes.
  void setShown(bool shown);
  /// Controls an application from now on, at full volume.
  void start(const AudioProcessEntry& process);
  void stop(quint32 id);
  /// Ends all routes, and tries again what could not be released.
  void stop();
  /// Waits until what was asked for is done.
  void finish() { work_.finish(); }

  /// At once. Clamped; what is not finite is ignored.
  void setVolume(quint32 id, double volume);
  /// To silence, or back to the volume before.
  void toggleMute(quint32 id);

 Q_SIGNALS:
  void changed();

 private:
  class Routing;

  void ask(std::function<void(AudioRoutes& routes)> what);
  void validate();
  void publish(const AudioRoutes::State& state);

  Capability capability_;
  QList<AudioProcessEntry> processes_;
  QMap<quint32, double> volumes_;
  QMap<quint32, double> unmuted_;  ///< Volumes before they were muted.
  QMap<quint32, std::shared_ptr<tw_gain_state>> gains_;
  QString error_;
  bool isUsed_ = false;               ///< There may be something to end.
  std::atomic<bool> isAsked_{false};  ///< A look at what changed is on its way.
  std::shared_ptr<Routing> routing_;
  OrderedWork work_;  ///< Goes first: it uses all others.
};

}  // namespace tarnwick
