#include "views/tiles/GenericTile.h"

#include <algorithm>
#include <array>

#include "views/theme/BadgePicture.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kWeather = 28;
constexpr double kBadgeCorner = 6;
constexpr double kLeastRight = 8;
/// In small docks a badge is as large as its letters need it.
constexpr double kBareBadge = 26;
/// Narrower tiles put the symbol over the name, and so do those up to kMayStack whose name has no space beside it.
constexpr double kSideBySide = 100;
constexpr double kMayStack = 140;
constexpr double kStackedSymbol = 17;
constexpr double kStackedNameBaseline = 41.5;
constexpr double kStackedWordBaseline = 55;
/// Of a name in two lines and the word.
constexpr std::array kThreeRows = {22.0, 35.0, 50.0};
// Without a word.
constexpr double kPairSymbol = 24;
constexpr double kPairNameBaseline = 50;

void drawSign(TileCanvas& canvas, const GenericContent& content, QPointF centre) {
  QPainter& painter = canvas.painter();
  if (content.picture) {
    drawWeather(painter, *content.picture, centre - QPointF(kWeather, kWeather) / 2, kWeather,
                canvas.colors());
    return;
  }
  if (!content.symbol.isEmpty()) {
    canvas.symbol(content.symbol, centre, theme::kSymbolSize, canvas.accent());
    return;
  }
  const double side = canvas.showsCaption() ? theme::kSymbolSize : kBareBadge;
  drawServiceBadge(painter, QRectF(centre.x() - side / 2, centre.y() - side / 2, side, side), kBadgeCorner,
                   content.badge, canvas.colors(), canvas.showsLastRow() ? BadgeDetail::Whole : BadgeDetail::Initial);
}

double textLeft(const TileCanvas& canvas) {
  return canvas.width() <= theme::kNarrowSymbolTile ? theme::kTextAfterSymbolNarrow : theme::kTextAfterSymbol;
}

QColor wordColor(const TileCanvas& canvas, const GenericContent& content) {
  return content.opensEditor ? canvas.accentWord() : canvas.colors().secondary;
}

bool isStacked(const TileCanvas& canvas, const GenericContent& content) {
  const double space = canvas.spaceAfter(textLeft(canvas));
  const double wanted = std::max(canvas.line(content.name, TextStyle::Title).width(),
                                 canvas.line(content.word, TextStyle::Caption).width());
  // A symbol alone says little; where a small dock has no second row, a part of the name is shown beside it.
  const bool mayStack = canvas.width() <= kMayStack && canvas.showsCaption();
  return canvas.width() < kSideBySide || (mayStack && wanted > space);
}

/// The two lines, as even as can be, in which a name fits as a whole; none where there are no such.
QList<TextLine> twoLines(const TileCanvas& canvas, const QString& name, double space) {
  QList<TextLine> best;
  double least = space;
  for (qsizetype blank = name.indexOf(u' '); blank >= 0; blank = name.indexOf(u' ', blank + 1)) {
    const TextLine first = canvas.line(name.first(blank), TextStyle::TabLabel);
    const TextLine second = canvas.line(name.sliced(blank + 1), TextStyle::TabLabel);
    const double wide = std::max(first.width(), second.width());
    if (wide > least) continue;
    least = wide;
    best = {first, second};
  }
  return best;
}

/// The name in the largest of a few styles that it fits in as a whole, else in two lines, else shortened.
QList<TextLine> linesOfName(const TileCanvas& canvas, const QString& name, bool stacked) {
  // A name may come closer to the edge before it loses letters.
  const double space = stacked ? canvas.width() - theme::kTextLeft
                               : canvas.spaceAfter(textLeft(canvas)) + theme::kTextRight - kLeastRight;
  if (!stacked)
    for (const TextStyle style : {TextStyle::Title, TextStyle::BodyStrong})
      if (const TextLine line = canvas.line(name, style); line.width() <= space) return {line};
  if (const TextLine line = canvas.line(name, TextStyle::TabLabel); line.width() <= space) return {line};
  if (canvas.showsLastRow())
    if (const QList<TextLine> lines = twoLines(canvas, name, space); !lines.isEmpty()) return lines;
  if (stacked) return {canvas.line(name, TextStyle::TabLabel).elided(space, Elide::End)};
  return {canvas.name(name, TextStyle::TabLabel, space)};
}

