#include "views/families/meetings/ZoomTile.h"

#include "base/LocalFigures.h"
#include "views/theme/Theme.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

ZoomTileContent makeZoom(const TileRequest& request) {
  const auto& meeting = request.sources.readings.meeting;
  ZoomTileContent content;
  if (!meeting || !meeting->connected) {
    content.figure = request.title();
    content.caption = TileWords::tr("No meeting");
    content.spoken = meeting && !meeting->problem.isEmpty() ? meeting->problem : content.caption;
    return content;
  }
  content.isOn = true;
  content.isMuted = meeting->muted;
  content.figure = meeting->duration.isEmpty() ? TileWords::tr("Duration unavailable")
                                               : LocalFigures::of(meeting->duration, request.sources.locale);
  content.caption = meeting->participants == 1 ? TileWords::tr("1 participant")
                    : meeting->participants
                        ? TileWords::tr("%1 participants").arg(LocalFigures::number(*meeting->participants))
                        : TileWords::tr("Participants unavailable");
  content.spoken = content.figure + u", "_s + content.caption;
  if (content.isMuted) content.spoken += u", "_s + TileWords::tr("muted");
  return content;
}

TileText describe(const ZoomTileContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const ZoomTileContent& content) {
  using namespace theme;
  const Palette& colors = canvas.colors();
  const QString symbol = !content.isOn ? u"video"_s : content.isMuted ? u"mic.slash"_s : u"mic"_s;
  const QColor ink = !content.isOn ? colors.tertiary : content.isMuted ? colors.accent(Accent::Red) : canvas.accent();
  canvas.symbol(symbol, {kTextLeft + kSymbolSize / 2, kTileMiddle}, kSymbolSize, ink);
  const double x = kTextAfterSymbol;
  const double space = canvas.spaceAfter(x);
  const TextStyle style = content.isOn ? TextStyle::Headline : TextStyle::Title;
  if (!canvas.showsCaption()) {
    const TextLine line = canvas.line(content.figure, style);
    canvas.text(x, TileCanvas::centredBaseline(line), space, style, content.figure, colors.primary);
    return;
  }
  canvas.text(x, content.isOn ? kHeadlineBaseline : kTitleBaseline, space, style, content.figure, colors.primary);
  canvas.text(x, content.isOn ? kCaptionBaseline : kTitleCaptionBaseline, space, TextStyle::Caption, content.caption,
              colors.secondary);
}

}  // namespace tarnwick
