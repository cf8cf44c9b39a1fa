#include <array>

#include "media/MediaService.h"
#include "views/families/media/NowPlayingPanel.h"
#include "views/families/media/PlaybackTiles.h"
#include "views/panels/Room.h"
#include "views/theme/SnapshotScenery.h"
#include "views/tiles/ReadingServices.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

PlaybackFacts factsOf(const PlaybackSnapshot& snapshot) {
  return {.title = snapshot.title,
          .artist = snapshot.artist,
          .source = snapshot.source,
          .duration = snapshot.duration,
          .elapsed = snapshot.elapsed,
          .timestamp = snapshot.timestamp,
          .playing = snapshot.playing,
          .cover = {}};
}

void readMedia(ReadingFacts& readings, const ReadingServices& services) {
  const MediaService& media = services.media;
  MediaFacts facts{
      .connected = media.connected(), .playback = factsOf(media.snapshot()), .video = {}, .problem = media.error()};
  const TilePicture cover{QString::number(media.cover().cacheKey()), media.cover()};
  facts.playback.cover = cover;
  if (const auto video = media.video()) {
    facts.video = factsOf(*video);
    if (video->artwork) facts.video->cover = cover;
  }
  readings.media = facts;
}

QString problemOf(const TileSources& sources) {
  const auto& media = sources.readings.media;
  return media && media->connected ? media->problem : QString();
}

void control(const PartClick& click) {
  constexpr std::array kKinds = {MediaAction::Kind::Previous, MediaAction::Kind::Toggle, MediaAction::Kind::Next};
  if (click.part < 0 || click.part >= static_cast<int>(kKinds.size())) return;
  click.commands.controlPlayback({kKinds[static_cast<std::size_t>(click.part)]},
                                 click.widget.kind == kind::nowPlayingYouTubeVideo);
}

constexpr double kPicturedLength = 232;
constexpr double kPicturedPlace = 88;

/// A landscape stands for the cover.
PlaybackFacts picturedPlayback(const QDateTime& now) {
  constexpr int kSide = 256;
  QImage cover(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
  cover.fill(Qt::transparent);
  QPainter painter(&cover);
  SnapshotScenery::paintLandscape(painter, cover.rect(), 0);
  painter.end();
  return {.title = u"Still Water"_s,
          .artist = u"Marlow & Finch"_s,
          .source = u"Player"_s,
          .duration = kPicturedLength,
          .elapsed = kPicturedPlace,
          .timestamp = now,
          .playing = true,
          .cover = {u"cover"_s, cover}};
}

void pictureMedia(TileSources& sources) {
  PlaybackFacts video = picturedPlayback(sources.now);
  video.title = u"A walk along the coast"_s;
  video.playing = false;
  sources.readings.media =
      MediaFacts{.connected = true, .playback = picturedPlayback(sources.now), .video = video, .problem = {}};
}

void sampleMedia(TileSources& sources, const TileSources& samples) {
  if (!sources.readings.media || sources.readings.media->playback.source.isEmpty())
    sources.readings.media = samples.readings.media;
}

void fillPlayback(const PicturedParts& parts) {
  const PlaybackFacts facts = picturedPlayback(parts.now);
  PlaybackSnapshot snapshot = PlaybackSnapshot::empty(parts.now);
  snapshot.title = facts.title;
  snapshot.artist = facts.artist;
  snapshot.album = u"Tides"_s;
  snapshot.source = facts.source;
  snapshot.duration = facts.duration;
  snapshot.elapsed = facts.elapsed;
  snapshot.playing = snapshot.seekable = true;
  parts.readings.media.setFixed(snapshot, facts.cover.image);
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Audio), .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.of = familyText(Family::AppVolume), .accent = always<Accent::Pink>, .comesLater = true},
    RoomRow{.of = familyText(Family::Music),
            .content = contentOf<makePlaybackWhole>,
            .panel = makeNowPlayingPanel,
            .accent = always<Accent::Pink>,
            .hasForm = false,
            .act = control,
            .problem = problemOf,
            .read = readMedia,
            .sample = sampleMedia},
    RoomRow{.of = familyText(Family::Voice), .accent = always<Accent::Red>, .comesLater = true},
    RoomRow{.of = familyText(Family::Sounds), .accent = always<Accent::Teal>, .comesLater = true},
    RoomRow{.of = familyText(Family::Photos), .comesLater = true},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::microphoneMute, .accent = always<Accent::Red>},
    RoomRow{.of = kind::nowPlayingMini, .content = contentOf<makePlaybackMini>, .hasForm = false},
    RoomRow{.of = kind::nowPlayingTimeline, .content = contentOf<makePlaybackBar>, .hasForm = false},
    RoomRow{.of = kind::nowPlayingYouTubeVideo, .content = contentOf<makePlaybackVideo>, .hasForm = false},
};

}  // namespace

extern const Room kMediaRoom;
constinit const Room kMediaRoom{
    .name = "media"_L1, .families = kFamilies, .kinds = kKinds, .picture = pictureMedia, .fillReadings = fillPlayback};

}  // namespace tarnwick
