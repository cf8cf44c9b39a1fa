#include "views/families/timers/TimerTiles.h"

#include <cmath>

#include "base/LocalFigures.h"
#include "views/families/timers/TimerFacts.h"
#include "views/theme/Glass.h"
#include "views/theme/TransportGlyphs.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QPointF kCentre(32, 32);
constexpr double kRadius = 19.5;
constexpr double kStroke = 5;
constexpr double kBesideRing = 62;
constexpr double kSymbol = 18;
constexpr double kPauseHeight = 11;
constexpr double kPlayHeight = 13;
constexpr double kMarkTop = 42;
constexpr double kMarkHeight = 4;
constexpr double kMarkWidth = 10;
constexpr double kMarkGap = 3;
constexpr double kMarkGapTight = 2;
constexpr int kUsualMarks = 4;
constexpr double kOverhang = 4;  ///< How far a text may reach into the space at the right.

TimerContent::Glyph glyphOf(const DockWidget& widget, const TimerFacts& facts) {
  const TimerRun run = KindTraits::of(widget.kind).run;
  if (run == TimerRun::Posture) return TimerContent::Glyph::Seated;
  if (run == TimerRun::Exercise) return TimerContent::Glyph::Walk;
  return facts.running ? TimerContent::Glyph::Pause : TimerContent::Glyph::Play;
}

QString spokenState(const TimerFacts& facts) {
  if (!facts.running) return facts.fresh || facts.ended ? facts.word : u"%1, %2"_s.arg(facts.word, facts.figure());
  const double minutes = facts.seconds / 60;
  const auto whole = [](double value) { return LocalFigures::number(std::llround(value)); };
  const QString length = facts.whole > 0 ? TileWords::tr("%1 min left").arg(whole(std::ceil(minutes)))
                                         : TileWords::tr("%1 min").arg(whole(std::floor(minutes)));
  return u"%1, %2"_s.arg(facts.word, length);
}

void paintGlyph(TileCanvas& canvas, TimerContent::Glyph glyph) {
  const QColor& ink = canvas.colors().primary;
  switch (glyph) {
    case TimerContent::Glyph::Play:
      drawPlayGlyph(canvas.painter(), kCentre, kPlayHeight, ink);
      break;
    case TimerContent::Glyph::Pause:
      drawPauseGlyph(canvas.painter(), kCentre, kPauseHeight, ink);
      break;
    case TimerContent::Glyph::Seated:
      canvas.symbol(u"figure.seated.side"_s, kCentre, kSymbol, ink);
      break;
    case TimerContent::Glyph::Walk:
      canvas.symbol(u"figure.walk"_s, kCentre, kSymbol, ink);
      break;
  }
}

void paintMarks(TileCanvas& canvas, const TimerContent& content) {
  double width = kMarkWidth;
  double gap = kMarkGap;
  if (content.marks > kUsualMarks) {
    gap = kMarkGapTight;
    width = (canvas.spaceAfter(kBesideRing) - gap * (content.marks - 1)) / content.marks;
  }
  for (int i = 0; i < content.marks; ++i)
    drawRounded(canvas.painter(), QRectF(kBesideRing + i * (width + gap), kMarkTop, width, kMarkHeight),
                std::min(width, kMarkHeight) / 2, i < content.lit ? canvas.accent() : canvas.colors().track);
}

/// The figure in the largest style that it fits in. Hours that fit in none do without their seconds, and
/// then without their minutes.
void paintFigure(TileCanvas& canvas, const QString& figure, bool overWord) {
  const double space = canvas.spaceAfter(kBesideRing) + kOverhang;
  TextStyle style = TextStyle::Caption;
  for (const TextStyle each : {TextStyle::Timer, TextStyle::Figure17, TextStyle::Title, TextStyle::Caption}) {
    style = each;
    if (canvas.line(figure, each).width() <= space) break;
  }
  QStringList forms{figure};
  if (figure.count(u':') > 1)
    forms << figure.section(u':', 0, 1) + TileWords::tr("h") << figure.section(u':', 0, 0) + TileWords::tr("h");
  const TextLine line = Typography::fitting(forms, style, space, Elide::End, canvas.scale());
  line.drawFromInk(canvas.painter(),
                   {kBesideRing, overWord ? theme::kHeadlineBaseline : TileCanvas::centredBaseline(line)},
                   canvas.colors().primary);
}

}  // namespace

TimerContent makeTimer(const TileRequest& request) {
  const TimerFacts facts = timerFacts(request.widget, request.sources.now);
  TimerContent content;
  content.glyph = glyphOf(request.widget, facts);
  content.figure = facts.figure();
  content.word = facts.word;
  content.share = facts.share;
  content.spoken = spokenState(facts);
  if (facts.round > 0 && !facts.rests) {
    content.marks = facts.round;
    content.lit = facts.session;
  }
  return content;
}

TileText describe(const TimerContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const TimerContent& content) {
  using namespace theme;
  canvas.arc(kCentre, kRadius, kStroke, 0, 360, canvas.colors().track);
  if (content.share > 0) canvas.arc(kCentre, kRadius, kStroke, 0, 360 * content.share, canvas.accent());
  canvas.unmirrored(kCentre.x(), [&] { paintGlyph(canvas, content.glyph); });

  const bool hasMarks = content.marks > 0;
  const bool second = hasMarks ? canvas.showsLastRow() : canvas.showsCaption();
  paintFigure(canvas, content.figure, second);
  if (!second) return;
  if (hasMarks)
    paintMarks(canvas, content);
  else
    canvas.line(content.word, TextStyle::Caption)
        .elided(canvas.spaceAfter(kBesideRing) + kOverhang, Elide::End)
        .drawFromInk(canvas.painter(), {kBesideRing, kCaptionBaseline}, canvas.colors().secondary);
}

std::optional<int> partAt(const TimerContent&, const TileClick& click) {
  constexpr double reach = kRadius + kStroke / 2;
  const QPointF away = click.point - kCentre;
  return QPointF::dotProduct(away, away) <= reach * reach ? std::optional(0) : std::nullopt;
}

}  // namespace tarnwick
