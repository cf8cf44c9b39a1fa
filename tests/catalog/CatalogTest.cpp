#include "widgets/catalog/Catalog.h"

#include <gtest/gtest.h>

#include <QHash>
#include <algorithm>
#include <thread>
#include <vector>

#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(Catalog, HoldsEveryKindOnceWithEverythingThatATileNeeds) {
  QSet<QString> kinds;
  int connected = 0;
  int withAsset = 0;
  for (const WidgetDefinition& item : Catalog::items()) {
    SCOPED_TRACE(item.id.toStdString());
    kinds.insert(item.id);
    connected += isConnectedFamily(item.family) ? 1 : 0;
    withAsset += item.asset.isEmpty() ? 0 : 1;
    EXPECT_FALSE(item.name.isEmpty() || item.category.isEmpty() || item.symbol.isEmpty() || item.family.isEmpty());
    EXPECT_TRUE(item.width > 0 && item.width <= 280);
    EXPECT_EQ(&Catalog::find(item.id), &item);
  }
  EXPECT_EQ(Catalog::items().size(), 163);
  EXPECT_EQ(kinds.size(), 163);
  EXPECT_EQ(connected, 56);
  EXPECT_EQ(withAsset, 48);
}

TEST(Catalog, NoTwoServicesShareABadge) {
  QHash<QString, ServiceBadge> badges;  // By service.
  QHash<QString, QString> letters;
  QHash<int, QString> colors;
  for (const WidgetDefinition& item : Catalog::items()) {
    if (!isConnectedFamily(item.family)) continue;
    SCOPED_TRACE(item.id.toStdString());
    const QString service = item.asset.isEmpty() ? item.name.section(u' ', 0, 0) : item.asset;
    const ServiceBadge badge = serviceBadge(item);
    EXPECT_EQ(badges.value(service, badge), badge) << "all tiles of a service have one";
    EXPECT_EQ(letters.value(badge.letters, service), service);
    EXPECT_EQ(colors.value(badge.color, service), service);
    badges.insert(service, badge);
    letters.insert(badge.letters, service);
    colors.insert(badge.color, service);
    EXPECT_TRUE(badge.letters.size() == 1 || badge.letters.size() == 2);
    for (const QChar letter : badge.letters) EXPECT_TRUE(letter >= u'A' && letter <= u'Z');
  }
  EXPECT_EQ(badges.size(), 34);
  for (auto one = badges.cbegin(); one != badges.cend(); ++one) {
    const auto sharesInitial = [&](const ServiceBadge& other) { return other.letters[0] == one->letters[0]; };
    EXPECT_EQ(one->letters.size(), std::ranges::count_if(badges, sharesInitial) > 1 ? 2 : 1) << qPrintable(one.key());
  }
}

TEST(Catalog, SectionsOfferEveryKindOnce) {
  QStringList offered{u"applications"_s, u"trash"_s, u"appLauncher"_s, u"folderLauncher"_s};
  QStringList names{u"All Widgets"_s, u"Apps"_s, u"Folders"_s};
  for (const WidgetGroup& group : Catalog::groups()) {
    names.append(group.name);
    offered.append(group.kinds);
    for (const QString& kind : group.kinds) EXPECT_EQ(Catalog::find(kind).category, group.name) << kind.toStdString();
  }
  EXPECT_EQ(Catalog::categories(), names << u"More"_s);
  for (const WidgetDefinition& item : Catalog::items())
    EXPECT_TRUE(Catalog::categories().mid(1).contains(Catalog::sectionOf(item))) << item.id.toStdString();
  const auto section = [](const QString& kind) { return Catalog::sectionOf(Catalog::find(kind)); };
  EXPECT_EQ(section(u"applications"_s), u"Apps"_s);
  EXPECT_EQ(section(u"folderLauncher"_s), u"Folders"_s);
  EXPECT_EQ(section(u"scratchNote"_s), u"More"_s);
  EXPECT_EQ(section(u"cpu"_s), u"System"_s);
  EXPECT_EQ(section(u"of tomorrow"_s), Catalog::find(u"of tomorrow"_s).category) << "the library has no such kind";
  EXPECT_EQ(names.size(), 3 + 18 + 1);
  EXPECT_EQ(Catalog::referenceKinds(), QSet<QString>(offered.cbegin() + 4, offered.cend()));
  EXPECT_EQ(Catalog::referenceKinds().size(), 142);

  QStringList extra;
  for (const WidgetDefinition& item : Catalog::extraItems()) extra.append(item.id);
  EXPECT_EQ(extra.size(), 17);
  EXPECT_TRUE(extra.contains(u"topApps"_s) && extra.contains(u"scratchNote"_s));
  offered.append(extra);
  EXPECT_EQ(offered.removeDuplicates(), 0);
  EXPECT_EQ(offered.size(), 163);
}

