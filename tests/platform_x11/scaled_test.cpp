#include <gtest/gtest.h>

#include <QApplication>

#include "Desk.h"
#include "platform/x11/X11ZoneSensor.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

TEST(X11Scale, CountsInPixelsThatDoNotDependOnTheDevice) {
  Desk desk;
  ASSERT_EQ(desk.screens.all().size(), 2);
  const Screen right = desk.screens.all()[1];
  EXPECT_EQ(right.id, u"R"_s);
  EXPECT_EQ(right.scale, 2);
  EXPECT_EQ(right.frame, QRectF(640, 0, 320, 400));

  ForeignWindow below(desk.display, QRect(640, 500, 640, 300));
  ASSERT_TRUE(below.show());
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = u"R"_s, .rectangle = QRect(50, 350, 200, 40), .margins = QMargins(5, 10, 5, 0)});
  one.panel->setInputRegion(QRect(5, 10, 100, 40));
  one.panel->reserve(Edge::Bottom, 50);
  one.panel->setShown(true);
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.frame(one.window()) == QRect(730, 680, 420, 100); }));
  EXPECT_EQ(desk.display.words(one.window(), "_NET_WM_STRUT_PARTIAL"),
            (QList<quint32>{0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 640, 1279}));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.pixel({1000, 770}) == Qt::red; }));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] {
    return desk.display.topLevelAt({942, 770}) == desk.display.topLevelAt({650, 550});
  }));
  desk.display.click({938, 770});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->presses == 1; }));
  desk.display.click({942, 770});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return below.clicks() == 1; }));

  X11ZoneSensor sensor(desk.events, desk.screens);
  sensor.watch({{.screen = u"R"_s, .panel = QRectF(690, 350, 200, 40)}});
  const struct {
    QPoint place;
    PointerZones zones;
  } rows[] = {{{719, 780}, {}},
              {{721, 780}, {.inside = true}},
              {{1000, 799}, {.inside = true, .bottomEdge = true}},
              {{1000, 5}, {.topEdge = true}},
              {{639, 799}, {}}};
  for (const auto& row : rows) {
    desk.display.moveTo(row.place);
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return sensor.zones(u"R"_s) == row.zones; }))
        << row.place.x() << ", " << row.place.y();
  }

  one.panel->place({.screen = u"L"_s, .rectangle = QRect(50, 700, 200, 40), .margins = {}});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.display.frame(one.window()) == QRect(50, 700, 200, 40); }));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    return desk.display.words(one.window(), "_NET_WM_STRUT_PARTIAL") ==
           QList<quint32>{0, 0, 0, 50, 0, 0, 0, 0, 0, 0, 0, 639};
  }));
}

}  // namespace
}  // namespace tarnwick::testing

int main(int argc, char** argv) {
  using namespace tarnwick::testing;
  return VirtualDisplay::run(argc, argv, {}, [](int& count, char** arguments) {
    using namespace Qt::StringLiterals;
    VirtualDisplay::current().setMonitor(u"L"_s, QRect(0, 0, 640, 800), u"screen"_s);
    VirtualDisplay::current().setMonitor(u"R"_s, QRect(640, 0, 640, 800), u"none"_s);
    qputenv("QT_SCREEN_SCALE_FACTORS", "L=1;R=2");
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
  });
}
