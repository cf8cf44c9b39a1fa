#include "media/MediaService.h"

#include <cmath>

#include "base/DomainError.h"
#include "config/MediaConnection.h"
#include "media/MediaWords.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

namespace {

/// Whether two readings show the same: the place in it goes on by itself.
bool looksAlike(const PlaybackSnapshot& before, const PlaybackSnapshot& now) {
  constexpr double kUnnoticed = 0.6;
  PlaybackSnapshot same = before;
  same.timestamp = now.timestamp;
  same.elapsed = now.elapsed;
  same.artwork = now.artwork;
  return same == now && std::abs(before.position(now.timestamp) - now.position(now.timestamp)) < kUnnoticed;
}

}  // namespace

MediaService::MediaService(Setup setup)
    : setup_(std::move(setup)),
      snapshot_(PlaybackSnapshot::empty(setup_.scheduler.now())),
      generation_(QUuid::createUuid()) {
  connect(&setup_.players, &Players::changed, this, &MediaService::announced);
}

MediaService::~MediaService() = default;

// --- Which source ---------------------------------------------------------------------------------------------------

void MediaService::follow(const DockConfiguration& config, const ActiveSets& active) {
  if (isFixed_) return;
  isShown_ = active.families.contains(familyText(Family::Music));
  const std::optional<QString> remembered = MediaConnection::of(config);
  const MediaSource source = remembered ? MediaSource(*remembered) : MediaSource();
  if (connected_ != remembered.has_value() || (connected_ && source != source_)) {
    if (connected_) disconnect(false);
    source_ = source;
    connected_ = remembered.has_value();
    tell();
  }
  followPlayers();
}

void MediaService::followPlayers() {
  const bool wanted = isShown_ && connected_;
  if (std::exchange(isFollowing_, wanted) == wanted) return;
  if (!wanted) {
    renew();
    loading_ = awaitsPlayers_ = isOutdated_ = false;
    settling_.reset();
  }
  setup_.players.follow(wanted);
  if (wanted) refresh();
}

void MediaService::connectTo(const MediaSource& source) {
  if (connected_ && source == source_) return refresh();
  disconnect(false);
  source_ = source;
  connected_ = true;
  Q_EMIT connectionChanged(source.rawValue());
  // The settings may have led back here already.
  followPlayers();
  if (!loading_) refresh();
}

void MediaService::disconnect(bool remember) {
  renew();
  connected_ = loading_ = awaitsPlayers_ = isOutdated_ = false;
  settling_.reset();
  watchdog_.reset();
  snapshot_ = PlaybackSnapshot::empty(setup_.scheduler.now());
  error_.clear();
  refused_.clear();
  dropArtwork();
  tell();
  if (remember) Q_EMIT connectionChanged(std::nullopt);
  followPlayers();
}

void MediaService::end() { disconnect(false); }

void MediaService::setFixed(const PlaybackSnapshot& snapshot, const QImage& cover, const QString& error) {
  isFixed_ = connected_ = true;
  snapshot_ = snapshot;
  cover_ = cover;
  error_ = error;
}

// --- Readings and commands ------------------------------------------------------------------------------------------

void MediaService::refresh() {
  if (!connected_ || loading_ || !isFollowing_) return;
  ask(std::nullopt);
}

void MediaService::control(const MediaAction& action) {
  if (!connected_ || loading_ || !isFollowing_) return;
  ask(action);
}

std::optional<PlaybackSnapshot> MediaService::video() const {
  if (!connected_) return std::nullopt;
  const auto player = MediaSource::anyVideo(setup_.players.all());
  if (!player) return std::nullopt;
  PlaybackSnapshot found = PlaybackSnapshot::of(*player, titleOf(MediaSource::of(*player)));
  if (found.artworkURL == snapshot_.artworkURL) found.artwork = snapshot_.artwork;
  return found;
}

void MediaService::controlVideo(const MediaAction& action) {
  const auto player = connected_ ? MediaSource::anyVideo(setup_.players.all()) : std::nullopt;
  if (!player) return;
  setup_.players.act(player->service, action, this, [this](bool isTaken) {
    if (isTaken) return;
    error_ = MediaWords::tr("This playback command is unavailable.");
    tell();
  });
}

void MediaService::ask(const std::optional<MediaAction>& action) {
  const QUuid stamp = generation_;
  const QUuid request = requestID_ = QUuid::createUuid();
  if (!setup_.players.isAvailable()) {
    error_ = MediaWords::tr("System media is unavailable on this macOS version. Connect a player directly.");
    return tell();
  }
  loading_ = true;
  watchdog_ = setup_.scheduler.after(kWatchdog, [this, stamp, request] {
    if (stamp != generation_ || request != requestID_ || !loading_) return;
    // A player that was asked by name has its own time; what is awaited here is the desktop's.
    if (!awaitsPlayers_ && !source_.isSystem()) return;
    renew();
    loading_ = awaitsPlayers_ = false;
    error_ = MediaWords::tr("System media did not respond. Connect a player directly.");
    tell();
  });
  tell();
  if (!setup_.players.isKnown()) {
    awaitsPlayers_ = true;
    return;
  }
  const auto player = source_.playerAmong(setup_.players.all());
  if (!player && !source_.isSystem()) return finish();
  if (!action) return askPlayer(player ? player->service : QString(), std::nullopt);
  MediaAction wanted = *action;
  if (wanted.kind == MediaAction::Kind::Seek) {
    try {
      wanted.position = PlaybackSnapshot::seek(wanted.position, canSeek() ? snapshot_.duration : 0);
    } catch (const DomainError& failure) {
      loading_ = false;
      error_ = failure.message();
      return tell();
    }
  }
  if (!player) {
    refused_ = MediaWords::tr("This playback command is unavailable.");
    return finish();
  }
  askPlayer(player->service, wanted);
}

