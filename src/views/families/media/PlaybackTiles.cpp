#include "views/families/media/PlaybackTiles.h"

#include <QPainterPath>
#include <array>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/families/media/CoverPainting.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/theme/TransportGlyphs.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/TimeMath.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using Shape = PlaybackContent::Shape;

namespace {

constexpr double kMiniCover = 52;
constexpr double kCover = 48;
constexpr double kCoverInset = 8;
constexpr double kCoverCorner = 10;
constexpr double kText = kCoverInset + kCover + 10;
constexpr double kBar = 4;
constexpr double kBarTop = 50;
constexpr double kTimesBaseline = 54.5;
constexpr std::array kThreeRows = {22.5, 37.5};
constexpr double kTimeSpace = 34;
constexpr double kKnob = 4;
constexpr double kDisc = 14;  ///< The radius of the ground behind play and pause.
constexpr double kGlyph = 12;
constexpr double kSkip = 11;
constexpr double kReach = 13;  ///< How far around its centre a button answers.
constexpr double kVideoInset = 9;
constexpr double kVideoBar = 54;

struct Middle {
  PlaybackContent::Part part;
  double fromRight;
};
constexpr std::array kWholeButtons = {Middle{PlaybackContent::Previous, 68}, Middle{PlaybackContent::Toggle, 42},
                                      Middle{PlaybackContent::Next, 16}};
constexpr std::array kBarButtons = {Middle{PlaybackContent::Previous, 66}, Middle{PlaybackContent::Toggle, 42},
                                    Middle{PlaybackContent::Next, 18}};

double buttonHeight(Shape shape) { return shape == Shape::Bar ? 25 : theme::kTileMiddle; }

QPointF centreOf(const PlaybackContent& content, const Middle& middle, double width) {
  return {width - middle.fromRight, buttonHeight(content.shape)};
}

const std::array<Middle, 3>& buttonsOf(Shape shape) { return shape == Shape::Bar ? kBarButtons : kWholeButtons; }

bool hasButtons(const PlaybackContent& content) {
  return content.isOn && (content.shape == Shape::Whole || content.shape == Shape::Bar);
}

QRectF coverOf(const PlaybackContent& content, double width) {
  if (content.shape == Shape::Mini) return {(width - kMiniCover) / 2, 6, kMiniCover, kMiniCover};
  if (content.shape == Shape::Video) return {0, 0, width, theme::kTileHeight};
  return {kCoverInset, kCoverInset, kCover, kCover};
}

double positionOf(const PlaybackFacts& facts, const QDateTime& now) {
  constexpr double kMilliseconds = 1000;
  const double since = static_cast<double>(facts.timestamp.msecsTo(now)) / kMilliseconds;
  return std::min(facts.elapsed + (facts.playing ? std::max(0.0, since) : 0), facts.duration);
}

PlaybackContent make(const TileRequest& request, Shape shape) {
  PlaybackContent content;
  content.shape = shape;
  const auto& media = request.sources.readings.media;
  const bool isVideo = shape == Shape::Video;
  if (!media || !media->connected || (isVideo && !media->video)) {
    const bool isLeft = media && !media->connected;
    content.title = isLeft    ? TileWords::tr("Connect a player")
                    : isVideo ? TileWords::tr("No video")
                              : TileWords::tr("Nothing playing");
    return content;
  }
  const PlaybackFacts& facts = isVideo ? *media->video : media->playback;
  content.isOn = !facts.source.isEmpty();
  content.title = facts.title;
  content.caption = facts.artist.isEmpty() ? facts.source : facts.artist;
  content.cover = facts.cover;
  content.playing = facts.playing;
  if (facts.duration <= 0) return content;
  // As precise as it is drawn, so that nothing is painted twice.
  const double whole = std::floor(positionOf(facts, request.sources.now));
  content.share = std::clamp(whole / facts.duration, 0.0, 1.0);
  content.elapsed = playbackTime(whole, request.sources.locale);
  content.left = u"−"_s + playbackTime(std::max(0.0, facts.duration - whole), request.sources.locale);
  return content;
}

void paintBar(TileCanvas& canvas, const QRectF& place, double share, const QColor& track) {
  QRectF done = place;
  done.setWidth(place.width() * share);
  drawRounded(canvas.painter(), place, place.height() / 2, track);
  if (share > 0) drawRounded(canvas.painter(), done, place.height() / 2, canvas.accent());
}

void paintToggle(TileCanvas& canvas, QPointF centre, bool playing, double height, const QColor& ink) {
  canvas.unmirrored(centre.x(), [&] {
    playing ? drawPauseGlyph(canvas.painter(), centre, height - 1, ink)
            : drawPlayGlyph(canvas.painter(), centre, height, ink);
  });
}

/// Play or pause over a picture of any colour.
void paintOverlay(TileCanvas& canvas, QPointF centre, bool playing) {
  drawRounded(canvas.painter(), QRectF(centre.x() - kDisc, centre.y() - kDisc, kDisc * 2, kDisc * 2), kDisc,
              QColor(0, 0, 0, 150));
  paintToggle(canvas, centre, playing, kGlyph, Qt::white);
}

void paintButtons(TileCanvas& canvas, const PlaybackContent& content) {
  const QColor& ink = canvas.colors().primary;
  for (const Middle& each : buttonsOf(content.shape)) {
    const QPointF centre = centreOf(content, each, canvas.width());
    if (each.part == PlaybackContent::Toggle) {
      if (content.shape == Shape::Whole)
        drawRounded(canvas.painter(), QRectF(centre.x() - kDisc, centre.y() - kDisc, kDisc * 2, kDisc * 2), kDisc,
                    canvas.colors().track);
      paintToggle(canvas, centre, content.playing, kGlyph, ink);
    } else {
      canvas.unmirrored(centre.x(), [&] {
        // What is seen mirrored leads the other way.
        const bool isBack = (each.part == PlaybackContent::Previous) != canvas.isMirrored();
        drawSkipGlyph(canvas.painter(), centre, kSkip, isBack, ink);
      });
    }
  }
}

void paintVideo(TileCanvas& canvas, const PlaybackContent& content) {
  const QRectF place = coverOf(content, canvas.width());
  paintCover(canvas, place, theme::kTileCorner, content.cover.image);
  if (!content.isOn) return;
  paintOverlay(canvas, place.center(), content.playing);
  if (content.elapsed.isEmpty()) return;
  const QRectF bar(kVideoInset, kVideoBar, canvas.width() - kVideoInset * 2, kBar);
  paintBar(canvas, bar, content.share, QColor(255, 255, 255, 130));
}

}  // namespace

