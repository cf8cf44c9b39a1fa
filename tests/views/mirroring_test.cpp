#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "DockFixture.h"
#include "views/theme/Emoji.h"
#include "views/theme/Theme.h"
#include "views/theme/WeatherPictures.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidth = 180;
constexpr int kHeight = 64;
constexpr int kDensity = 4;  ///< Fine enough that the grain of the screen does not lean.

TileStyle styleFor(Qt::LayoutDirection direction) {
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  style.direction = direction;
  return style;
}

/// Where the ink of a picture lies from left to right, in the units of a tile, and how it leans there: from -0.5, all
/// at its left, to 0.5.
struct Ink {
  double left = -1;
  double right = -1;
  double lean = 0;
};

Ink inkOf(const QImage& image) {
  Ink ink;
  double sum = 0;
  double moment = 0;
  for (int x = 0; x < image.width(); ++x) {
    int column = 0;
    for (int y = 0; y < image.height(); ++y) column += qAlpha(image.pixel(x, y));
    if (column < 40) continue;
    if (ink.left < 0) ink.left = x;
    ink.right = x + 1;
    sum += column;
    moment += column * (x + 0.5);
  }
  if (sum > 0) ink.lean = (moment / sum - (ink.left + ink.right) / 2) / (ink.right - ink.left);
  ink.left /= kDensity;
  ink.right /= kDensity;
  return ink;
}