TEST(Catalog, DefinitionsWhereARuleChangesThePlainRow) {
  const struct {
    const char* kind;
    const char* name;
    const char* category;
    const char* symbol;
    const char* family;
    const char* asset;
    double width;
  } cases[] = {
      // clang-format off
      {"digitalClock", "Time & Date", "Clocks", "clock.fill", "clock", "", 150},
      {"dayNumber", "Day Number", "Clocks", "clock.fill", "clock", "", 70},
      {"todayOverview", "Today Overview", "Calendar", "calendar", "calendar", "", 220},
      {"cpu", "CPU", "System", "cpu", "metric", "", 70},
      {"topApps", "App Switcher", "Apps & Files", "macwindow.on.rectangle", "windows", "", 100},
      {"appSwitcher", "App Switcher", "System", "macwindow.on.rectangle", "windows", "", 100},
      {"processTopApps", "Top Apps", "System", "list.number", "processes", "", 180},
      {"temperatureChart", "Temperature Chart", "System", "thermometer.medium", "temperature", "", 160},
      {"nowPlayingTimeline", "Now Playing Bar", "Media", "music.note", "music", "", 280},
      {"weatherCurrent", "Location", "Weather", "cloud.sun.fill", "weather", "", 92},
      {"gmailLatest", "Latest Gmail", "Mail", "chart.line.uptrend.xyaxis", "integration", "BrandGmail", 160},
      {"youtubeStudio", "YouTube Studio", "Social", "chart.line.uptrend.xyaxis", "studio", "SocialBrandYouTube", 160},
      {"analyticsDubOverview", "Dub Analytics", "Analytics", "chart.line.uptrend.xyaxis", "integration", "BrandDub", 220},
      {"revenueStripe", "Stripe", "Finance", "chart.line.uptrend.xyaxis", "integration", "BrandStripe", 148},
      {"codexUsage", "Codex Usage", "AI", "sparkles", "integration", "BrandCodex", 160},
      {"codexUsageGauge", "Codex Usage Gauge", "AI", "chart.line.uptrend.xyaxis", "integration", "BrandCodex", 120},
      // clang-format on
  };
  const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
  for (const auto& c : cases) {
    EXPECT_EQ(Catalog::find(text(c.kind)), (WidgetDefinition{text(c.kind), text(c.name), text(c.category),
                                                             text(c.symbol), text(c.family), text(c.asset), c.width}))
        << c.kind;
  }
  // Widths go by the name alone.
  EXPECT_EQ(Catalog::referenceWidth(u"analogOfTomorrow", 1), 80);
  EXPECT_EQ(Catalog::referenceWidth(u"someOverview", 1), 220);
  for (const auto kind : {u"OverviewOf", u"Analog", u""}) EXPECT_EQ(Catalog::referenceWidth(kind, 33), 33);
}

TEST(Catalog, EveryFamilyIsThatOfSomeKindUnderATextOfItsOwn) {
  QStringList texts;
  for (int i = 0; i <= static_cast<int>(Family::Studio); ++i) texts.append(familyText(static_cast<Family>(i)));
  QSet<QString> used;
  for (const WidgetDefinition& item : Catalog::items()) used.insert(item.family);
  EXPECT_EQ(QSet<QString>(texts.cbegin(), texts.cend()), used);
  EXPECT_EQ(texts.size(), used.size());
  EXPECT_TRUE(Catalog::find(u"stopwatch"_s).family == Family::Timer);
  EXPECT_TRUE(Catalog::find(u"xStudio"_s).family != Family::Integration);
}

