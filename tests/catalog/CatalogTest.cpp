#include "widgets/catalog/Catalog.h"

#include <gtest/gtest.h>

#include <QHash>
#include <algorithm>
#include <thread>
#include <vector>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QStringList idsOf(const QList<WidgetDefinition>& items) {
  QStringList ids;
  for (const WidgetDefinition& item : items) ids.append(item.id);
  return ids;
}

TEST(Catalog, HoldsEveryKindOnceWithEverythingThatATileNeeds) {
  const auto& items = Catalog::items();
  EXPECT_EQ(items.size(), 163);
  const QStringList ids = idsOf(items);
  EXPECT_EQ(QSet<QString>(ids.cbegin(), ids.cend()).size(), 163);
  EXPECT_EQ(items.first().id, u"digitalClock");
  EXPECT_EQ(items.last().id, u"backgroundSounds");
  for (const WidgetDefinition& item : items) {
    SCOPED_TRACE(item.id.toStdString());
    EXPECT_FALSE(item.name.isEmpty() || item.category.isEmpty() || item.symbol.isEmpty() || item.family.isEmpty());
    EXPECT_EQ(item.name, item.name.trimmed());
    EXPECT_GT(item.width, 0);
    EXPECT_LE(item.width, 280);
    EXPECT_TRUE(item.asset.isEmpty() || item.asset.startsWith("Brand"_L1) || item.asset.startsWith("SocialBrand"_L1));
    EXPECT_TRUE(Catalog::contains(item.id));
    EXPECT_EQ(&Catalog::find(item.id), &item);
  }
}

TEST(Catalog, GroupsTakeEachKindOnceAndGiveItTheirName) {
  const QList<std::pair<QString, qsizetype>> expected{
      {u"Social"_s, 5},  {u"Finance"_s, 3},    {u"Commerce"_s, 3}, {u"Stocks"_s, 3},    {u"Crypto"_s, 3},
      {u"AI"_s, 14},     {u"Analytics"_s, 14}, {u"Clocks"_s, 19},  {u"Calendar"_s, 12}, {u"Reminders"_s, 3},
      {u"Tasks"_s, 3},   {u"Phone"_s, 1},      {u"Media"_s, 5},    {u"Photos"_s, 2},    {u"System"_s, 39},
      {u"Weather"_s, 8}, {u"Mail"_s, 4},       {u"Notes"_s, 1}};
  QList<std::pair<QString, qsizetype>> sizes;
  QStringList grouped;
  QStringList sections{u"All Widgets"_s, u"Apps"_s, u"Folders"_s};
  for (const WidgetGroup& group : Catalog::groups()) {
    sizes.append({group.name, group.kinds.size()});
    sections.append(group.name);
    grouped.append(group.kinds);
    for (const QString& kind : group.kinds) {
      EXPECT_TRUE(Catalog::contains(kind)) << kind.toStdString();
      EXPECT_EQ(Catalog::find(kind).category, group.name) << kind.toStdString();
    }
  }
  EXPECT_EQ(sizes, expected);
  EXPECT_EQ(Catalog::categories(), sections << u"More"_s);
  EXPECT_EQ(grouped.size(), 142);
  EXPECT_EQ(grouped.removeDuplicates(), 0);
  EXPECT_EQ(Catalog::referenceKinds(), QSet<QString>(grouped.cbegin(), grouped.cend()));
}

TEST(Catalog, OffersAsExtraWhatStandsInNoGroupAndIsNotReadyMade) {
  const QStringList expected{u"todayOverview"_s, u"calendarMeeting"_s,     u"scratchNote"_s,     u"battery"_s,
                             u"topApps"_s,       u"pinnedWindow"_s,        u"appFolder"_s,       u"openWindows"_s,
                             u"downloads"_s,     u"backgroundSound"_s,     u"keyboardCleaner"_s, u"externalBattery"_s,
                             u"workflow"_s,      u"revenueLemonSqueezy"_s, u"socialInstagram"_s, u"homeAssistant"_s,
                             u"appleHome"_s};
  QStringList kinds = idsOf(Catalog::extraItems());
  QStringList sorted = expected;
  kinds.sort();
  sorted.sort();
  EXPECT_EQ(kinds, sorted);
}

