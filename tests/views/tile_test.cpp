#include <gtest/gtest.h>

#include <limits>

#include "DockFixture.h"
#include "views/families/clocks/ClockTiles.h"
#include "views/families/system/GaugeTiles.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

TileContent contentOf(const QString& kind, const TileSources& sources) {
  return makeTileContent(widget(kind), Catalog::find(kind), sources);
}

}  // namespace

TEST(TimeAndDate, SpeaksTheLocale) {
  struct Case {
    QLocale locale;
    bool use24Hour;
    QString time;
    QString half;
    QString longest;
    QString shortest;
  };
  const std::vector<Case> cases = {
      {QLocale(QLocale::English, QLocale::UnitedKingdom),
       true,
       u"15:04"_s,
       {},
       u"Tuesday, 24 November"_s,
       u"Tue, 24 Nov"_s},
      {QLocale(QLocale::English, QLocale::UnitedStates), false, u"3:04"_s, u"PM"_s, u"Tuesday, November 24"_s,
       u"Tue, Nov 24"_s},
      {QLocale(QLocale::German), true, u"15:04"_s, {}, u"Dienstag, 24. November"_s, u"Di., 24. Nov."_s},
      {QLocale(QLocale::French), true, u"15:04"_s, {}, u"mardi 24 novembre"_s, u"mar. 24 nov."_s},
      {QLocale(QLocale::Spanish), true, u"15:04"_s, {}, u"martes, 24 de noviembre"_s, u"mar, 24 de nov"_s},
      {QLocale(QLocale::Finnish), true, u"15.04"_s, {}, u"tiistaina 24. marraskuuta"_s, u"ti 24. marrask."_s},
      {QLocale(QLocale::Japanese), true, u"15:04"_s, {}, u"11月24日火曜日"_s, u"11月24日火"_s},
  };
  for (const Case& expected : cases) {
    TileSources sources = morning();
    sources.now.setTime(QTime(15, 4, 9));
    sources.locale = expected.locale;
    sources.use24Hour = expected.use24Hour;
    const auto content = contentAs<TimeDateContent>(contentOf(u"digitalClock"_s, sources));
    const auto name = qPrintable(expected.locale.name());
    EXPECT_EQ(content.time.toStdString(), expected.time.toStdString()) << name;
    EXPECT_EQ(content.halfOfDay.toUpper().toStdString(), expected.half.toStdString()) << name;
    EXPECT_EQ(content.dates.first().toStdString(), expected.longest.toStdString()) << name;
    EXPECT_EQ(content.dates.last().toStdString(), expected.shortest.toStdString()) << name;
  }
}

TEST(TimeAndDate, FollowsTheWidgetsZone) {
  DockWidget clock = widget(u"digitalClock"_s);
  TileSources sources = morning();
  sources.now = QDateTime(QDate(2026, 11, 24), QTime(22, 30), Qt::UTC);
  const auto time = [&] {
    return contentAs<TimeDateContent>(makeTileContent(clock, Catalog::find(clock.kind), sources));
  };
  clock.options[u"timezone"_s] = u"Asia/Tokyo"_s;
  EXPECT_EQ(time().time, u"07:30"_s);
  EXPECT_EQ(time().dates.first(), u"Wednesday, 25 November"_s);
  clock.options[u"timezone"_s] = u"Nowhere/AtAll"_s;
  EXPECT_EQ(time().time, u"22:30"_s);
}

TEST(Contents, ChangeOnlyWithWhatTheyShow) {
  const TileSources before = morning();
  TileSources after = before;
  after.now = before.now.addSecs(1);
  after.metrics->cpu = 23.3;
  after.metrics->memory = 62;
  for (const auto& [kind, same] : std::initializer_list<std::pair<QString, bool>>{{u"digitalClock"_s, true},
                                                                                  {u"analogClassicLight"_s, false},
                                                                                  {u"cpu"_s, true},
                                                                                  {u"ram"_s, false},
                                                                                  {u"systemQuickToggles"_s, true}})
    EXPECT_EQ(contentOf(kind, before) == contentOf(kind, after), same) << qPrintable(kind);
}