Ink drawn(Qt::LayoutDirection direction, const std::function<void(TileCanvas&)>& draw) {
  QImage image(QSize(kWidth, kHeight) * kDensity, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(kDensity);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const TileStyle style = styleFor(direction);
  enterTile(painter, QRectF(0, 0, kWidth, kHeight), style);
  TileCanvas canvas(painter, kWidth, style);
  draw(canvas);
  painter.end();
  return inkOf(image);
}

QImage tileOf(const QString& kind, Qt::LayoutDirection direction) {
  const WidgetDefinition& definition = Catalog::find(kind);
  QImage image(static_cast<int>(definition.width), kHeight, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  paintTile(painter, image.rect(), makeTileContent(widget(kind), definition, morning()), styleFor(direction));
  return image;
}

}  // namespace

TEST(Mirroring, PutsEachElementOnTheOtherSideAndTurnsOnlyWhatMayBe) {
  enum class Turn { Upright, Mirrored, Even };
  const struct {
    const char* what;
    Turn turn;
    std::function<void(TileCanvas&)> draw;
  } cases[] = {
      {"a text", Turn::Upright,
       [](TileCanvas& canvas) { canvas.text(12, 40, 90, TextStyle::Headline, u"L"_s, Qt::white); }},
      {"the title of a row", Turn::Upright,
       [](TileCanvas& canvas) { canvas.row(12, 40, u"L"_s, TextStyle::ListRow, {}, Qt::white); }},
      {"the word of a row", Turn::Upright,
       [](TileCanvas& canvas) { canvas.row(12, 40, {}, TextStyle::ListRow, u"L"_s, Qt::white); }},
      {"a figure", Turn::Upright,
       [](TileCanvas& canvas) { canvas.figure(12, 40, TextStyle::Headline, u"L"_s, {}, Qt::white); }},
      {"the unit of a figure", Turn::Upright,
       [](TileCanvas& canvas) { canvas.figure(12, 40, TextStyle::Headline, u"23"_s, u"L"_s, Qt::transparent); }},
      {"the name of a tile", Turn::Upright,
       [](TileCanvas& canvas) {
         canvas.name(u"L"_s, TextStyle::Title, 90).draw(canvas.painter(), {44, 40}, Qt::white);
       }},
      {"a symbol", Turn::Upright,
       [](TileCanvas& canvas) {
         canvas.symbol(u"moon"_s, {24, 32}, 20, Qt::white);
       }},
      {"the count of an application", Turn::Even,
       [](TileCanvas& canvas) { drawAppMarks(canvas, QRectF(20, 10, 44, 44), {.count = 3}); }},
      {"the weather", Turn::Upright,
       [](TileCanvas& canvas) {
         drawWeather(canvas.painter(), WeatherPicture::CloudSun, {12, 10}, 32, canvas.colors());
       }},
      {"a chart", Turn::Upright,
       [](TileCanvas& canvas) {
         paintChart(canvas, QRectF(92, 17, 76, 28), {0, 5, 20, 80, 95},
                    {.color = Qt::white, .depth = 5, .marked = false});
       }},
      {"an arc", Turn::Upright,
       [](TileCanvas& canvas) {
         canvas.arc({32, 32}, 19, 5, 60, 200, Qt::white);
       }},
      {"a shape", Turn::Mirrored,
       [](TileCanvas& canvas) {
         canvas.painter().setPen(Qt::NoPen);
         canvas.painter().setBrush(Qt::white);
         canvas.painter().drawPolygon(QPolygonF({QPointF(12, 12), QPointF(12, 52), QPointF(52, 52)}));
       }},
      {"what is unmirrored", Turn::Upright,
       [](TileCanvas& canvas) {
         canvas.unmirrored(32, [&] {
           canvas.painter().setPen(Qt::NoPen);
           canvas.painter().setBrush(Qt::white);
           canvas.painter().drawPolygon(QPolygonF({QPointF(12, 12), QPointF(12, 52), QPointF(52, 52)}));
         });
       }},
  };
  for (const auto& [what, turn, draw] : cases) {
    const Ink left = drawn(Qt::LeftToRight, draw);
    const Ink right = drawn(Qt::RightToLeft, draw);
    ASSERT_GE(left.left, 0) << what << ": nothing is drawn";
    // Letters and arcs do not fill their place evenly.
    EXPECT_NEAR(right.left, kWidth - left.right, 3) << what;
    EXPECT_NEAR(right.right, kWidth - left.left, 3) << what;
    if (turn == Turn::Even) continue;
    ASSERT_GT(std::abs(left.lean), 0.02) << what << ": looks the same from both sides";
    EXPECT_NEAR(right.lean, turn == Turn::Upright ? left.lean : -left.lean, 0.02) << what;
  }
}

TEST(Mirroring, BeginsWithTheInkOfAFigureAtTheSameDistanceFromTheEdge) {
  for (const QString& figure : {u"1"_s, u"18:45"_s, u"23"_s}) {
    const auto draw = [&](TileCanvas& canvas) { canvas.figure(12, 40, TextStyle::Headline, figure); };
    EXPECT_NEAR(drawn(Qt::LeftToRight, draw).left, 12, 0.75) << qPrintable(figure);
    EXPECT_NEAR(kWidth - drawn(Qt::RightToLeft, draw).right, 12, 0.75) << qPrintable(figure);
  }
}

TEST(Mirroring, LeavesTheFacesOfClocksAsTheyAre) {
  constexpr int rounding = 2;
  for (const QString& kind :
       {u"analogClassicLight"_s, u"analogMinimal"_s, u"flipClock"_s, u"pixelClock"_s, u"ringClock"_s})
    EXPECT_LE(difference(tileOf(kind, Qt::LeftToRight), tileOf(kind, Qt::RightToLeft)), rounding) << qPrintable(kind);
  for (const QString& kind : {u"digitalClock"_s, u"systemQuickToggles"_s, u"cpuChart"_s})
    EXPECT_GT(difference(tileOf(kind, Qt::LeftToRight), tileOf(kind, Qt::RightToLeft)), rounding) << qPrintable(kind);
}

TEST(Mirroring, PartsAnswerWhereTheyAreSeen) {
  TileSources sources = morning();
  for (int i = 0; i < 3; ++i) sources.todos.append({QUuid::createUuid(), u"Item %1"_s.arg(i), false});
  const struct {
    const char* kind;
    QPointF point;  ///< Of a part, from left to right.
  } cases[] = {{"systemQuickToggles", {29, 32}},
               {"quickTodo", {18, 48}},
               {"timer", {32, 32}},
               {"drinkWater", {24, 32}},
               {"habitTracker", {102, 44}}};
  for (const auto& [kind, point] : cases) {
    const WidgetDefinition& definition = Catalog::find(QString::fromLatin1(kind));
    const TileContent content = makeTileContent(widget(definition.id), definition, sources);
    const double width = definition.width;
    const TileClick read{width, point};
    const TileClick mirrored{width, {width - point.x(), point.y()}, 1, Qt::RightToLeft};
    ASSERT_TRUE(content.partAt(read)) << kind;
    EXPECT_EQ(content.partAt(mirrored), content.partAt(read)) << kind;
    EXPECT_NE(content.partAt({width, point, 1, Qt::RightToLeft}), content.partAt(read)) << kind;
    const auto named = content.namedPartAt(read);
    const auto seen = content.namedPartAt(mirrored);
    ASSERT_EQ(named.has_value(), seen.has_value()) << kind;
    if (!named) continue;
    EXPECT_EQ(seen->text, named->text);
    EXPECT_TRUE(seen->place.contains(mirrored.point)) << kind;
    EXPECT_EQ(seen->place.left(), width - named->place.right()) << kind;
  }
}

TEST(Mirroring, ADockGivesItsDirectionToItsTiles) {
  const DockRow row = starterRow();
  const auto view = makeView(row);
  view->setLayoutDirection(Qt::RightToLeft);
  int part = -1;
  QObject::connect(view.get(), &DockView::tilePartActivated, [&](const QUuid&, int which) { part = which; });
  const QRectF toggles = view->itemRect(6);
  click(*view, {toggles.right() - 29, toggles.center().y()});
  EXPECT_EQ(part, int(Toggle::WiFi));
  click(*view, {toggles.left() + 29, toggles.center().y()});
  EXPECT_EQ(part, int(Toggle::KeepAwake));
}

}  // namespace tarnwick::testing
