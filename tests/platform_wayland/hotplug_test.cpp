#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>

#include "Desk.h"
#include "platform/wayland/WaylandEnvironment.h"
#include "platform/wayland/WaylandZoneSensor.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

TEST(WaylandHotPlug, PanelsAndStripsSurviveADisplayThatGoes) {
  Desk desk;
  const QString first = u"WL-1"_s;
  ASSERT_EQ(desk.screens.all().size(), 1);
  EXPECT_EQ(desk.screens.mainId(), first);

  PaintedPanel one(desk, Qt::red);
  const QSignalSpy closed(one.panel.get(), &Panel::closed);
  WaylandZoneSensor sensor(desk.session, desk.screens, desk.panels.pointer());
  for (int round = 1; round <= 2; ++round) {
    ASSERT_TRUE(desk.sway.order(u"create_output"_s));
    ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all().size() == 2; }));
    const Screen second = desk.screens.all()[1];
    EXPECT_EQ(second.usable, second.frame);
    sensor.watch({{.screen = first, .panel = QRectF()}, {.screen = second.id, .panel = QRectF()}});
    one.panel->place({.screen = second.id, .rectangle = QRect(0, 0, 100, 50), .margins = {}});
    one.panel->reserve(Edge::Top, 50);
    one.panel->setShown(true);
    ASSERT_TRUE(desk.shows({50, 25}, Qt::red, second.id));
    const auto popup = one.panel->popup(std::make_unique<Paint>(Qt::blue, QSize(80, 80)), QRect(0, 0, 50, 50), {});
    ASSERT_TRUE(desk.shows({40, 100}, Qt::blue, second.id));

    ASSERT_TRUE(desk.sway.unplug(second.id));
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all().size() == 1 && closed.size() == round; }));
    EXPECT_FALSE(one.panel->isShown());
    one.panel->setShown(true);
    EXPECT_FALSE(one.panel->isShown()) << "on a display that is gone";
  }
  one.panel->place({.screen = first, .rectangle = QRect(0, 0, 100, 50), .margins = {}});
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({50, 25}, Qt::red, first));

  // The last one goes, and another comes.
  ASSERT_TRUE(desk.sway.unplug(first));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all().isEmpty() && !one.panel->isShown(); }));
  ASSERT_TRUE(desk.sway.order(u"create_output"_s));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all().size() == 1; }));
  one.panel->place({.screen = desk.screens.mainId(), .rectangle = QRect(0, 0, 100, 50), .margins = {}});
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({50, 25}, Qt::red, desk.screens.mainId()));
}

}  // namespace
}  // namespace tarnwick::testing

int main(int argc, char** argv) {
  using tarnwick::testing::HeadlessSway;
  return HeadlessSway::run(argc, argv, HeadlessSway::Kind::Nested, [](int& count, char** arguments) {
    tarnwick::WaylandEnvironment::prepare();
    new QApplication(count, arguments);  // Kept to the end: see HeadlessSway::run.
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
  });
}