void MediaService::askPlayer(const QString& service, const std::optional<MediaAction>& action) {
  const QUuid stamp = generation_;
  const QUuid request = requestID_;
  const auto isLate = [this, stamp, request] { return stamp != generation_ || request != requestID_ || !loading_; };
  const auto read = [this, service, isLate] {
    setup_.players.read(service, this, [this, service, isLate](bool hasAnswered) {
      if (isLate()) return;
      // Of all that were asked one may be silent for good.
      if (!hasAnswered && !service.isEmpty()) return fail(MediaWords::tr("The player returned no metadata."));
      finish();
    });
  };
  if (!action) return read();
  setup_.players.act(service, *action, this, [this, isLate, read](bool isTaken) {
    if (isLate()) return;
    if (!isTaken) refused_ = MediaWords::tr("This playback command is unavailable.");
    read();
  });
}

void MediaService::announced() {
  if (!isFollowing_) return;
  if (awaitsPlayers_) {
    if (!setup_.players.isKnown()) return;
    awaitsPlayers_ = loading_ = false;
    return refresh();
  }
  if (loading_) {
    // Who plays is the answer, whatever the others say.
    const auto player = source_.playerAmong(setup_.players.all());
    if (source_.isSystem() && player && player->status == MediaPlayer::Status::Playing) finish();
    return;
  }
  isOutdated_ = true;
  if (!settling_) settle();
}

void MediaService::settle() {
  settling_.reset();
  if (!std::exchange(isOutdated_, false)) return;
  settling_ = setup_.scheduler.after(kCadence, [this] { settle(); });
  if (!loading_) finish();
}

void MediaService::finish() {
  loading_ = false;
  watchdog_.reset();
  const auto player = source_.playerAmong(setup_.players.all());
  if (!player) return fail(absence());
  publish(*player);
}

QString MediaService::absence() const {
  return source_.isSystem()
             ? MediaWords::tr("No system media metadata is available. You can connect a player directly.")
             : MediaWords::tr("Open %1, then refresh.").arg(titleOf(source_));
}

void MediaService::fail(const QString& sentence) {
  loading_ = false;
  watchdog_.reset();
  refused_.clear();
  dropArtwork();
  const PlaybackSnapshot empty = PlaybackSnapshot::empty(setup_.scheduler.now());
  if (std::exchange(error_, sentence) == sentence && looksAlike(snapshot_, empty)) return;
  snapshot_ = empty;
  tell();
}

void MediaService::publish(const MediaPlayer& player) {
  PlaybackSnapshot now = PlaybackSnapshot::of(player, titleOf(MediaSource::of(player)));
  // The cover does not flash while it is fetched again.
  if (now.artworkURL == artworkKey_) now.artwork = snapshot_.artwork;
  const bool isSame = looksAlike(snapshot_, now);
  const QString error = std::exchange(refused_, {});
  // What a command came to stands until something else is played.
  const bool keepsError =
      isSame && error.isEmpty() && error_ == MediaWords::tr("This playback command is unavailable.");
  const QString before = error_;
  if (!keepsError) error_ = error;
  const bool isNews = !isSame || before != error_ || loading_;
  snapshot_ = now;
  loadArtwork(now.artworkURL);
  if (isNews) tell();
}

// --- Covers ---------------------------------------------------------------------------------------------------------

void MediaService::dropArtwork() {
  fetching_.reset();
  artworkKey_ = QUrl();
  cover_ = QImage();
  snapshot_.artwork.reset();
}

void MediaService::loadArtwork(const QUrl& address) {
  if (address == artworkKey_) return;
  dropArtwork();
  artworkKey_ = address;
  const auto show = [this, address, stamp = generation_](const std::optional<Artwork::Picture>& picture) {
    if (stamp == generation_) showArtwork(address, picture);
  };
  if (Artwork::isLocal(address)) return work_.start([address] { return Artwork::read(address); }, show);
  if (!Artwork::mayFetch(address) || !setup_.fetch) return;
  fetching_ = setup_.fetch(address, [this, show](const std::optional<QByteArray>& bytes) {
    if (bytes) work_.start([bytes = *bytes] { return Artwork::decode(bytes); }, show);
  });
}

void MediaService::showArtwork(const QUrl& address, const std::optional<Artwork::Picture>& picture) {
  if (!picture || snapshot_.artworkURL != address || artworkKey_ != address) return;
  snapshot_.artwork = picture->bytes;
  cover_ = picture->image;
  tell();
}

}  // namespace tarnwick
