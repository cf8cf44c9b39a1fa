#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "DockFixture.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/tiles/TileGround.h"
#include "views/tiles/TilePainter.h"
#include "views/tiles/TilePictures.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

/// Clear enough that text is not weighted by what is below it.
QImage paper(double ratio) {
  QImage image(QSize(240, 100) * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(QColor(30, 40, 60, 180));
  return image;
}

/// What is blended twice may be rounded twice.
constexpr int kRounding = 2;

}  // namespace

TEST(Ground, IsTheSameWhateverItWasLaidDownFrom) {
  const QColor fill(255, 255, 255, 40);
  const QColor edge(255, 255, 255, 70);
  for (const double ratio : {1.0, 1.5, 2.0})
    for (const QRectF& place : {QRectF(10, 8, 150, 64), QRectF(10, 8, 52, 64), QRectF(4, 2, 218, 64),
                                QRectF(10, 8, 20, 64), QRectF(10.3, 8, 150, 64)})
      for (const double corner : {14.0, 11.2}) {
        QImage once = paper(ratio);
        QImage whole = paper(ratio);
        {
          QPainter painter(&once);
          painter.setRenderHint(QPainter::Antialiasing);
          TileGround::paint(painter, place, corner, fill, edge);
          QPainter other(&whole);
          other.setRenderHint(QPainter::Antialiasing);
          drawRounded(other, place, corner, fill);
          drawInnerLine(other, place, corner, hairline(other), edge);
        }
        EXPECT_LE(difference(once, whole), kRounding) << ratio << ' ' << place.width() << ' ' << corner;
      }
}

TEST(TilePictures, AreTheTileToThePixelAndTakenOnceForEachState) {
  const WidgetDefinition& definition = Catalog::find(u"digitalClock"_s);
  const TileContent content = makeTileContent(widget(definition.id), definition, morning());
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  const QRectF place(20, 18, 150, 64);
  for (const double ratio : {1.0, 2.0}) {
    TilePictures pictures;
    int taken = 0;
    const auto drawn = [&](TileState state, double magnification) {
      style.state = state;
      style.magnification = magnification;
      QImage image = paper(ratio);
      QPainter painter(&image);
      painter.setRenderHint(QPainter::Antialiasing);
      pictures.draw(painter, 3, place, style, [&](QPainter& layer, const TileStyle& own) {
        ++taken;
        paintTile(layer, place, content, own);
      });
      return image;
    };
    const auto itself = [&](TileState state, double magnification) {
      style.state = state;
      style.magnification = magnification;
      QImage image = paper(ratio);
      QPainter painter(&image);
      painter.setRenderHint(QPainter::Antialiasing);
      paintTile(painter, place, content, style);
      return image;
    };
    EXPECT_LE(difference(drawn(TileState::Rest, 1), itself(TileState::Rest, 1)), kRounding);
    EXPECT_LE(difference(drawn(TileState::Hover, 1), itself(TileState::Hover, 1)), kRounding);
    EXPECT_EQ(taken, 2);
    drawn(TileState::Rest, 1.05);
    drawn(TileState::Hover, theme::kHoverScale);
    EXPECT_EQ(taken, 2) << "swollen, it is the same picture";
    // Where a swollen tile ends is where its picture does.
    const QRect bounds = tilePaintBounds(place, style).toAlignedRect();
    const QImage swollen = drawn(TileState::Hover, theme::kHoverScale);
    const QImage empty = paper(ratio);
    for (const QPoint& outside : {bounds.topLeft() - QPoint(2, 2), bounds.bottomRight() + QPoint(2, 2)})
      EXPECT_EQ(swollen.pixel(outside * ratio), empty.pixel(outside * ratio));
    const QPoint inside = QPointF(place.left() - 3, place.center().y()).toPoint();
    EXPECT_NE(swollen.pixel(inside * ratio), empty.pixel(inside * ratio));
    pictures.forget(3);
    drawn(TileState::Hover, 1);
    EXPECT_EQ(taken, 3);
  }
}

TEST(TilePictures, KeepTheirDistanceHoweverLargeTheyAre) {
  constexpr double ratio = 2;
  struct Case {
    double spacing, swelling;
  };
  for (const Case& each : {Case{7, Magnification::kMost}, Case{7, Magnification::kMuch}, Case{2, Magnification::kMuch},
                           Case{20, Magnification::kMuch}}) {
    DockRow row;
    row.widgets = {widget(u"cpuChart"_s), widget(u"ramChart"_s)};
    row.spacing = each.spacing;
    row.swelling = each.swelling;
    const auto view = makeView(row);
    view->show();
    QCoreApplication::processEvents();
    view->clearFocus();
    const QRectF tile = view->itemRect(0);
    const QPoint between = (QPointF(tile.right() + each.spacing / 2, tile.center().y()) * ratio).toPoint();
    const QImage untouched = paintedBy(*view, ratio);
    mouse(*view, QEvent::MouseMove, tile.center() + QPointF(tile.width() / 2 - 4, 0), Qt::NoButton);
    ASSERT_TRUE(view->isMoving());
    do {
      view->beat(test::TestFrameClock::kFrame);
      const QImage now = paintedBy(*view, ratio);
      for (const int away : {-1, 0})
        EXPECT_EQ(now.pixel(between + QPoint(away, 0)), untouched.pixel(between + QPoint(away, 0)))
            << each.spacing << ' ' << each.swelling << (view->isMoving() ? " in motion" : " at rest");
    } while (view->isMoving());
    const QPoint above = (QPointF(tile.center().x(), tile.top() - 1) * ratio).toPoint();
    EXPECT_NE(paintedBy(*view, ratio).pixel(above), untouched.pixel(above)) << "it grows upwards";
  }
}

TEST(TilePictures, AreGoneWhenTheDockIsStill) {
  const DockRow row = starterRow();
  const auto view = makeView(row);
  const QImage untouched = paintedBy(*view);
  view->show();
  QCoreApplication::processEvents();
  view->clearFocus();
  const QPointF tile = view->itemRect(1).center();
  mouse(*view, QEvent::MouseMove, tile - QPointF(40, 0), Qt::NoButton);
  ASSERT_TRUE(view->rest());
  mouse(*view, QEvent::MouseMove, tile, Qt::NoButton);
  ASSERT_TRUE(view->isMoving());
  ASSERT_TRUE(view->rest());
  // A tile of which no picture ever was.
  const auto other = makeView(row);
  other->show();
  QCoreApplication::processEvents();
  other->clearFocus();
  mouse(*other, QEvent::MouseMove, tile, Qt::NoButton);
  ASSERT_TRUE(other->rest());
  EXPECT_EQ(paintedBy(*view), paintedBy(*other));

  // What changes under way is what is seen.
  TileSources later = morning();
  later.now = later.now.addSecs(3600);
  mouse(*view, QEvent::MouseMove, tile + QPointF(30, 0), Qt::NoButton);
  paintedBy(*view);
  view->refresh(later);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(view.get(), &leave);
  paintedBy(*view);
  ASSERT_TRUE(view->rest());
  EXPECT_NE(paintedBy(*view), untouched);
  view->refresh(morning());
  EXPECT_EQ(paintedBy(*view), untouched);
}

}  // namespace tarnwick::testing
