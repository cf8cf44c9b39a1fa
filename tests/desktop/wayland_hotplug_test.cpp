// The dock on displays that come and go, which is possible on a compositor within another only.
#include <gtest/gtest.h>

#include <QApplication>

#include "app/WindowSystem.h"
#include "desktop/Program.h"
#include "desktop/ShellTest.h"
#include "support/HeadlessSway.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class WaylandHotPlug : public ShellTest {
 protected:
  bool plug() { return sway.order(u"create_output"_s); }
  bool showsOn(int count) {
    return inTime([&] { return dock().displays().size() == count; });
  }
  HeadlessSway& sway = HeadlessSway::current();
};

TEST_F(WaylandHotPlug, FollowsADisplayThatGoesAndComesAlsoInTheMiddleOfItsWay) {
  for (const DockLayout layout : {DockLayout::Fixed, DockLayout::RevealBottom}) {
    SCOPED_TRACE(static_cast<int>(layout));
    DockConfiguration config;
    config.display = u"all"_s;
    config.layout = layout;
    start(config);
    ASSERT_TRUE(showsOn(1));
    for (int round = 1; round <= 2; ++round) {
      ASSERT_TRUE(plug() && showsOn(2));
      const QString second = idOn(1);
      const QPoint place = dock().frame(second).center().toPoint();
      if (layout == DockLayout::RevealBottom) {
        desk.moveTo({place.x(), desk.display(1).bottom()});
        ASSERT_TRUE(inTime([&] { return dock().isVisible(second); }));
      } else {
        ASSERT_TRUE(comesTrue([&] { return isPainted(place); }));
      }
      ASSERT_TRUE(sway.unplug(second));
      ASSERT_TRUE(showsOn(1));
      desk.moveTo(desk.away());
    }
    // It still does on the other what it did.
    if (layout == DockLayout::RevealBottom) {
      desk.moveTo({desk.display(0).center().x(), desk.display(0).bottom()});
      ASSERT_TRUE(inTime([&] { return dock().isVisible(id()); }));
    }
    EXPECT_TRUE(comesTrue([&] { return isPainted(middle()); }));
    end();
  }
}

}  // namespace
}  // namespace tarnwick::testing

int main(int argc, char** argv) {
  using tarnwick::testing::HeadlessSway;
  return HeadlessSway::run(argc, argv, HeadlessSway::Kind::Nested, [](int& count, char** arguments) {
    tarnwick::WindowSystem::prepare();
    new QApplication(count, arguments);  // Kept to the end: see HeadlessSway::run.
    QApplication::setQuitOnLastWindowClosed(false);
    const tarnwick::testing::SessionBus bus;
    return RUN_ALL_TESTS();
  });
}
