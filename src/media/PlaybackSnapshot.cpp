#include "media/PlaybackSnapshot.h"

#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "media/MediaWords.h"
#include "media/ports/Players.h"

namespace tarnwick {

namespace {

double amount(double seconds) { return std::isfinite(seconds) && seconds > 0 ? seconds : 0; }

}  // namespace

PlaybackSnapshot PlaybackSnapshot::empty(const QDateTime& now) {
  PlaybackSnapshot snapshot;
  snapshot.title = MediaWords::tr("Nothing playing");
  snapshot.timestamp = now;
  return snapshot;
}

PlaybackSnapshot PlaybackSnapshot::of(const MediaPlayer& player, const QString& source) {
  PlaybackSnapshot snapshot = empty(player.read);
  snapshot.source = source;
  if (player.status == MediaPlayer::Status::Stopped) return snapshot;
  if (!player.track.isEmpty()) snapshot.title = player.track;
  snapshot.artist = player.artist;
  snapshot.album = player.album;
  snapshot.duration = amount(player.duration);
  snapshot.elapsed = amount(player.elapsed);
  snapshot.playing = player.status == MediaPlayer::Status::Playing;
  snapshot.seekable = player.canSeek;
  snapshot.artworkURL = player.artwork;
  return snapshot;
}

double PlaybackSnapshot::position(const QDateTime& at) const {
  constexpr double kMilliseconds = 1000;
  const double base = amount(elapsed);
  if (amount(duration) == 0) return base;
  const double delta = playing ? std::max(0.0, static_cast<double>(timestamp.msecsTo(at)) / kMilliseconds) : 0;
  return std::min(base + delta, duration);
}

double PlaybackSnapshot::seek(double position, double duration) {
  if (!std::isfinite(position) || amount(duration) == 0)
    throw DomainError::invalid(MediaWords::tr("This item has no seekable timeline."));
  return std::clamp(position, 0.0, duration);
}

}  // namespace tarnwick