TEST(Catalog, CountsOfFamiliesCategoriesAndArtwork) {
  QHash<QString, int> families;
  QHash<QString, int> ungrouped;
  int withAsset = 0;
  for (const WidgetDefinition& item : Catalog::items()) {
    ++families[item.family];
    if (!Catalog::referenceKinds().contains(item.id)) ++ungrouped[item.category];
    if (!item.asset.isEmpty()) ++withAsset;
  }
  const QHash<QString, int> someFamilies{{u"clock"_s, 15},  {u"calendar"_s, 10}, {u"timer"_s, 5},
                                         {u"metric"_s, 11}, {u"weather"_s, 8},   {u"integration"_s, 54},
                                         {u"studio"_s, 2},  {u"mail"_s, 2},      {u"files"_s, 6},
                                         {u"music"_s, 4},   {u"apps"_s, 3},      {u"windows"_s, 3}};
  for (const auto& [family, count] : someFamilies.asKeyValueRange()) {
    EXPECT_EQ(families.value(family), count) << family.toStdString();
  }
  const QHash<QString, int> categories{{u"Calendar"_s, 2},      {u"Productivity"_s, 1}, {u"System"_s, 5},
                                       {u"Apps & Files"_s, 10}, {u"Media"_s, 1},        {u"Business"_s, 1},
                                       {u"Social"_s, 1}};
  EXPECT_EQ(ungrouped, categories);
  EXPECT_EQ(withAsset, 48);
}

struct Case {
  QString kind;
  QString name;
  QString category;
  QString symbol;
  QString family;
  QString asset;
  double width;
};

TEST(Catalog, DefinitionsWhereARuleChangesThePlainRow) {
  const Case cases[] = {
      {u"digitalClock"_s, u"Time & Date"_s, u"Clocks"_s, u"clock.fill"_s, u"clock"_s, {}, 150},
      {u"analogMinimal"_s, u"Analog Minimal"_s, u"Clocks"_s, u"clock.fill"_s, u"clock"_s, {}, 80},
      {u"analyticsGitHub"_s, u"GitHub"_s, u"Analytics"_s, u"chart.line.uptrend.xyaxis"_s, u"integration"_s,
       u"BrandGitHub"_s, 160},
      {u"dayNumber"_s, u"Day Number"_s, u"Clocks"_s, u"clock.fill"_s, u"clock"_s, {}, 70},
      {u"todayClock"_s, u"Today"_s, u"Clocks"_s, u"clock"_s, u"clock"_s, {}, 190},
      {u"calendar"_s, u"Today"_s, u"Calendar"_s, u"calendar"_s, u"calendar"_s, {}, 180},
      {u"todayOverview"_s, u"Today Overview"_s, u"Calendar"_s, u"calendar"_s, u"calendar"_s, {}, 220},
      {u"posture"_s, u"Posture Reminder"_s, u"Clocks"_s, u"figure.seated.side"_s, u"timer"_s, {}, 130},
      {u"cpu"_s, u"CPU"_s, u"System"_s, u"cpu"_s, u"metric"_s, {}, 70},
      {u"systemChart"_s, u"CPU + RAM Chart"_s, u"System"_s, u"chart.xyaxis.line"_s, u"metric"_s, {}, 160},
      {u"battery"_s, u"Battery"_s, u"System"_s, u"battery.100"_s, u"metric"_s, {}, 76},
      {u"topApps"_s, u"App Switcher"_s, u"Apps & Files"_s, u"macwindow.on.rectangle"_s, u"windows"_s, {}, 100},
      {u"appSwitcher"_s, u"App Switcher"_s, u"System"_s, u"macwindow.on.rectangle"_s, u"windows"_s, {}, 100},
      {u"processTopApps"_s, u"Top Apps"_s, u"System"_s, u"list.number"_s, u"processes"_s, {}, 180},
      {u"temperatureChart"_s, u"Temperature Chart"_s, u"System"_s, u"thermometer.medium"_s, u"temperature"_s, {}, 160},
      {u"nowPlayingTimeline"_s, u"Now Playing Bar"_s, u"Media"_s, u"music.note"_s, u"music"_s, {}, 280},
      {u"backgroundSound"_s, u"Background Sounds"_s, u"Media"_s, u"waveform"_s, u"sounds"_s, {}, 180},
      {u"weatherCurrent"_s, u"Location"_s, u"Weather"_s, u"cloud.sun.fill"_s, u"weather"_s, {}, 92},
      {u"airdrop"_s, u"AirDrop"_s, u"System"_s, u"airplayaudio"_s, u"airdrop"_s, u"BrandAirDrop"_s, 76},
      {u"mailLatest"_s, u"Latest Mail"_s, u"Mail"_s, u"envelope.fill"_s, u"mail"_s, {}, 160},
      {u"gmailLatest"_s, u"Latest Gmail"_s, u"Mail"_s, u"chart.line.uptrend.xyaxis"_s, u"integration"_s,
       u"BrandGmail"_s, 160},
      {u"youtubeStudio"_s, u"YouTube Studio"_s, u"Social"_s, u"chart.line.uptrend.xyaxis"_s, u"studio"_s,
       u"SocialBrandYouTube"_s, 160},
      {u"analyticsDubOverview"_s, u"Dub Analytics"_s, u"Analytics"_s, u"chart.line.uptrend.xyaxis"_s, u"integration"_s,
       u"BrandDub"_s, 220},
      {u"revenueStripe"_s, u"Stripe"_s, u"Finance"_s, u"chart.line.uptrend.xyaxis"_s, u"integration"_s,
       u"BrandStripe"_s, 148},
      {u"codexUsage"_s, u"Codex Usage"_s, u"AI"_s, u"sparkles"_s, u"integration"_s, u"BrandCodex"_s, 160},
      {u"codexUsageGauge"_s, u"Codex Usage Gauge"_s, u"AI"_s, u"chart.line.uptrend.xyaxis"_s, u"integration"_s,
       u"BrandCodex"_s, 120},
      {u"dockSeparator"_s, u"Separator"_s, u"System"_s, u"line.3.horizontal"_s, u"separator"_s, {}, 8},
  };
  for (const Case& expected : cases) {
    SCOPED_TRACE(expected.kind.toStdString());
    const WidgetDefinition& found = Catalog::find(expected.kind);
    EXPECT_EQ(found.name, expected.name);
    EXPECT_EQ(found.category, expected.category);
    EXPECT_EQ(found.symbol, expected.symbol);
    EXPECT_EQ(found.family, expected.family);
    EXPECT_EQ(found.asset, expected.asset);
    EXPECT_EQ(found.width, expected.width);
  }
}

