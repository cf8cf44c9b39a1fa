#include <gtest/gtest.h>

#include "DockFixture.h"
#include "views/families/services/ServiceTile.h"
#include "views/panels/Room.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TilePainter.h"
#include "widgets/Ticking.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

/// Read at 10:24 of that morning.
RemoteReading visitors() {
  RemoteReading reading;
  reading.value.value = u"3,184"_s;
  reading.value.subtitle = u"Visitors"_s;
  reading.goodAt = morning().now.addSecs(-36);
  return reading;
}

TileContent serviceTileOf(QLatin1StringView kind, const std::optional<RemoteReading>& reading,
                          const QMap<QString, QString>& options = {{option::endpoint, u"https://numbers.example/"_s}}) {
  TileSources sources = morning();
  sources.remoteExamples.clear();
  DockWidget shown = widget(kind);
  shown.options = options;
  if (reading) sources.remote.set(shown.id, *reading);
  return makeTileContent(shown, Catalog::find(kind), sources);
}

TEST(ServiceTiles, SayHowTheirValueStands) {
  const struct {
    const char* name;
    std::function<void(RemoteReading&)> change;
    QString said;
    QString caption;
  } cases[] = {
      {"all well", [](RemoteReading&) {}, u"3,184, Visitors"_s, u"Visitors"_s},
      {"a fetch that runs", [](RemoteReading& reading) { reading.isLoading = true; }, u"3,184, Visitors"_s,
       u"Visitors"_s},
      {"a value of this morning", [](RemoteReading& reading) { reading.goodAt = reading.goodAt->addSecs(-3 * 3600); },
       u"3,184, Visitors, 3 h ago"_s, u"Visitors · 3 h ago"_s},
      {"a value that is as old as one expects",
       [](RemoteReading& reading) { reading.goodAt = reading.goodAt->addSecs(-19 * 60); }, u"3,184, Visitors"_s,
       u"Visitors"_s},
      {"a failure keeps the headline",
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"No answer came."_s;
         reading.goodAt = reading.goodAt->addSecs(-600);
       },
       u"3,184, 10 min ago. No answer came."_s, u"Last value, 10 min ago"_s},
      {"a failure a moment after a value",
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"No answer came."_s;
       },
       u"3,184. No answer came."_s, u"No answer came."_s},
      {"a failure and never a value",
       [](RemoteReading& reading) {
         reading = {};
         reading.value.failed = true;
         reading.value.subtitle = u"No answer came."_s;
       },
       u"No answer came."_s, u"No answer came."_s},
      {"a limit of the service that did not say how long",
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"The service rate limit was reached. Try again later."_s;
         reading.pausedUntil = reading.goodAt->addSecs(3600);
       },
       u"3,184. The service rate limit was reached. Try again later. Paused until 11:24."_s, u"Paused until 11:24"_s},
      {"a limit of one that did",
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"The service rate limit was reached. Retry after 11:24."_s;
         reading.pausedUntil = reading.goodAt->addSecs(3600);
       },
       u"3,184. The service rate limit was reached. Retry after 11:24."_s, u"Paused until 11:24"_s},
      {"nobody is asked",
       [](RemoteReading& reading) {
         reading.waitsFor = RemoteWait::Network;
         reading.goodAt = reading.goodAt->addSecs(-120);
       },
       u"3,184, Visitors, 2 min ago. Waiting for the network."_s, u"Visitors · 2 min ago"_s},
      {"the first fetch",
       [](RemoteReading& reading) {
         reading = {};
         reading.value.loading = reading.isAsking = true;
       },
       u"Updating…"_s, u"Updating…"_s},
      {"one that was never asked, while the screen is locked",
       [](RemoteReading& reading) {
         reading = {};
         reading.waitsFor = RemoteWait::Unlocking;
       },
       u"Waiting for the screen to be unlocked."_s, u"Waiting for the screen to be unlocked"_s},
      {"a change", [](RemoteReading& reading) { reading.value.subtitle = u"-2.1% · 7 days"_s; },
       u"3,184, -2.1% · 7 days"_s, u"−2.1% · 7 days"_s},
  };
  for (const auto& each : cases) {
    RemoteReading reading = visitors();
    each.change(reading);
    const TileContent content = serviceTileOf(kind::socialInstagram, reading);
    EXPECT_EQ(content.describe(u"Instagram"_s).value, each.said) << each.name;
    EXPECT_EQ(contentAs<ServiceContent>(content).captions.value(0), each.caption) << each.name;
  }
  const auto said = [](QLatin1StringView kind, const QMap<QString, QString>& options) {
    return serviceTileOf(kind, std::nullopt, options).describe(u"N"_s).value;
  };
  EXPECT_EQ(said(kind::socialInstagram, {}), u"Connect"_s);
  EXPECT_EQ(said(kind::socialTikTok, {}), u"Connect"_s);
  EXPECT_EQ(said(kind::socialYouTube, {{option::endpoint, u"https://numbers.example/"_s}}), u"No value yet"_s);
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (definition.family != familyText(Family::Weather) && !isConnectedFamily(definition.family)) continue;
    EXPECT_EQ(Ticking::cadence(widget(definition.id)), TickCadence::Minute) << "its age stands still";
  }
}