TEST(Gauges, ReadAnything) {
  TileSources sources = morning();
  const auto percent = [&] { return contentAs<GaugeContent>(contentOf(u"cpu"_s, sources)).percent; };
  sources.metrics->cpu = 140;
  EXPECT_EQ(percent(), 100);
  sources.metrics->cpu = -3;
  EXPECT_EQ(percent(), 0);
  sources.metrics->cpu = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(percent(), std::nullopt);
  sources.metrics.reset();
  EXPECT_EQ(percent(), std::nullopt);
}

TEST(Toggles, FindTheDiscUnderThePointUnlessItIsMissing) {
  TileSources sources = morning();
  sources.toggles[Toggle::DoNotDisturb].capability = Capability::no(u"No such service."_s);
  const TileContent content = contentOf(u"systemQuickToggles"_s, sources);
  const auto partAt = [&](double x, double y) { return content.partAt({170, {x, y}}); };
  EXPECT_EQ(partAt(29, 32), int(Toggle::WiFi));
  EXPECT_EQ(partAt(66, 40), int(Toggle::DarkMode));
  EXPECT_EQ(partAt(103, 32), std::nullopt);
  EXPECT_EQ(partAt(141, 20), int(Toggle::KeepAwake));
  EXPECT_EQ(partAt(4, 4), std::nullopt);
}

TEST(Words, SayWhatATileIsAndShows) {
  TileSources sources = morning();
  const auto tip = [&](const QString& kind) {
    return contentOf(kind, sources).describe(Catalog::find(kind).name).tip();
  };
  EXPECT_EQ(tip(u"cpu"_s), u"CPU: 23%"_s);
  EXPECT_EQ(tip(u"digitalClock"_s), u"Time & Date: 10:24, Tuesday, 24 November"_s);
  EXPECT_EQ(tip(u"weatherCurrent"_s), u"Location: Kendal, 6°, Partly cloudy"_s);
  EXPECT_EQ(tip(u"systemQuickToggles"_s), u"Quick Toggles: Wi-Fi, Dark Mode"_s);
  EXPECT_EQ(tip(u"analyticsGitHub"_s), u"GitHub: Connect"_s);
  EXPECT_EQ(tip(u"airdrop"_s), u"AirDrop: No sender"_s);
  sources.readings.sendsNearby = true;
  EXPECT_EQ(tip(u"airdrop"_s), u"AirDrop: Drop files"_s);
  EXPECT_EQ(tip(u"trash"_s), u"Trash"_s);
  sources.trashItems = 0;
  EXPECT_EQ(tip(u"trash"_s), u"Trash: Empty"_s);
  sources.trashItems = 1;
  EXPECT_EQ(tip(u"trash"_s), u"Trash: 1 item"_s);
  sources.weather = {};
  EXPECT_EQ(tip(u"weatherCurrent"_s), u"Location: Set place"_s);
}

TEST(Weather, IsSeenBeforeThereIsAReading) {
  TileSources sources = morning();
  sources.weather = {};
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false);
  const PictureColors& colors = style.palette.pictures;
  for (const WidgetDefinition& kind : Catalog::items()) {
    if (kind.family != familyText(Family::Weather)) continue;
    QImage image(QSize(200, 64) * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintTile(painter, QRectF(0, 0, kind.width, 64), makeTileContent(widget(kind.id), kind, sources), style);
    painter.end();
    qsizetype pixels = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor color = image.pixelColor(x, y);
        // Cloud or sun in their full strength.
        const bool isCloud = color.red() > colors.cloudBottom.red() - 2 && color.red() < color.blue() - 5;
        const bool isSun = color.red() > 250 && color.blue() < colors.sunTop.blue() + 2;
        if (color.alpha() == 255 && (isCloud || isSun)) ++pixels;
      }
    EXPECT_GT(pixels, 300) << qPrintable(kind.id);
  }
}

