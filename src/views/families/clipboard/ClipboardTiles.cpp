#include "views/families/clipboard/ClipboardTiles.h"

#include "clipboard/ClipboardColor.h"
#include "views/families/clipboard/ClipboardWords.h"
#include "views/theme/Glass.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/FileWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kCopiedSwatchCorner = 6;

QString captionOf(const ClipboardContent& content) {
  return content.age.isEmpty() ? content.kind : u"%1 · %2"_s.arg(content.kind, content.age);
}

}  // namespace

TileContent makeClipboard(const TileRequest& request) {
  const TileSources& sources = request.sources;
  const auto& copied = sources.readings.copied;
  if (sources.keepsClipboard && copied) {
    const auto color = copied->kind == ClipboardEntry::Kind::Color ? ClipboardColor::of(copied->value) : std::nullopt;
    return ClipboardContent{request.definition.symbol, color ? std::optional(color->rgba()) : std::nullopt,
                            ClipboardWords::shortTitle(*copied),
                            ClipboardWords::kind(copied->kind, sources.readings.copiedIsFolder),
                            copied->added.isValid() ? agoWord(copied->added, sources.now, sources.locale) : QString()};
  }
  GenericContent content = makeGeneric(request);
  if (!sources.readings.clipboardProblem.isEmpty()) {
    content.word = TileWords::tr("Not available");
    content.sentence = sources.readings.clipboardProblem;
  } else if (sources.keepsClipboard) {
    content.word = TileWords::tr("Empty");
    content.sentence = TileWords::tr("Copy something to start your history.");
  } else if (copied) {
    content.word = TileWords::tr("Paused");
    content.sentence = TileWords::tr("Paused. What you copy is not recorded.");
  } else {
    content.word = TileWords::tr("Off");
    content.sentence = TileWords::tr("Clipboard history is off");
  }
  return content;
}

TileText describe(const ClipboardContent& content, const QString& name) {
  return {name, u"%1, %2"_s.arg(content.title, captionOf(content))};
}

void paint(TileCanvas& canvas, const ClipboardContent& content) {
  using namespace theme;
  const bool captioned = canvas.showsCaption();
  const double x = canvas.width() <= kNarrowSymbolTile ? kTextAfterSymbolNarrow : kTextAfterSymbol;
  const TextLine title = canvas.name(content.title, TextStyle::Title, canvas.spaceAfter(x));
  const QPointF middle(title.text().isEmpty() ? canvas.width() / 2 : kTextLeft + kSymbolSize / 2, kTileMiddle);
  if (content.color) {
    const QRectF swatch(middle - QPointF(kSymbolSize, kSymbolSize) / 2, QSizeF(kSymbolSize, kSymbolSize));
    drawRounded(canvas.painter(), swatch, kCopiedSwatchCorner, QColor::fromRgba(*content.color));
    drawInnerLine(canvas.painter(), swatch, kCopiedSwatchCorner, 1, canvas.colors().separator);
  } else {
    canvas.symbol(content.symbol, middle, kSymbolSize, canvas.accent());
  }
  title.draw(canvas.painter(), {x, captioned ? kTitleBaseline : TileCanvas::centredBaseline(title)},
             canvas.colors().primary);
  if (!captioned) return;
  const QString whole = captionOf(content);
  const bool fits = TextLine(whole, TextStyle::Caption).width() <= canvas.spaceAfter(x);
  canvas.text(x, kTitleCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption,
              fits || content.age.isEmpty() ? whole : content.age, canvas.colors().secondary);
}

}  // namespace tarnwick
