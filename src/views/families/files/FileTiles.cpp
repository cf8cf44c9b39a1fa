#include "views/families/files/FileTiles.h"

#include <algorithm>
#include <array>

#include "views/families/files/StackedPicture.h"
#include "views/theme/FilePictures.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/PinnedTiles.h"
#include "widgets/TileWords.h"
#include "widgets/WidgetFolder.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPictureTop = 3;
constexpr double kPictureAlone = 12;  ///< The top of a picture without a caption.
constexpr double kShelfLift = 1.25;   ///< How far the middle of a shelf lies below that of its space.
constexpr double kStackSide = 32;
constexpr std::array kStackTurns = {0.0, -9.0, 8.0};
constexpr double kTrashSymbol = 24;
constexpr double kTrashMiddle = 23;

/// The top left of the picture of a tile that has a caption where there is space for one.
QPointF pictureCorner(const TileCanvas& canvas) {
  return {(canvas.width() - kFilePicture) / 2, canvas.showsCaption() ? kPictureTop : kPictureAlone};
}

void paintCaption(TileCanvas& canvas, double baseline, const QString& text) {
  if (canvas.showsCaption()) canvas.centredText(baseline, TextStyle::Caption, text, canvas.colors().secondary);
}

/// Of a great many the number says enough.
void paintCount(TileCanvas& canvas, const QString& words, qint64 count) {
  const double space = canvas.width() - theme::kTextLeft;
  const bool whole = count <= 0 || canvas.line(words, TextStyle::Caption).width() <= space;
  paintCaption(canvas, theme::kUnderPictureBaseline, whole ? words : QLocale().toString(count));
}

QString emptyWord() { return TileWords::tr("Empty"); }

QString itemsIn(const TrashContent& content) {
  if (!content.items) return content.name;
  if (*content.items <= 0) return emptyWord();
  if (*content.items == 1) return TileWords::tr("1 item");
  return TileWords::tr("%1 items").arg(QLocale().toString(*content.items));
}

QString filesOn(const ShelfContent& content) {
  if (content.files <= 0) return emptyWord();
  return TileWords::tr("%1 on shelf").arg(QLocale().toString(content.files));
}

QString folderName(const TileRequest& request) {
  const QString own = PinnedTiles::nameOf(request.widget.options.value(option::path));
  return request.widget.title.isEmpty() && !own.isEmpty() ? own : request.title();
}

QList<StackedFile> stackOf(const TileRequest& request) {
  if (!showsStack(request.widget)) return {};
  return request.sources.readings.stacks.value(widgetFolder(request.widget));
}

/// Each a little turned, the newest on top: a picture as it is, anything else as a sheet.
void paintStack(TileCanvas& canvas, QPointF corner, const QList<StackedFile>& stack) {
  QPainter& painter = canvas.painter();
  const QPointF centre = corner + QPointF(kFilePicture, kFilePicture) / 2;
  const qsizetype count = std::min<qsizetype>(stack.size(), kStackTurns.size());
  for (qsizetype i = count - 1; i >= 0; --i) {
    painter.save();
    painter.translate(centre);
    painter.rotate(kStackTurns[static_cast<std::size_t>(i)]);
    const QImage& image = stack[i].picture.image;
    if (image.isNull())
      drawDocument(painter, QPointF(-kFilePicture, -kFilePicture) / 2, canvas.colors().pictures);
    else
      paintStackedPicture(canvas, QRectF(QPointF(-kStackSide, -kStackSide) / 2, QSizeF(kStackSide, kStackSide)), image);
    painter.restore();
  }
}

}  // namespace

FolderContent makeFolder(const TileRequest& request) { return {folderName(request), false, stackOf(request)}; }

FolderContent makeDownloads(const TileRequest& request) { return {folderName(request), true, stackOf(request)}; }

TileText describe(const FolderContent& content, const QString&) {
  QStringList files;
  for (const StackedFile& file : content.stack) files << file.name;
  return {content.name, files.join(u", "_s)};
}

void paint(TileCanvas& canvas, const FolderContent& content) {
  const QPointF corner = pictureCorner(canvas);
  if (!content.stack.isEmpty()) {
    paintStack(canvas, corner, content.stack);
    paintCaption(canvas, theme::kUnderPictureBaseline, content.name);
    return;
  }
  drawFolder(canvas.painter(), corner, canvas.colors().pictures);
  if (content.downloads)
    canvas.symbol(u"arrow.down"_s, corner + kFolderGlyph, kFolderGlyphSize, canvas.colors().pictures.folderGlyph);
  paintCaption(canvas, theme::kUnderPictureBaseline, content.name);
}

TrashContent makeTrash(const TileRequest& request) { return {request.title(), request.sources.trashItems}; }

TileText describe(const TrashContent& content, const QString& name) {
  return {name, content.items ? itemsIn(content) : QString()};
}

void paint(TileCanvas& canvas, const TrashContent& content) {
  const double middle = canvas.showsCaption() ? kTrashMiddle : theme::kTileMiddle;
  canvas.symbol(u"trash"_s, {canvas.width() / 2, middle}, kTrashSymbol, canvas.colors().primary);
  paintCount(canvas, itemsIn(content), content.items.value_or(0));
}

ShelfContent makeShelf(const TileRequest& request) { return {request.sources.shelfItems}; }

TileText describe(const ShelfContent& content, const QString& name) { return {name, filesOn(content)}; }

void paint(TileCanvas& canvas, const ShelfContent& content) {
  const QPointF lift(0, canvas.showsCaption() ? 0 : kShelfLift);
  drawShelf(canvas.painter(), pictureCorner(canvas) - lift, std::clamp<int>(static_cast<int>(content.files), 0, 2),
            canvas.colors().pictures);
  paintCount(canvas, filesOn(content), content.files);
}

}  // namespace tarnwick