TEST(OpenTiles, HaveTheirMarkClearOfWhatTheyShow) {
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Opaque, false);
  style.state = TileState::PanelOpen;
  TileSources sources = morning();
  sources.weather = {};
  for (const WidgetDefinition& kind : Catalog::items()) {
    DockWidget shown = widget(kind.id);
    shown.options.insert(option::path, u"/home/me/Gypsy jig"_s);
    const TileContent content = makeTileContent(shown, kind, sources);
    if (!content.isSolid()) continue;
    QImage image(QSize(300, 64) * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::black);
    QPainter painter(&image);
    paintTile(painter, QRectF(0, 0, kind.width, 64), content, style);
    painter.end();
    const int middle = static_cast<int>(kind.width);
    const auto row = [&](int y) {
      QSet<QRgb> colors;
      for (int x = middle - 14; x < middle + 14; ++x) colors.insert(image.pixel(x, y));
      return colors;
    };
    EXPECT_EQ(row(121).size(), 1) << qPrintable(kind.id) << ", something touches the mark";
    EXPECT_FALSE(row(124).intersects(row(121))) << qPrintable(kind.id) << ", there is no mark";
  }
}

TEST(Words, AGivenTitleReplacesTheName) {
  DockWidget note = widget(u"linearThing"_s);
  note.title = u"My thing"_s;
  const auto content = contentAs<GenericContent>(makeTileContent(note, Catalog::find(note.kind), morning()));
  EXPECT_EQ(content.name, u"My thing"_s);
}

TEST(Words, NamesAreWholeInADockOfFullSize) {
  QImage image(8, 8, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  const TileStyle style;
  TileSources sources = morning();
  sources.weather = {};
  for (const WidgetDefinition& kind : Catalog::items()) {
    const TileContent content = makeTileContent(widget(kind.id), kind, sources);
    const auto* generic = content.as<GenericContent>();
    if (!generic) continue;
    const double width = Catalog::referenceWidth(kind.id, kind.width);
    EXPECT_EQ(nameRows(TileCanvas(painter, width, style), *generic).join(u' '), generic->name)
        << qPrintable(kind.id) << ' ' << width;
  }
  GenericContent share;
  share.name = u"Nearby Share"_s;
  EXPECT_EQ(nameRows(TileCanvas(painter, 76, style), share), (QStringList{u"Nearby"_s, u"Share"_s}));
}

TEST(Words, GiveWayBeforeTheyAreScraps) {
  QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
  const auto canvasAt = [](QPainter& painter, const TileStyle& style) { return TileCanvas(painter, 180, style); };
  const auto inkAtTheRight = [&](const QString& title, double scale) {
    image.fill(Qt::transparent);
    QPainter painter(&image);
    TileStyle style;
    style.scale = scale;
    canvasAt(painter, style).row(12, 30, title, TextStyle::ListRow, u"13:30"_s, Qt::white);
    painter.end();
    for (int y = 0; y < image.height(); ++y)
      if (qAlpha(image.pixel(164, y)) > 100 || qAlpha(image.pixel(162, y)) > 100) return true;
    return false;
  };
  EXPECT_TRUE(inkAtTheRight(u"Lunch with Ines"_s, 1)) << "both have room";
  EXPECT_TRUE(inkAtTheRight(u"Quarterly planning with the whole team"_s, 1)) << "enough is left of the title";
  EXPECT_FALSE(inkAtTheRight(u"Lunch with Ines"_s, 0.5)) << "the time gives way";
  EXPECT_TRUE(inkAtTheRight(u"Lunch"_s, 0.5));

  QPainter painter(&image);
  for (const double scale : {0.5, 1.0}) {
    TileStyle style;
    style.scale = scale;
    const TileCanvas canvas = canvasAt(painter, style);
    EXPECT_EQ(canvas.name(u"Wallpaper"_s, TextStyle::Title, 60).text().isEmpty(), scale < 1);
    EXPECT_TRUE(canvas.name(u"Quarterly planning"_s, TextStyle::Title, 100).text().startsWith(u"Quarte"_s));
    EXPECT_EQ(canvas.name(u"Mail"_s, TextStyle::Title, 60).text(), u"Mail"_s);
  }
}

}  // namespace tarnwick::testing
