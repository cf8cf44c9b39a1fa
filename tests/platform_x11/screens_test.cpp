#include <gtest/gtest.h>

#include <QSignalSpy>

#include "Desk.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

QRectF usable(const X11Screens& screens, const QString& id) {
  for (const Screen& screen : screens.all()) {
    if (screen.id == id) return screen.usable;
  }
  return {};
}

TEST(X11Screens, FollowDisplaysAndTheBarsOfOthers) {
  Desk desk;
  ASSERT_EQ(desk.screens.all().size(), 1);
  const Screen whole = desk.screens.all()[0];
  EXPECT_EQ(whole.id, u"screen"_s) << "a monitor that tells nothing goes by its connector";
  EXPECT_EQ(desk.screens.mainId(), whole.id);
  EXPECT_EQ(whole.frame, QRectF(0, 0, 1280, 800));
  EXPECT_EQ(whole.usable, whole.frame);
  // Numbers here differ from one start to the next: they must never be taken for a display of older settings.
  EXPECT_EQ(whole.legacyId, QString());

  desk.display.setMonitor(u"L"_s, QRect(0, 0, 640, 800), u"screen"_s);
  desk.display.setMonitor(u"R"_s, QRect(640, 0, 640, 600), u"none"_s);
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all().size() == 2; }));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.mainId() == u"L"; }));
  EXPECT_EQ(desk.screens.all()[1].id, u"R"_s);
  EXPECT_EQ(desk.screens.all()[1].frame, QRectF(640, 0, 640, 600));
  EXPECT_EQ(desk.screens.showing(QRect(600, 100, 100, 100)), (QStringList{u"L"_s, u"R"_s}));
  EXPECT_EQ(desk.screens.showing(QRect(700, 700, 100, 50)), QStringList()) << "below the shorter one";
  {
    ForeignWindow bar(desk.display, QRect(0, 770, 640, 30));
    bar.setWords("_NET_WM_WINDOW_TYPE", "ATOM", {desk.display.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    bar.setWords("_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, 30, 0, 0, 0, 0, 0, 0, 0, 639});
    ASSERT_TRUE(bar.show());
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return usable(desk.screens, u"L"_s) == QRectF(0, 0, 640, 770); }));
    bar.setWords("_NET_WM_STRUT_PARTIAL", "CARDINAL", {0, 0, 0, 50, 0, 0, 0, 0, 0, 0, 0, 639});
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return usable(desk.screens, u"L"_s) == QRectF(0, 0, 640, 750); }));
    EXPECT_EQ(usable(desk.screens, u"R"_s), QRectF(640, 0, 640, 600));
  }
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return usable(desk.screens, u"L"_s) == QRectF(0, 0, 640, 800); }));

  PaintedPanel left(desk, Qt::red);
  PaintedPanel right(desk, Qt::red);
  left.panel->place({.screen = u"L"_s, .rectangle = QRect(100, 700, 200, 60), .margins = {}});
  right.panel->place({.screen = u"R"_s, .rectangle = QRect(100, 500, 200, 60), .margins = {}});
  for (const auto* one : {&left, &right}) one->panel->setShown(true);
  EXPECT_TRUE(
      VirtualDisplay::waitUntil([&] { return desk.display.frame(right.window()) == QRect(740, 500, 200, 60); }));
  const QSignalSpy leftGone(left.panel.get(), &Panel::closed);
  const QSignalSpy rightGone(right.panel.get(), &Panel::closed);
  desk.display.deleteMonitor(u"R"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return rightGone.size() == 1; }));
  EXPECT_FALSE(right.panel->isShown());
  EXPECT_EQ(desk.screens.all().size(), 1);
  EXPECT_TRUE(left.panel->isShown());
  EXPECT_EQ(leftGone.size(), 0);
  desk.display.deleteMonitor(u"L"_s);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.screens.all() == QList<Screen>{whole}; }));
}

}  // namespace
}  // namespace tarnwick::testing