QString playbackTime(double seconds, const QLocale& locale) {
  QString text = TimeMath::display(std::floor(std::max(0.0, seconds)));
  // Minutes are written as long as they are.
  if (text.size() > 4 && text.startsWith(u'0')) text.remove(0, 1);
  return LocalFigures::of(text, locale);
}

PlaybackContent makePlaybackMini(const TileRequest& request) { return make(request, Shape::Mini); }
PlaybackContent makePlaybackWhole(const TileRequest& request) { return make(request, Shape::Whole); }
PlaybackContent makePlaybackBar(const TileRequest& request) { return make(request, Shape::Bar); }
PlaybackContent makePlaybackVideo(const TileRequest& request) { return make(request, Shape::Video); }

TileText describe(const PlaybackContent& content, const QString& name) {
  if (!content.isOn) return {name, content.title};
  QString value = content.caption.isEmpty() ? content.title : u"%1, %2"_s.arg(content.title, content.caption);
  if (!content.playing) value += u", "_s + TileWords::tr("paused");
  return {name, value};
}

void paint(TileCanvas& canvas, const PlaybackContent& content) {
  using namespace theme;
  if (content.shape == Shape::Video) return paintVideo(canvas, content);
  const QRectF place = coverOf(content, canvas.width());
  paintCover(canvas, place, kCoverCorner, content.cover.image);
  if (content.shape == Shape::Mini) {
    if (content.isOn) paintOverlay(canvas, place.center(), content.playing);
    return;
  }
  const Palette& colors = canvas.colors();
  const bool buttons = hasButtons(content);
  const double end =
      buttons ? canvas.width() - buttonsOf(content.shape).front().fromRight - kReach : canvas.width() - kTextRight;
  const double space = end - kText;
  if (buttons) paintButtons(canvas, content);
  const bool isTimed = !content.elapsed.isEmpty();
  if (!canvas.showsCaption()) {
    canvas.text(kText, TileCanvas::centredBaseline(canvas.line(content.title, TextStyle::Title)), space,
                TextStyle::Title, content.title, colors.primary);
    return;
  }
  const bool isLow = !isTimed || !canvas.showsLastRow();
  canvas.text(kText, isLow ? kTitleBaseline : kThreeRows[0], space, TextStyle::Title, content.title,
              content.isOn ? colors.primary : colors.secondary);
  if (!content.caption.isEmpty())
    canvas.text(kText, isLow ? kTitleCaptionBaseline : kThreeRows[1], space, TextStyle::Caption, content.caption,
                colors.secondary);
  if (isLow) return;
  if (content.shape == Shape::Whole)
    return paintBar(canvas, QRectF(kText, kBarTop, space, kBar), content.share, colors.track);
  const double right = canvas.width() - kTextRight;
  const TextLine left = canvas.line(content.left, TextStyle::Caption);
  canvas.text(kText, kTimesBaseline, kTimeSpace, TextStyle::Caption, content.elapsed, colors.secondary);
  canvas.text(right - left.width(), kTimesBaseline, left.width() + 1, TextStyle::Caption, content.left,
              colors.secondary);
  const double from = kText + canvas.line(content.elapsed, TextStyle::Caption).width() + 7;
  const QRectF bar(from, kBarTop - 0.5, right - left.width() - 7 - from, kBar);
  paintBar(canvas, bar, content.share, colors.track);
  const double knob = bar.left() + bar.width() * content.share;
  drawRounded(canvas.painter(), QRectF(knob - kKnob, bar.center().y() - kKnob, kKnob * 2, kKnob * 2), kKnob,
              colors.primary);
}

