#include <gtest/gtest.h>

#include "dock/rules/DesktopMath.h"
#include "dock/rules/DockPlacement.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QRectF kFrame(0, 0, 1920, 1080);
const QRectF kUsable(0, 30, 1920, 1000);  // A bar above and one below.

TEST(SelectedDisplays, FollowTheChoice) {
  struct Case {
    const char* name;
    QString choice;
    QStringList connected, attached;
    QString fallback;
    QStringList expected;
  };
  const Case cases[] = {
      {"all", u"all"_s, {u"A"_s, u"B"_s}, {}, u"A"_s, {u"A"_s, u"B"_s}},
      {"first remembered one that is there",
       u"attached"_s,
       {u"A"_s, u"B"_s},
       {u"C"_s, u"B"_s, u"A"_s},
       u"A"_s,
       {u"B"_s}},
      {"nothing remembered is there", u"attached"_s, {u"A"_s}, {u"C"_s}, u"A"_s, {}},
      {"main", u"main"_s, {u"A"_s, u"B"_s}, {}, u"B"_s, {u"B"_s}},
      {"a named one", u"B"_s, {u"A"_s, u"B"_s}, {}, u"A"_s, {u"B"_s}},
      {"a named one that is gone", u"C"_s, {u"A"_s, u"B"_s}, {}, u"B"_s, {u"B"_s}},
      {"no main display", u"C"_s, {u"A"_s, u"B"_s}, {}, {}, {u"A"_s}},
      {"nothing connected", u"main"_s, {}, {}, u"A"_s, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DesktopMath::selectedDisplays(c.choice, c.connected, c.attached, c.fallback), c.expected) << c.name;
  }
}

TEST(DockSize, FollowsTheRow) {
  DockConfiguration config;
  const auto row = DockPlacement::row(config.profiles.first().widgets, 0);
  EXPECT_EQ(row.widgets, 7);
  EXPECT_DOUBLE_EQ(row.tileWidths, 68 + 150 + 80 + 92 + 70 + 70 + 170);
  EXPECT_EQ(DockPlacement::size(config, row, 1920).panel, QSizeF(700 + 7 * 7 + 48, 84));

  // Running applications take 52 each and a separator of 12, but only while they are shown.
  const DockPlacement::Row withApps{700, 7, 3};
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, withApps, 1920).panel.width(), 797);
  config.liveApps = true;
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, withApps, 1920).panel.width(), 797 + 3 * 52 + 12);
  config.desktop.runningAppsPlacement = u"none"_s;
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, withApps, 1920).panel.width(), 797);

  // A second profile needs space for its tabs.
  config.profiles.append(DockProfile::initial());
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, row, 1920).panel.height(), 110);
}

TEST(DockSize, ScrollsOrFitsWhenTheScreenIsNarrow) {
  DockConfiguration config;
  const DockPlacement::Row wide{2000 - 48 - 7 * 10, 10, 0};
  EXPECT_EQ(DockPlacement::size(config, wide, 1024).panel, QSizeF(1000, 84));

  config.overflow = u"fit"_s;
  const auto fitted = DockPlacement::size(config, wide, 1024);
  EXPECT_DOUBLE_EQ(fitted.scale, 1000.0 / 2000.0);
  EXPECT_EQ(fitted.panel, QSizeF(1000, 42));
  // Below the least scale there is it scrolls after all.
  const auto crowded = DockPlacement::size(config, {9000, 10, 0}, 1024);
  EXPECT_DOUBLE_EQ(crowded.scale, 0.5);
  EXPECT_DOUBLE_EQ(crowded.panel.width(), 1000);

  config.overflow = u"scroll"_s;
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, {0, 0, 0}, 1024).panel.width(), 110);
  // Tabs that are wider than the row get their width, but never more than the screen has.
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, {0, 0, 0}, 1024, 100).panel.width(), 110);
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, {0, 0, 0}, 1024, 300).panel.width(), 300);
  EXPECT_DOUBLE_EQ(DockPlacement::size(config, {0, 0, 0}, 1024, 3000).panel.width(), 1000);
}

TEST(DockPlace, IsTheLayoutsEdge) {
  struct Case {
    const char* name;
    DockLayout layout;
    QString position, alignment;
    std::optional<QPointF> floating;
    QPointF expected;
  };
  const QSizeF panel(800, 84);
  const Case cases[] = {
      {"fixed, bottom", DockLayout::Fixed, u"bottom"_s, u"center"_s, {}, {560, 938}},
      {"fixed, top", DockLayout::Fixed, u"top"_s, u"left"_s, {}, {8, 38}},
      {"only fixed asks for the position", DockLayout::RevealBottom, u"top"_s, u"right"_s, {}, {1112, 938}},
      {"revealTop", DockLayout::RevealTop, u"bottom"_s, u"center"_s, {}, {560, 38}},
      {"replace owns the edge", DockLayout::Replace, u"top"_s, u"center"_s, {}, {560, 988}},
      {"swap owns the edge", DockLayout::Swap, u"bottom"_s, u"center"_s, {}, {560, 988}},
      {"floating without a saved place", DockLayout::Floating, u"top"_s, u"center"_s, {}, {560, 938}},
      {"floating", DockLayout::Floating, u"bottom"_s, u"center"_s, QPointF(100, 200), {100, 200}},
      {"floating, saved off the screen", DockLayout::Floating, u"bottom"_s, u"left"_s, QPointF(5000, -50), {1120, 30}},
  };
  for (const Case& c : cases) {
    DockConfiguration config;
    config.layout = c.layout;
    config.position = c.position;
    config.alignment = c.alignment;
    EXPECT_EQ(DockPlacement::place(config, panel, kFrame, kUsable, c.floating), QRectF(c.expected, panel)) << c.name;
  }
}

TEST(DockPlace, TheGapIsThatOfTheGlassAndAFloatingOneStandsFlush) {
  const struct {
    DockLayout layout;
    QString alignment;
    std::optional<QPointF> floating;
    double left;
  } cases[] = {
      {DockLayout::Fixed, u"left"_s, {}, 8 - 18},
      {DockLayout::Fixed, u"right"_s, {}, 1920 - 800 - 8 + 17},
      {DockLayout::Fixed, u"center"_s, {}, 560},
      {DockLayout::Floating, u"center"_s, QPointF(-500, 200), -18},
      {DockLayout::Floating, u"center"_s, QPointF(-5, 200), -5},
      {DockLayout::Floating, u"center"_s, QPointF(5000, 200), 1920 - 800 + 17},
  };
  for (const auto& each : cases) {
    DockConfiguration config;
    config.layout = each.layout;
    config.alignment = each.alignment;
    EXPECT_EQ(DockPlacement::place(config, {800, 84}, kFrame, kUsable, each.floating, {18, 0, 17, 0}).left(), each.left)
        << qPrintable(each.alignment) << each.left;
  }
}

TEST(DockPlace, FloatingPlacesAreWithinTheirScreen) {
  DockConfiguration config;
  config.layout = DockLayout::Floating;
  const QRectF second(1920, 100, 1280, 1024);
  EXPECT_EQ(DockPlacement::place(config, {800, 84}, second, second, QPointF(10, 20)).topLeft(), QPointF(1930, 120));
}

}  // namespace
}  // namespace tarnwick