TEST(ServiceTiles, TakeTheShapeOfWhatTheServiceGave) {
  RemoteReading bare = visitors();
  RemoteReading full = visitors();
  full.value.numbers = {1, std::numeric_limits<double>::infinity(), -3e200, 4};
  full.value.metrics = {{u"A"_s, u"1"_s}, {u"B"_s, u"2"_s}, {u"C"_s, u"3"_s}, {u"D"_s, u"4"_s}};
  full.value.rows = {{u"1"_s, u"ACME"_s, u"-2%"_s, {}}};
  RemoteReading allowances = visitors();
  allowances.value.usageWindows = {{u"a"_s, u"5 hours"_s, 91, {}, {}}, {u"b"_s, u"7 days"_s, 3, {}, {}}};
  RemoteReading failed = full;
  failed.value.failed = true;
  RemoteReading share = visitors();
  share.value.value = u"42%"_s;
  using enum ServiceShape;
  const struct {
    QLatin1StringView kind;
    const RemoteReading& reading;
    ServiceShape shape;
  } cases[] = {
      {kind::analyticsPlausibleChart, bare, Value},
      {kind::analyticsPlausibleChart, full, Line},
      {kind::analyticsPlausibleChart, failed, Value},
      {kind::shopifyTrends, full, Bars},
      {kind::analyticsGitHubContributions, full, Squares},
      {kind::analyticsGitHubOverview, bare, Value},
      {kind::analyticsGitHubOverview, full, Figures},
      {kind::xStudio, full, Figures},
      {kind::stockWatchlist, full, List},
      {kind::stockWatchlist, bare, Value},
      {kind::socialInstagram, full, Value},
      {kind::socialInstagram, allowances, Windows},
      {kind::claudePlanUsageGauge, allowances, Gauge},
      {kind::claudePlanUsageGauge, bare, Value},
      {kind::codexUsageGauge, share, Gauge},
  };
  for (const auto& each : cases) {
    const auto content = contentAs<ServiceContent>(serviceTileOf(each.kind, each.reading));
    EXPECT_EQ(content.shape, each.shape) << each.kind.data();
    EXPECT_EQ(content.isDimmed, each.reading.value.failed);
    EXPECT_TRUE(std::ranges::all_of(content.numbers, [](double number) { return std::abs(number) <= 1e150; }));
  }
  const auto windows = contentAs<ServiceContent>(serviceTileOf(kind::claudePlanUsage, allowances));
  EXPECT_EQ(windows.bars, (QList<UsageBar>{{u"5 hours"_s, u"91%"_s, 0.91, true}, {u"7 days"_s, u"3%"_s, 0.03, false}}));
}

/// Whether something is painted in the columns beside a tile.
bool leavesItsTile(const TileContent& content, double width, const TileStyle& style) {
  constexpr double ratio = 2;
  constexpr double beside = 40;
  constexpr int kFaint = 40;  // What is smoothed away from an edge.
  const QSizeF size(width * style.scale, 64 * style.scale);
  QImage image(((size + QSizeF(beside * 2, 0)) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  paintTile(painter, QRectF(QPointF(beside, 0), size), content, style);
  painter.end();
  const int left = static_cast<int>((beside + 2 * style.scale) * ratio);
  const int right = static_cast<int>((beside + size.width() - 2 * style.scale) * ratio);
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if ((x < left || x > right) && qAlpha(image.pixel(x, y)) > kFaint) return true;
  return false;
}

TEST(ServiceTiles, KeepWithinTheirTileWhateverTheyShow) {
  const std::span<const PanelState> states = Rooms::states(kind::codexUsage);
  ASSERT_GT(states.size(), 8U);
  TileStyle style;
  style.palette = Palette::make(DockStyle::DarkGlass, Backdrop::Opaque, false);
  style.grounded = false;
  for (const PanelState& state : states) {
    TileSources sources = morning();
    for (const Room* room : Rooms::all())
      if (room->name == "services"_L1) room->picture(sources);
    state.fill(sources);
    for (const WidgetDefinition& definition : Catalog::items()) {
      if (!isConnectedFamily(definition.family)) continue;
      const TileContent content = makeTileContent(widget(definition.id), definition, sources);
      for (const auto& [scale, direction] : {std::pair{1.0, Qt::LeftToRight}, std::pair{1.0, Qt::RightToLeft},
                                             std::pair{0.7, Qt::LeftToRight}, std::pair{0.5, Qt::LeftToRight}}) {
        style.scale = scale;
        style.direction = direction;
        EXPECT_FALSE(leavesItsTile(content, definition.width, style))
            << qPrintable(definition.id) << ' ' << state.name.data() << ' ' << scale << ' ' << direction;
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick::testing
