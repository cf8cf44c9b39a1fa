// How running applications are seen: under the pointer, and by the marks below their icons.

#include <gtest/gtest.h>

#include "DockFixture.h"
#include "views/theme/Theme.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/TilePainter.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr int kUp = 4;  // Device pixels a unit.

QImage app(const AppMarks& marks, const TileStyle& style) {
  QImage picture(QSize(64, 64) * kUp, QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(kUp);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  paintRunningApp(painter, QRectF(0, 0, 64, 64), u"Files"_s, {}, marks, style);
  return picture;
}

TileStyle plainStyle() {
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  return style;
}

}  // namespace

TEST(RunningAppFeedback, IsThatOfTilesInEachStateAndNothingAtRest) {
  const QPoint corner(5 * kUp, 32 * kUp);  // Of the ground, beside the icon.
  for (const TileState state : {TileState::Rest, TileState::Hover, TileState::Pressed}) {
    TileStyle style = plainStyle();
    style.state = state;
    QImage tile(QSize(64, 64) * kUp, QImage::Format_ARGB32_Premultiplied);
    tile.setDevicePixelRatio(kUp);
    tile.fill(Qt::transparent);
    QPainter painter(&tile);
    paintTile(painter, QRectF(0, 0, 64, 64), TileContent(), style);
    painter.end();
    const QRgb seen = app({.running = true}, style).pixel(corner);
    EXPECT_EQ(seen, state == TileState::Rest ? qRgba(0, 0, 0, 0) : tile.pixel(corner)) << static_cast<int>(state);
  }
}

TEST(RunningAppFeedback, IsSeenInTheFrameInWhichThePointerComes) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  row.reduceMotion = true;
  const auto view = makeView(row);
  const qsizetype item = view->itemCount() - 1;
  const QPointF corner = view->itemRect(item).topLeft() + QPointF(5, 32);
  const QRgb rest = paintedBy(*view).pixel(corner.toPoint());
  mouse(*view, QEvent::MouseMove, view->itemRect(item).center(), Qt::NoButton);
  EXPECT_NE(paintedBy(*view).pixel(corner.toPoint()), rest);
}

}  // namespace tarnwick::testing
