#include "views/tiles/GenericTile.h"

#include <algorithm>

#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kBadgeCorner = 6;
constexpr double kLeastRight = 8;
/// In small docks a badge is as large as its letter needs it.
constexpr double kBareBadge = 26;
/// Narrower tiles put the symbol over the name, and so do those up to kMayStack whose name has no room beside it.
constexpr double kSideBySide = 100;
constexpr double kMayStack = 140;
constexpr double kStackedSymbol = 17;
constexpr double kStackedNameBaseline = 41.5;
constexpr double kStackedWordBaseline = 55;
// Without a word.
constexpr double kPairSymbol = 24;
constexpr double kPairNameBaseline = 50;

void drawSign(TileCanvas& canvas, const GenericContent& content, QPointF centre) {
  QPainter& painter = canvas.painter();
  if (!content.symbol.isEmpty()) {
    canvas.symbol(content.symbol, centre, theme::kSymbolSize, canvas.accent());
    return;
  }
  painter.save();
  painter.setOpacity(painter.opacity() *
                     (canvas.colors().monochrome ? theme::kUnconnectedGrey : theme::kUnconnectedOpacity));
  const double side = canvas.showsCaption() ? theme::kSymbolSize : kBareBadge;
  drawRounded(painter, QRectF(centre.x() - side / 2, centre.y() - side / 2, side, side), kBadgeCorner, canvas.accent());
  painter.restore();
  const TextLine letter = canvas.line(content.initial, TextStyle::BadgeInitial);
  letter.drawCentred(painter, {centre.x(), TileCanvas::centredBaseline(letter, centre.y())}, canvas.colors().primary);
}

double textLeft(const TileCanvas& canvas) {
  return canvas.width() <= theme::kNarrowSymbolTile ? theme::kTextAfterSymbolNarrow : theme::kTextAfterSymbol;
}

QColor wordColor(const TileCanvas& canvas, const GenericContent& content) {
  return content.opensEditor ? canvas.accentWord() : canvas.colors().secondary;
}

/// The name in the largest of a few styles that it fits in as a whole; else shortened.
TextLine nameLine(const TileCanvas& canvas, const QString& name, double room) {
  for (const TextStyle style : {TextStyle::Title, TextStyle::BodyStrong, TextStyle::TabLabel})
    if (const TextLine line = canvas.line(name, style); line.width() <= room) return line;
  return canvas.name(name, TextStyle::TabLabel, room);
}

void paintBeside(TileCanvas& canvas, const GenericContent& content) {
  using namespace theme;
  const double x = textLeft(canvas);
  // A name may come closer to the edge before it loses letters.
  const TextLine name = nameLine(canvas, content.name, canvas.roomAfter(x) + kTextRight - kLeastRight);
  const bool alone = name.text().isEmpty();
  drawSign(canvas, content, {alone ? canvas.width() / 2 : kTextLeft + kSymbolSize / 2, kTileMiddle});
  if (!canvas.showsCaption()) {
    name.draw(canvas.painter(), {x, TileCanvas::centredBaseline(name)}, canvas.colors().primary);
    return;
  }
  name.draw(canvas.painter(), {x, kTitleBaseline}, canvas.colors().primary);
  canvas.text(x, kTitleCaptionBaseline, canvas.roomAfter(x), TextStyle::Caption, content.word,
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
  const bool three = canvas.showsLastRow() && word.width() <= canvas.width() - theme::kTextLeft;
  drawSign(canvas, content, {x, three ? kStackedSymbol : kPairSymbol});
  canvas.centredText(three ? kStackedNameBaseline : kPairNameBaseline, TextStyle::TabLabel, content.name,
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
    content.initial = badgeInitial(definition);
  else
    content.symbol = definition.symbol;
  return content;
}

TileText describe(const GenericContent& content, const QString& name) {
  return {name, content.sentence.isEmpty() ? content.word : content.sentence};
}

void paint(TileCanvas& canvas, const GenericContent& content) {
  const double room = canvas.roomAfter(textLeft(canvas));
  const double wanted = std::max(canvas.line(content.name, TextStyle::Title).width(),
                                 canvas.line(content.word, TextStyle::Caption).width());
  // A symbol alone says little; where a small dock has no second row, a part of the name stands beside it.
  const bool mayStack = canvas.width() <= kMayStack && canvas.showsCaption();
  const bool stacked = canvas.width() < kSideBySide || (mayStack && wanted > room);
  stacked ? paintStacked(canvas, content) : paintBeside(canvas, content);
}

}  // namespace tarnwick