TEST(Catalog, TraitsSetAFewKindsApart) {
  const auto withTrait = [](auto has) {
    QSet<QString> kinds;
    for (const WidgetDefinition& item : Catalog::items())
      if (has(KindTraits::of(item.id))) kinds.insert(item.id);
    return kinds;
  };
  using Kinds = QSet<QString>;
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.isGap; }),
            (Kinds{u"dockSeparator"_s, u"dockSpace"_s}));
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.isFolder; }), Kinds{u"folderLauncher"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.launches(); }), Kinds{u"appLauncher"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.opens == TileOpens::Folder; }),
            (Kinds{u"folderLauncher"_s, u"downloads"_s}));
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.opens == TileOpens::Trash; }), Kinds{u"trash"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.needsRunningApps; }),
            (Kinds{u"topApps"_s, u"appSwitcher"_s, u"pinnedWindow"_s, u"openWindows"_s, u"appLauncher"_s}));
  const auto taking = [&](TileTakes takes) {
    return withTrait([takes](const KindTraits& traits) { return traits.takes == takes; });
  };
  EXPECT_EQ(taking(TileTakes::Folder),
            (Kinds{u"folderLauncher"_s, u"downloads"_s, u"recentFiles"_s, u"screenshots"_s}));
  EXPECT_EQ(taking(TileTakes::Trash), Kinds{u"trash"_s});
  EXPECT_EQ(taking(TileTakes::Shelf), Kinds{u"fileShelf"_s});
  EXPECT_EQ(taking(TileTakes::Share), Kinds{u"airdrop"_s});
  EXPECT_EQ(taking(TileTakes::Application), Kinds{u"appLauncher"_s});
  const auto running = [&](TimerRun run) {
    return withTrait([run](const KindTraits& traits) { return traits.run == run; });
  };
  EXPECT_EQ(running(TimerRun::Pomodoro), Kinds{u"pomodoro"_s});
  EXPECT_EQ(running(TimerRun::Posture), Kinds{u"posture"_s});
  EXPECT_EQ(running(TimerRun::Stopwatch), Kinds{u"stopwatch"_s});
  EXPECT_EQ(running(TimerRun::Exercise), Kinds{u"exercise"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.isLine; }), Kinds{u"dockSeparator"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.isPinnedWindow; }), Kinds{u"pinnedWindow"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.anchorsRunningApps; }), Kinds{u"applications"_s});
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.readsCodex; }),
            (Kinds{u"codexUsage"_s, u"codexUsageGauge"_s}));
  EXPECT_EQ(withTrait([](const KindTraits& traits) { return traits.showsCityWeather; }),
            (Kinds{u"todayOverview"_s, u"todayClock"_s}));
  const KindTraits& unknown = KindTraits::of(u"teleporter"_s);
  EXPECT_EQ(unknown.opens, TileOpens::Panel);
  EXPECT_EQ(unknown.takes, TileTakes::None);
}

TEST(Catalog, ListsNameNothingTwiceAndNothingThatIsNotThere) {
  for (const auto kinds :
       {Catalog::starterKinds(), Catalog::suggestedKinds(), Catalog::readyApps(), Catalog::picturedKinds()}) {
    QStringList named(kinds.begin(), kinds.end());
    EXPECT_FALSE(named.isEmpty());
    for (const QString& kind : named) EXPECT_TRUE(Catalog::contains(kind)) << kind.toStdString();
    EXPECT_EQ(named.removeDuplicates(), 0);
  }
}

TEST(Catalog, WhatStandsReadyIsEitherListedOrStandsForAPath) {
  QSet<QString> ready;
  for (const WidgetDefinition& kind : Catalog::items())
    if (KindTraits::of(kind.id).readyMade != ReadyMade::None) ready.insert(kind.id);
  QSet<QString> offered{Catalog::launcherKind(), Catalog::folderKind()};
  for (const QLatin1StringView kind : Catalog::readyApps()) offered.insert(kind);
  EXPECT_EQ(ready, offered);
  EXPECT_EQ(KindTraits::of(Catalog::launcherKind()).opens, TileOpens::Application);
  EXPECT_EQ(KindTraits::of(Catalog::folderKind()).opens, TileOpens::Folder);
}

TEST(Catalog, UnknownKindsAreGenericAndKeepTheirAddressOnEveryThread) {
  const auto kind = u"teleporterOverview"_s;
  std::vector<const WidgetDefinition*> seen(8);
  std::vector<std::thread> threads;
  for (auto& slot : seen) {
    threads.emplace_back([&] {
      slot = &Catalog::find(kind);
      for (int i = 0; i < 200; ++i) Catalog::find(QString::number(i));
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(*seen.front(), (WidgetDefinition{kind, kind, u"Other"_s, u"square"_s, u"integration"_s, {}, 140}));
  EXPECT_EQ(std::count(seen.cbegin(), seen.cend(), seen.front()), 8);
  EXPECT_FALSE(Catalog::contains(kind));
}

}  // namespace
}  // namespace tarnwick