TEST(Catalog, ReferenceWidthGoesByTheNameAlone) {
  EXPECT_EQ(Catalog::referenceWidth(u"analogOfTomorrow", 1), 80);
  EXPECT_EQ(Catalog::referenceWidth(u"someOverview", 1), 220);
  EXPECT_EQ(Catalog::referenceWidth(u"OverviewOf", 33), 33);
  EXPECT_EQ(Catalog::referenceWidth(u"Analog", 33), 33);
  EXPECT_EQ(Catalog::referenceWidth(u"", 33), 33);
}

TEST(Catalog, UnknownKindsAreGenericAndKeepTheirAddressOnEveryThread) {
  const WidgetDefinition generic{
      u"teleporterOverview"_s, u"teleporterOverview"_s, u"Other"_s, u"square"_s, u"integration"_s, QString(), 140};
  std::vector<const WidgetDefinition*> seen(8);
  std::vector<std::thread> threads;
  for (auto& slot : seen) {
    threads.emplace_back([&slot] {
      slot = &Catalog::find(u"teleporterOverview"_s);
      for (int i = 0; i < 200; ++i) Catalog::find(QString::number(i));
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(*seen.front(), generic);
  EXPECT_EQ(std::count(seen.cbegin(), seen.cend(), seen.front()), 8);
  EXPECT_FALSE(Catalog::contains(u"teleporterOverview"_s));
  EXPECT_EQ(Catalog::items().size(), 163);
}

TEST(Catalog, ConnectedFamilies) {
  EXPECT_TRUE(isConnectedFamily(Catalog::find(u"homeAssistant"_s).family));
  EXPECT_TRUE(isConnectedFamily(Catalog::find(u"xStudio"_s).family));
  EXPECT_FALSE(isConnectedFamily(Catalog::find(u"weatherWind"_s).family));
  EXPECT_FALSE(isConnectedFamily(Catalog::find(u"mailLatest"_s).family));
}

}  // namespace
}  // namespace tarnwick
