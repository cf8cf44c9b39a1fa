#include "dock/rules/DockVisibility.h"

#include <gtest/gtest.h>

#include "dock/rules/DesktopMath.h"
#include "dock/rules/DockToggle.h"

namespace tarnwick {
namespace {

using enum DockLayout;
using Around = DockVisibility::Surroundings;

constexpr double kShow = 0.12, kHide = 0.65;

Around around(DockLayout layout, bool atEdge = false, bool interacting = false, bool covered = false) {
  return {layout, covered, atEdge, interacting, kShow, kHide};
}

TEST(DockVisibility, FollowsTheTable) {
  struct Case {
    const char* name;
    Around around;
    DockVisibility old, expected;
    bool timer;
  };
  constexpr double now = 100;
  const DockVisibility hidden;
  const DockVisibility used{true, {}, 99.5};
  const DockVisibility odd{true, 98.0, 99.0};
  std::vector<Case> cases = {
      {"swap, away", around(Swap), {false, 98.0, 99.0}, {true, 98.0, 99.0}, false},
      {"swap, at the edge", around(Swap, true, true), odd, {false, 98.0, 99.0}, false},
  };
  for (const DockLayout layout : kDockLayouts) {
    cases.push_back({"covered", around(layout, true, true, true), odd, hidden, false});
  }
  const auto called = &DockVisibility::calledAt;
  cases.push_back({"called, and the layout changed", around(Swap), called(50), {true, {}, 50.0}, false});
  for (const DockLayout layout : {Fixed, Replace, Floating}) {
    cases.push_back({"always there", around(layout), {false, 98.0, 99.0}, odd, false});
    cases.push_back({"always there, at the edge", around(layout, true), {false, {}, {}}, {true, {}, {}}, false});
  }
  for (const DockLayout layout : {RevealBottom, RevealTop, ReplaceAutoHide}) {
    const Around away = around(layout), use = around(layout, false, true);
    const Around edge = around(layout, true), edgeUse = around(layout, true, true);
    const std::vector<Case> family = {
        {"reaches the edge", edge, hidden, {false, now, {}}, true},
        {"waits at the edge", edge, {false, 99.9, 50.0}, {false, 99.9, 50.0}, true},
        {"waits at the edge, over the dock's place", edgeUse, {false, 99.9, {}}, {false, 99.9, {}}, true},
        {"waited long enough", edge, {false, now - kShow, {}}, {true, now - kShow, now}, false},
        {"stays at the edge", edge, {true, 90.0, 99.0}, {true, 90.0, now}, false},
        {"comes back to the edge", edge, used, {true, now, 99.5}, false},
        {"comes back to the edge over the dock", edgeUse, used, {true, now, now}, false},
        {"stays away", away, {false, {}, 50.0}, {false, {}, 50.0}, false},
        {"leaves the edge too early", away, {false, 99.9, {}}, hidden, false},
        {"hidden, over its place", use, hidden, hidden, false},
        {"in use", use, {true, 99.0, 50.0}, {true, {}, now}, false},
        {"left a moment ago", away, {true, 99.0, 99.5}, {true, {}, 99.5}, true},
        {"left long enough ago", away, {true, {}, now - kHide}, {false, {}, now - kHide}, false},
        {"never in use", away, {true, {}, {}}, hidden, false},
        {"called, away", away, called(50), called(50), false},
        {"called, and the pointer passes the edge", edge, called(50), {true, now, 50, false, true}, false},
        {"called, and the pointer rests at the edge", edge, {true, 99.0, 50, false, true}, {true, 99.0, now}, false},
        {"called, and used", use, called(50), {true, {}, now}, false},
        {"called, and a film begins", around(layout, false, false, true), called(50), hidden, false},
    };
    cases.insert(cases.end(), family.begin(), family.end());
  }
  // Halves and whole numbers meet to the exact moment, which tenths do not.
  Around half = around(RevealBottom);
  half.hideDelay = 0.5;
  cases.push_back({"the delay is over", half, {true, {}, now - 0.5}, {false, {}, now - 0.5}, false});
  cases.push_back({"the delay is nearly over", half, {true, {}, now - 0.4375}, {true, {}, now - 0.4375}, true});
  for (const DockLayout layout : {RevealBottom, RevealTop, ReplaceAutoHide}) {
    const auto free = [layout](bool atEdge = false, bool interacting = false, bool covered = false) {
      Around around = tarnwick::around(layout, atEdge, interacting, covered);
      around.free = true;
      return around;
    };
    const DockVisibility out{true, {}, {}, true};
    const Around away = around(layout), use = around(layout, false, true);
    const std::vector<Case> family = {
        {"no window in the way", free(), hidden, out, false},
        {"no window in the way any more", free(), odd, out, false},
        {"no window in the way of one that was called", free(), DockVisibility::calledAt(50), out, false},
        {"no window in the way, at the edge", free(true, true), out, out, false},
        {"no window but a film in the way", free(true, true, true), out, hidden, false},
        {"a window came", away, out, hidden, false},
        {"a window came over a dock in use", use, out, {true, {}, now}, false},
        {"a window came while at the edge", around(layout, true), out, {false, now, {}}, true},
        {"a window came while in use at the edge", around(layout, true, true), out, {true, now, now}, false},
    };
    cases.insert(cases.end(), family.begin(), family.end());
  }
  for (const Case& c : cases) {
    const DockVisibility state = DockVisibility::next(c.old, c.around, now);
    EXPECT_EQ(state, c.expected) << c.name << ", layout " << static_cast<int>(c.around.layout);
    EXPECT_EQ(state.needsTimer(c.around), c.timer) << c.name << ", layout " << static_cast<int>(c.around.layout);
    EXPECT_EQ(DockVisibility::next(state, c.around, now), state) << "asked twice: " << c.name;
  }
}

TEST(DockToggle, HidesWhatIsSeenAndShowsWhatIsNot) {
  using enum DockToggle::Step;
  using Dock = DockToggle::Dock;
  const Dock seen{true, false}, unseen{false, false}, covered{false, true};
  const auto reveals = {RevealBottom, RevealTop, ReplaceAutoHide};
  const auto others = {Swap, Fixed, Replace, Floating};
  const struct {
    const char* name;
    bool byHand;
    std::initializer_list<DockLayout> layouts;
    QList<Dock> docks;
    DockToggle::Step next;
  } cases[] = {
      {"seen", false, reveals, {seen}, Hide},
      {"hidden by its layout", false, reveals, {unseen}, Show},
      {"seen on one display", false, reveals, {unseen, seen}, Hide},
      {"under a film", false, reveals, {covered}, Hide},
      {"under a film on one display", false, reveals, {covered, unseen}, Show},
      {"before there is one", false, reveals, {}, Hide},
      {"hidden by hand", true, reveals, {unseen}, Show},
      {"hidden by hand while it was out", true, reveals, {seen}, Show},
      {"always there", false, others, {seen}, Hide},
      {"gave way", false, others, {unseen}, Hide},
      {"hidden by hand, else always there", true, others, {seen}, Show},
  };
  for (const auto& each : cases)
    for (const DockLayout layout : each.layouts)
      EXPECT_EQ(DockToggle::next(each.byHand, layout, each.docks), each.next)
          << each.name << ", layout " << static_cast<int>(layout);
}

TEST(DockVisibility, CountsTheWholeDelayAgainAfterLeavingTheEdge) {
  DockVisibility state;
  const auto at = [&state](double now, bool edge) {
    state = DockVisibility::next(state, around(RevealBottom, edge), now);
    return state.visible;
  };
  EXPECT_FALSE(at(10.00, true));
  EXPECT_FALSE(at(10.10, false));
  EXPECT_FALSE(at(10.11, true));
  EXPECT_FALSE(at(10.20, true));
  EXPECT_TRUE(at(10.24, true));
  EXPECT_TRUE(at(10.80, false));
  EXPECT_FALSE(at(10.90, false));

  Around atOnce = around(RevealTop, true);
  atOnce.showDelay = 0;
  EXPECT_TRUE(DockVisibility::next({}, atOnce, 0).visible);
}

TEST(DockVisibility, KnowsTheEdgesOfTheLayouts) {
  const PointerZones bottom{false, true, false}, top{false, false, true};
  for (const DockLayout layout : kDockLayouts) {
    EXPECT_EQ(DockVisibility::atEdge(layout, top), layout == RevealTop);
    EXPECT_EQ(DockVisibility::atEdge(layout, bottom), layout != RevealTop);
    const bool stays = layout == Fixed || layout == Replace || layout == Floating;
    EXPECT_EQ(DockVisibility::hides(layout), !stays);
  }
}

TEST(FullScreenFrames, CoverAScreenUpToThreePixels) {
  const QRectF screen(1920, 0, 1280, 1024);
  const auto shrunk = [&screen](double by) { return screen.adjusted(by, by, -by, -by); };
  EXPECT_TRUE(DesktopMath::covers(screen, screen));
  EXPECT_TRUE(DesktopMath::covers(shrunk(3), screen));
  EXPECT_FALSE(DesktopMath::covers(shrunk(4), screen));
  EXPECT_FALSE(DesktopMath::covers(screen.adjusted(0, 0, 0, -4), screen)) << "one side is enough";
  EXPECT_TRUE(DesktopMath::covers(QRectF(0, 0, 3200, 1080), screen)) << "spread over both screens";
  EXPECT_FALSE(DesktopMath::covers(QRectF(0, 0, 1920, 1080), screen)) << "on the other screen";
  EXPECT_FALSE(DesktopMath::covers(QRectF(), screen));
}

}  // namespace
}  // namespace tarnwick