std::optional<int> partAt(const PlaybackContent& content, const TileClick& click) {
  if (!content.isOn) return std::nullopt;
  const auto isNear = [&](QPointF centre, double reach) {
    return std::abs(click.point.x() - centre.x()) <= reach && std::abs(click.point.y() - centre.y()) <= reach;
  };
  if (!hasButtons(content)) {
    if (isNear(coverOf(content, click.width).center(), kDisc)) return PlaybackContent::Toggle;
    return std::nullopt;
  }
  for (const Middle& each : buttonsOf(content.shape))
    if (isNear(centreOf(content, each, click.width), kReach)) return each.part;
  return std::nullopt;
}

std::optional<TilePart> namedPart(const PlaybackContent& content, const TileClick& point) {
  const auto part = partAt(content, point);
  if (!part) return std::nullopt;
  const QString name = *part == PlaybackContent::Previous ? TileWords::tr("Previous track")
                       : *part == PlaybackContent::Next   ? TileWords::tr("Next track")
                       : content.playing                  ? TileWords::tr("Pause")
                                                          : TileWords::tr("Play");
  QPointF centre = coverOf(content, point.width).center();
  if (hasButtons(content))
    centre = centreOf(content, buttonsOf(content.shape)[static_cast<std::size_t>(*part)], point.width);
  return TilePart{*part, name, QRectF(centre - QPointF(kReach, kReach), QSizeF(kReach, kReach) * 2)};
}

}  // namespace tarnwick