void paintBeside(TileCanvas& canvas, const GenericContent& content) {
  using namespace theme;
  const double x = textLeft(canvas);
  const QList<TextLine> lines = linesOfName(canvas, content.name, false);
  const TextLine& name = lines.first();
  const bool alone = name.text().isEmpty();
  const double beside = content.picture ? kPictureInset + kWeather / 2 : kTextLeft + kSymbolSize / 2;
  drawSign(canvas, content, {alone ? canvas.width() / 2 : beside, kTileMiddle});
  if (!canvas.showsCaption()) {
    name.draw(canvas.painter(), {x, TileCanvas::centredBaseline(name)}, canvas.colors().primary);
    return;
  }
  const bool two = lines.size() > 1;
  name.draw(canvas.painter(), {x, two ? kThreeRows[0] : kTitleBaseline}, canvas.colors().primary);
  if (two) lines[1].draw(canvas.painter(), {x, kThreeRows[1]}, canvas.colors().primary);
  canvas.text(x, two ? kThreeRows[2] : kTitleCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption, content.word,
              wordColor(canvas, content));
}

void paintStacked(TileCanvas& canvas, const GenericContent& content) {
  const double x = canvas.width() / 2;
  if (!canvas.showsCaption()) {
    drawSign(canvas, content, {x, theme::kTileMiddle});
    return;
  }
  // Half a word says nothing; then the tip has it.
  const TextLine word = canvas.line(content.word, TextStyle::Caption);
  const QList<TextLine> lines = linesOfName(canvas, content.name, true);
  if (lines.size() > 1) {
    drawSign(canvas, content, {x, kStackedSymbol});
    lines[0].drawCentred(canvas.painter(), {x, kStackedNameBaseline}, canvas.colors().primary);
    lines[1].drawCentred(canvas.painter(), {x, kStackedWordBaseline}, canvas.colors().primary);
    return;
  }
  const bool three = canvas.showsLastRow() && word.width() <= canvas.width() - theme::kTextLeft;
  drawSign(canvas, content, {x, three ? kStackedSymbol : kPairSymbol});
  lines.first().drawCentred(canvas.painter(), {x, three ? kStackedNameBaseline : kPairNameBaseline},
                            canvas.colors().primary);
  if (three) word.drawCentred(canvas.painter(), {x, kStackedWordBaseline}, wordColor(canvas, content));
}

QString wordFor(const TileRequest& request) {
  if (request.comesLater) return TileWords::tr("Later");
  if (isConnectedFamily(request.definition.family)) return TileWords::tr("Connect");
  return TileWords::tr("Not available");
}

}  // namespace

GenericContent makeGeneric(const TileRequest& request) {
  const WidgetDefinition& definition = request.definition;
  const QString& name = request.title();
  const bool connected = isConnectedFamily(definition.family);
  GenericContent content{name, wordFor(request), {}, {}, connected && !request.comesLater};
  if (request.comesLater) content.sentence = TileWords::tr("Comes with a later version");
  if (connected)
    content.badge = serviceBadge(definition);
  else
    content.symbol = definition.symbol;
  return content;
}

TileText describe(const GenericContent& content, const QString& name) {
  return {name, content.sentence.isEmpty() ? content.word : content.sentence};
}

QStringList nameRows(const TileCanvas& canvas, const GenericContent& content) {
  QStringList rows;
  for (const TextLine& line : linesOfName(canvas, content.name, isStacked(canvas, content))) rows << line.text();
  return rows;
}

void paint(TileCanvas& canvas, const GenericContent& content) {
  isStacked(canvas, content) ? paintStacked(canvas, content) : paintBeside(canvas, content);
}

}  // namespace tarnwick
