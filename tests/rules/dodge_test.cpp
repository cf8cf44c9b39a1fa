#include "dock/rules/DockDodge.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Mode = DockDodge::Mode;

constexpr QRectF kScreen{0, 0, 1000, 800};
constexpr QRectF kGlass{300, 708, 400, 84};

TEST(DockDodge, MakesRoomForTheWindowsThatItsModeMeans) {
  ClientWindow plain;
  plain.frame = {320, 400, 300, 380};
  const auto with = [&plain](auto change) {
    ClientWindow window = plain;
    change(window);
    return window;
  };
  using W = ClientWindow;
  const struct {
    const char* name;
    ClientWindow window;
    bool any, active, maximised;
  } cases[] = {
      {"one behind", plain, true, false, false},
      {"the active one", with([](W& w) { w.active = true; }), true, true, false},
      {"a maximised one", with([](W& w) { w.maximised = true; }), true, false, true},
      {"a film that docks stay above", with([](W& w) { w.fullscreen = true; }), true, false, true},
      {"minimised", with([](W& w) { w.active = w.maximised = w.minimised = true; }), false, false, false},
      {"on another workspace", with([](W& w) { w.active = w.maximised = w.elsewhere = true; }), false, false, false},
      {"a bar", with([](W& w) { w.active = w.maximised = w.dock = true; }), false, false, false},
      {"the desktop itself", with([](W& w) {
         w.active = w.maximised = w.desktop = true;
         w.inTaskbar = false;
       }),
       false, false, false},
      {"a palette or a film that no taskbar lists", with([](W& w) { w.inTaskbar = false; }), true, false, false},
      {"a palette that is used", with([](W& w) {
         w.active = true;
         w.inTaskbar = false;
       }),
       true, true, false},
      {"nowhere", with([](W& w) { w.frame = {}; }), false, false, false},
  };
  for (const auto& each : cases) {
    const auto covers = [&each](Mode mode) { return DockDodge::covers(mode, {each.window}, kGlass, kScreen); };
    EXPECT_EQ(covers(Mode::Any), each.any) << each.name;
    EXPECT_EQ(covers(Mode::Active), each.active) << each.name;
    EXPECT_EQ(covers(Mode::Maximised), each.maximised) << each.name;
    EXPECT_FALSE(covers(Mode::Off)) << each.name;
  }
}

TEST(DockDodge, KeepsRoomAroundTheGlassWithinItsScreen) {
  const struct {
    const char* name;
    QRectF frame;
    bool covers;
  } cases[] = {
      {"far above", {300, 0, 400, 500}, false},
      {"just above", {300, 0, 400, 698}, false},
      {"a little nearer", {300, 0, 400, 699}, true},
      {"on its left", {0, 700, 290, 100}, false},
      {"nearer on its left", {0, 700, 291, 100}, true},
      {"over all of it", {0, 0, 1000, 800}, true},
      {"on the screen below", {0, 800, 1000, 800}, false},
      {"across both screens", {300, 790, 400, 400}, true},
  };
  for (const auto& each : cases) {
    ClientWindow far, window;
    far.frame = {0, 0, 10, 10};
    window.frame = each.frame;
    EXPECT_EQ(DockDodge::covers(Mode::Any, {far, window}, kGlass, kScreen), each.covers) << each.name;
  }
  EXPECT_FALSE(DockDodge::covers(Mode::Any, {}, kGlass, kScreen));
}

TEST(DockDodge, AWordThatIsNotKnownSwitchesItOff) {
  EXPECT_EQ(DockDodge::named(u"any"_s), Mode::Any);
  EXPECT_EQ(DockDodge::named(u"active"_s), Mode::Active);
  EXPECT_EQ(DockDodge::named(u"maximised"_s), Mode::Maximised);
  for (const QString& word : {u"off"_s, u"Any"_s, u""_s}) EXPECT_EQ(DockDodge::named(word), Mode::Off);
}

}  // namespace
}  // namespace tarnwick
