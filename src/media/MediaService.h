#pragma once

#include <QImage>
#include <QObject>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>

#include "base/OrderedWork.h"
#include "base/Scheduler.h"
#include "facilities/BeatClient.h"
#include "media/Artwork.h"
#include "media/MediaSource.h"
#include "media/PlaybackSnapshot.h"

namespace tarnwick {

/// What plays now at one chosen source, and the commands for it. Players are followed while a widget that shows them is
/// on a dock and the user is connected to one; nothing is asked by a clock. An answer that comes after its source was
/// left is dropped. Every failure is `error`; nothing throws.
class MediaService final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  static constexpr double kWatchdog = 5;    ///< Seconds until the desktop's players count as silent.
  static constexpr double kCadence = 0.25;  ///< A player that announces more often is shown once in this time.

  /// Fetches a cover from the net: `done` gets its bytes, or nothing where there are none; never once the handle is
  /// gone, and never inside the call.
  using Fetch = std::function<std::shared_ptr<void>(const QUrl& address,
                                                    std::function<void(const std::optional<QByteArray>&)> done)>;
  struct Setup {
    Scheduler& scheduler;
    Players& players;  ///< Outlives it.
    Fetch fetch;       ///< Empty where nothing is fetched.
  };

  explicit MediaService(Setup setup);
  ~MediaService() override;

  const PlaybackSnapshot& snapshot() const { return snapshot_; }
  /// The cover as it is painted; null for none.
  const QImage& cover() const { return cover_; }
  const MediaSource& source() const { return source_; }
  bool connected() const { return connected_; }
  bool loading() const { return loading_; }
  const QString& error() const { return error_; }
  bool canSeek() const { return snapshot_.seekable && snapshot_.duration > 0; }
  /// What a picker offers now.
  QList<MediaSource> sources() const { return MediaSource::offered(setup_.players.all(), source_); }
  QString titleOf(const MediaSource& source) const { return source.title(setup_.players.all()); }

  /// Takes a new reading.
  void refresh();
  void control(const MediaAction& action);
  /// What plays of the hosts of videos, in whatever program; absent for nothing.
  std::optional<PlaybackSnapshot> video() const;
  void controlVideo(const MediaAction& action);
  /// Uses a source from now on; one that is in use already is only read anew.
  void connectTo(const MediaSource& source);
  /// Uses none any more; with `remember` also in the next run.
  void disconnect(bool remember);

  /// What the settings remember, and whether a widget that shows it is on a dock.
  void follow(const DockConfiguration& config, const ActiveSets& active);
  /// The same, always connected to what is shown here; for pictures.
  void setFixed(const PlaybackSnapshot& snapshot, const QImage& cover, const QString& error = {});

  BeatStep step() const override { return BeatStep::Media; }
  void start(const DockConfiguration& config, const ActiveSets& active) override { follow(config, active); }
  void wake() override { refresh(); }
  void end() override;

 Q_SIGNALS:
  void changed();
  /// The user chose a source by this text, or none.
  void connectionChanged(const std::optional<QString>& source);

 private:
  void followPlayers();
  void ask(const std::optional<MediaAction>& action);
  void askPlayer(const QString& service, const std::optional<MediaAction>& action);
  void announced();
  /// Shows what was announced, unless something just was.
  void settle();
  /// Ends a reading with what is known of the player, or without one.
  void finish();
  void fail(const QString& sentence);
  /// Shows what a player told last.
  void publish(const MediaPlayer& player);
  QString absence() const;
  void renew() { generation_ = QUuid::createUuid(); }
  void loadArtwork(const QUrl& address);
  void showArtwork(const QUrl& address, const std::optional<Artwork::Picture>& picture);
  void dropArtwork();
  void tell() { Q_EMIT changed(); }

  const Setup setup_;
  PlaybackSnapshot snapshot_;
  QImage cover_;
  MediaSource source_;
  bool connected_ = false;
  bool loading_ = false;
  bool isShown_ = false;  ///< A widget that shows it is on a dock.
  bool isFixed_ = false;
  bool isFollowing_ = false;
  bool isOutdated_ = false;     ///< Something was announced that is not shown yet.
  bool awaitsPlayers_ = false;  ///< A reading waits until it is known who runs.
  QString error_;
  QString refused_;   ///< What a command came to; stands in place of no error after the reading that follows it.
  QUuid generation_;  ///< Another one once the source is left.
  QUuid requestID_;
  JobHandle watchdog_;
  JobHandle settling_;
  std::shared_ptr<void> fetching_;
  QUrl artworkKey_;
  OrderedWork work_;  ///< Goes first: it uses all others.
};

}  // namespace tarnwick
