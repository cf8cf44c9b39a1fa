#include "views/families/files/PlaceTiles.h"

#include <algorithm>

#include "views/families/files/StackedPicture.h"
#include "views/theme/FilePictures.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/FileWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPapersTop = 3;
constexpr double kPapersAlone = 12;

constexpr QSizeF kShot{44, 29};
constexpr double kShotTop = 10;
constexpr double kShotTurn = -6;
constexpr QPointF kShotBehind{-5, -0.5};  ///< How far the one behind is from the one in front.

constexpr double kFieldTop = 14;
constexpr double kFieldHeight = 36;
constexpr double kFieldCorner = 11;
constexpr double kFieldSymbol = 18;
constexpr double kFieldSymbolLeft = 10;
constexpr double kFieldText = 35;

}  // namespace

RecentFilesContent makeRecentFiles(const TileRequest& request) {
  return {request.title(), request.sources.readings.recentNames.mid(0, 3)};
}

TileText describe(const RecentFilesContent& content, const QString& name) {
  return {name, content.files.join(u", "_s)};
}

void paint(TileCanvas& canvas, const RecentFilesContent& content) {
  const bool caption = canvas.showsCaption();
  drawPapers(canvas.painter(), {(canvas.width() - kFilePicture) / 2, caption ? kPapersTop : kPapersAlone},
             canvas.colors().pictures);
  if (caption)
    canvas.centredText(theme::kUnderPictureBaseline, TextStyle::Caption, content.name, canvas.colors().secondary);
}

ScreenshotsContent makeScreenshots(const TileRequest& request) {
  const auto& shots = request.sources.readings.screenshots;
  if (!shots || !request.sources.readings.screenshotProblem.isEmpty()) return {request.title(), {}};
  if (shots->isEmpty()) return {TileWords::tr("None yet"), {}};
  ScreenshotsContent content;
  const QDateTime& taken = shots->first().taken;
  content.caption =
      taken.isValid() ? agoWord(taken, request.sources.now, request.sources.locale) : request.definition.name;
  for (const ScreenshotFacts& shot : shots->mid(0, kShownScreenshots)) content.pictures.append(shot.picture);
  return content;
}

TileText describe(const ScreenshotsContent& content, const QString& name) {
  return {name, content.caption == name ? QString() : content.caption};
}

void paint(TileCanvas& canvas, const ScreenshotsContent& content) {
  QPainter& painter = canvas.painter();
  const bool caption = canvas.showsCaption();
  const double top = caption ? kShotTop : theme::kTileMiddle - kShot.height() / 2;
  const double shift = content.pictures.size() > 1 ? -kShotBehind.x() / 2 : 0;
  const QRectF front({(canvas.width() - kShot.width()) / 2 + shift, top}, kShot);
  if (content.pictures.size() > 1) {
    painter.save();
    painter.translate(front.center() + kShotBehind);
    painter.rotate(kShotTurn);
    painter.translate(-front.center());
    paintStackedPicture(canvas, front, content.pictures[1].image);
    painter.restore();
  }
  paintStackedPicture(canvas, front, content.pictures.isEmpty() ? QImage() : content.pictures.first().image);
  if (caption)
    canvas.centredText(theme::kUnderPictureBaseline, TextStyle::Caption, content.caption, canvas.colors().secondary);
}

SearchContent makeFileSearch(const TileRequest&) { return {u"folder"_s, TileWords::tr("Search files…")}; }
SearchContent makeWebSearch(const TileRequest&) { return {u"magnifyingglass"_s, TileWords::tr("Search the web…")}; }

TileText describe(const SearchContent& content, const QString& name) { return {name, content.placeholder}; }

void paint(TileCanvas& canvas, const SearchContent& content) {
  const QRectF field(theme::kPictureInset, kFieldTop, canvas.width() - theme::kPictureInset * 2, kFieldHeight);
  // On a light tile a field is something bright to write into, as on paper.
  const Palette& colors = canvas.colors();
  drawRounded(canvas.painter(), field, kFieldCorner, colors.light ? colors.well : colors.button);
  if (colors.light) drawInnerLine(canvas.painter(), field, kFieldCorner, hairline(canvas.painter()), colors.tileEdge);
  canvas.symbol(content.symbol, {field.left() + kFieldSymbolLeft + kFieldSymbol / 2, field.center().y()}, kFieldSymbol,
                canvas.colors().primary);
  const double x = field.left() + kFieldText;
  const TextLine words = Typography::fitting({content.placeholder, TileWords::tr("Search…")}, TextStyle::Body,
                                             field.right() - kFieldSymbolLeft - x, Elide::End, canvas.scale());
  words.draw(canvas.painter(), {x, TileCanvas::centredBaseline(words)}, canvas.colors().secondary);
}

FigureContent makeBookmarks(const TileRequest& request) {
  const auto& count = request.sources.readings.bookmarks;
  const QString figure = count ? request.sources.locale.toString(*count) : FigureContent::dash();
  return {request.definition.symbol, figure, {}, request.title()};
}

}  // namespace tarnwick
