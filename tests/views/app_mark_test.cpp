// How running applications are seen: under the pointer, and by the marks below their icons.

#include <gtest/gtest.h>

#include <cmath>

#include "DockFixture.h"
#include "views/theme/Theme.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/TilePainter.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr int kUp = 4;  // Device pixels a unit.
constexpr QSizeF kPlace(52, 64);

QImage app(const AppMarks& marks, const TileStyle& style) {
  QImage picture(kPlace.toSize() * kUp, QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(kUp);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  paintRunningApp(painter, QRectF(QPointF(), kPlace), u"Files"_s, {}, marks, style);
  return picture;
}

TileStyle plainStyle() {
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  return style;
}

}  // namespace

TEST(RunningAppFeedback, IsThatOfTilesInEachStateAndNothingAtRest) {
  const QPoint beside(2 * kUp, 32 * kUp);  // The icon.
  for (const TileState state : {TileState::Rest, TileState::Hover, TileState::Pressed}) {
    TileStyle style = plainStyle();
    style.state = state;
    QImage tile(kPlace.toSize() * kUp, QImage::Format_ARGB32_Premultiplied);
    tile.setDevicePixelRatio(kUp);
    tile.fill(Qt::transparent);
    QPainter painter(&tile);
    paintTile(painter, QRectF(QPointF(), kPlace), TileContent(), style);
    painter.end();
    const QRgb seen = app({.running = true}, style).pixel(beside);
    EXPECT_EQ(seen, state == TileState::Rest ? qRgba(0, 0, 0, 0) : tile.pixel(beside)) << static_cast<int>(state);
  }
}

TEST(RunningAppFeedback, IsSeenInTheFrameInWhichThePointerComes) {
  DockRow row = starterRow();
  row.runningApps = runningApps();
  row.reduceMotion = true;
  const auto view = makeView(row);
  const qsizetype item = view->itemCount() - 1;
  const QPointF beside = view->itemRect(item).topLeft() + QPointF(2, 32);
  const QRgb rest = paintedBy(*view).pixel(beside.toPoint());
  mouse(*view, QEvent::MouseMove, view->itemRect(item).center(), Qt::NoButton);
  EXPECT_NE(paintedBy(*view).pixel(beside.toPoint()), rest);
}

TEST(WindowDots, AreOneForEachWindowUpToFourAndStandBelowTheIcon) {
  const auto dotsOf = [](const AppMarks& marks, const TileStyle& style) {
    const QImage picture = app(marks, style);
    const int row = static_cast<int>(theme::kAppDotTop * kUp);
    int dots = 0;
    double sum = 0;
    int inked = 0;
    for (int x = 0; x < picture.width(); ++x) {
      const bool isInk = qAlpha(picture.pixel(x, row)) > 100;
      if (isInk && (x == 0 || qAlpha(picture.pixel(x - 1, row)) <= 100)) ++dots;
      if (!isInk) continue;
      sum += x + 0.5;
      ++inked;
    }
    const double middle = theme::kAppIconLeft + theme::kAppIcon / 2;
    EXPECT_TRUE(inked == 0 || std::abs(sum / inked / kUp - middle) < 0.3) << "around the middle of the icon";
    return dots;
  };
  const TileStyle style = plainStyle();
  const std::vector<std::pair<qsizetype, int>> cases = {{0, 1}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {50, 4}};
  for (const auto& [windows, dots] : cases)
    EXPECT_EQ(dotsOf({.running = true, .windows = windows}, style), dots) << windows;
  EXPECT_EQ(dotsOf({.running = false, .windows = 3}, style), 0) << "one that starts has none yet";
  EXPECT_EQ(dotsOf({.running = true, .urgent = true, .windows = 3}, style), 1) << "the bar of one that calls";
  EXPECT_EQ(describe(AppMarks{.running = true, .windows = 3}), u"3 windows"_s);
  EXPECT_EQ(describe(AppMarks{.running = true}), QString());
}

}  // namespace tarnwick::testing
