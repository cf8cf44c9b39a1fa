#include <gtest/gtest.h>

#include <QDir>
#include <QDrag>
#include <QMimeData>
#include <QSignalSpy>
#include <QTimer>

#include "Desk.h"
#include "platform/wayland/KernelConnectors.h"
#include "platform/wayland/WaylandClientWindows.h"
#include "platform/wayland/WaylandZoneSensor.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

TEST(WaylandSession, SaysWhatTheDesktopOffers) {
  EXPECT_EQ(WaylandSession::offer(), WaylandSession::Offer::Layers);
  const QByteArray display = qgetenv("WAYLAND_DISPLAY");
  qputenv("WAYLAND_DISPLAY", "nobody-there");
  EXPECT_EQ(WaylandSession::offer(), WaylandSession::Offer::Nothing);
  qunsetenv("WAYLAND_DISPLAY");
  EXPECT_FALSE(WaylandSession::isAvailable());
  qputenv("WAYLAND_DISPLAY", display);
}

TEST(WaylandScreens, ListsDisplaysOfDifferentScale) {
  Desk desk;
  ASSERT_EQ(desk.screens.all().size(), 2);
  EXPECT_EQ(desk.screens.mainId(), kFirst);
  const Screen second = desk.screens.all()[1];
  EXPECT_EQ(second.id, kSecond);
  EXPECT_EQ(second.frame, QRectF(1280, 0, 640, 400));
  EXPECT_EQ(second.usable, second.frame);
  EXPECT_EQ(second.scale, 2);
}

TEST(WaylandScreens, TellsTheDisplayThatTheCompositorHoldsForTheActiveOne) {
  Desk desk;
  for (const QString& display : {kSecond, kFirst}) {
    ASSERT_TRUE(desk.sway.order(u"focus output "_s + display));
    EXPECT_EQ(desk.screens.activeId(), display);
  }
  EXPECT_EQ(Desk(0).screens.activeId(), QString()) << "without layers";
}

TEST(KernelConnectors, ReadsTheMonitorThatIsThere) {
  QTemporaryDir folder;
  QByteArray edid = QByteArray::fromHex("00ffffffffffff0010ac16f04c4a3035") + QByteArray(111, '\0');
  char sum = 0;
  for (const char byte : edid) sum = static_cast<char>(sum + byte);
  edid.append(static_cast<char>(-sum));
  for (const QString& card : {u"card0-DP-1"_s, u"card1-DP-1"_s}) {
    QDir(folder.path()).mkpath(card);
    QFile file(folder.filePath(card + u"/edid"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    if (card.startsWith(u"card1"_s)) file.write(edid);
  }
  EXPECT_EQ(KernelConnectors::edid(u"DP-1"_s, folder.path()), Edid::parse(edid));
  ASSERT_TRUE(Edid::parse(edid).has_value());
  EXPECT_EQ(KernelConnectors::edid(u"DP-2"_s, folder.path()), std::nullopt);
  EXPECT_EQ(KernelConnectors::edid(u"../DP-1"_s, folder.path()), std::nullopt);
}

TEST(WaylandZoneSensor, FeelsTheEdgesAndThePanel) {
  Desk desk;
  desk.sway.moveTo({640, 400});
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = QRect(300, 720, 400, 80), .margins = {}});
  one.panel->setInputRegion(QRect(0, 0, 400, 80));
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 730}, Qt::red));
  WaylandZoneSensor sensor(desk.session, desk.screens, desk.panels.pointer());
  sensor.watch({{.screen = kFirst, .panel = QRectF(300, 720, 400, 80)},
                {.screen = kSecond, .panel = QRectF(), .watchesTop = false}});
  const struct {
    QPoint place;
    QString screen;
    PointerZones zones;
  } rows[] = {{{100, 799}, kFirst, {.bottomEdge = true}},
              {{100, 790}, kFirst, {}},
              {{500, 799}, kFirst, {.inside = true, .bottomEdge = true}},
              {{500, 750}, kFirst, {.inside = true}},
              {{100, 798}, kFirst, {}},
              {{500, 0}, kFirst, {.topEdge = true}},
              {{1500, 399}, kSecond, {.bottomEdge = true}},
              {{500, 400}, kFirst, {}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::Message() << row.place.x() << ", " << row.place.y());
    desk.sway.moveTo(row.place);
    const QString other = row.screen == kFirst ? kSecond : kFirst;
    EXPECT_TRUE(VirtualDisplay::waitUntil(
        [&] { return sensor.zones(row.screen) == row.zones && sensor.zones(other) == PointerZones(); }));
  }

  // The dock's own pixels at the edge take clicks; what slid away lets the strip feel them.
  desk.sway.click({500, 799});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return one.content->presses == 1; }));
  one.panel->setInputRegion({});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !sensor.zones(kFirst).inside; }));
  desk.settle();
  desk.sway.moveTo({500, 799});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return sensor.zones(kFirst) == PointerZones{.bottomEdge = true}; }));

  desk.sway.plugPointer(false);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return sensor.zones(kFirst) == PointerZones(); })) << "no leave came";
  desk.sway.plugPointer(true);
  one.panel->setInputRegion(QRect(0, 0, 400, 80));
  desk.settle();
  desk.sway.moveTo({500, 750});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return sensor.zones(kFirst).inside; }));
  one.panel->setShown(false);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !sensor.zones(kFirst).inside; }));
}

TEST(WaylandZoneSensor, TellsOfAPressOnAnEdgeAndAsksAgainForAStripThatIsLost) {
  Desk desk;
  desk.sway.moveTo({640, 400});
  WaylandZoneSensor sensor(desk.session, desk.screens, desk.panels.pointer());
  const QSignalSpy presses(&sensor, &ZoneSensor::edgePressed);
  sensor.watch({{.screen = kSecond, .panel = QRectF()}});
  const auto isPressed = [&] {
    const qsizetype before = presses.size();
    return VirtualDisplay::waitUntil([&] {
      desk.sway.click({1500, 399});
      return presses.size() > before;
    });
  };
  ASSERT_TRUE(isPressed());
  EXPECT_EQ(presses.first(), QVariantList{kSecond});
  // As the compositor says it.
  for (const QWindow* window : QGuiApplication::topLevelWindows()) {
    auto* strip = window->isVisible() ? qobject_cast<LayerWindow*>(RoleWindow::of(window)) : nullptr;
    if (!strip) continue;
    Q_EMIT strip->closed();
    EXPECT_FALSE(window->isVisible());
  }
  EXPECT_TRUE(isPressed());
}

TEST(WaylandZoneSensor, FeelsADragOverAnEdge) {
  Desk desk;
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = QRect(300, 400, 400, 80), .margins = {}});
  one.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 410}, Qt::red));
  WaylandZoneSensor sensor(desk.session, desk.screens, desk.panels.pointer());
  sensor.watch({{.screen = kFirst, .panel = QRectF(300, 400, 400, 80)}});
  bool felt = false;
  bool ended = false;
  const auto drag = [&] {
    auto* carried = new QDrag(one.content);
    auto* text = new QMimeData;
    text->setText(u"something"_s);
    carried->setMimeData(text);
    QTimer::singleShot(0, one.content, [&] {
      desk.sway.moveTo({100, 799});
      felt = VirtualDisplay::waitUntil(
          [&] { return sensor.isDragging() && sensor.zones(kFirst) == PointerZones{.bottomEdge = true}; });
      desk.sway.button(false);
    });
    carried->exec(Qt::CopyAction);
    ended = true;
  };
  one.content->pressed = [&] { QTimer::singleShot(0, one.content, drag); };
  desk.sway.moveTo({500, 440});
  desk.sway.button(true);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return ended && !sensor.isDragging(); }));
  EXPECT_TRUE(felt);
}

TEST(WaylandClientWindows, ListsWindowsAndGivesThemOrders) {
  Desk desk;
  WaylandClientWindows windows(desk.session, desk.screens, &desk.panels);
  EXPECT_TRUE(windows.capability().available);
  EXPECT_FALSE(windows.frames().reason.isEmpty());
  auto first = desk.sway.terminal(u"first"_s);
  auto second = desk.sway.terminal(u"second"_s);
  ASSERT_TRUE(VirtualDisplay::waitUntil(
      [&] { return windows.all().size() == 2 && windows.all()[1].active && !windows.all()[1].screens.isEmpty(); }));
  const ClientWindow one = windows.all()[0];
  EXPECT_EQ(one.applicationId, u"first"_s);
  EXPECT_FALSE(one.active);
  EXPECT_EQ(one.screens, QStringList{kFirst});
  EXPECT_TRUE(one.frame.isEmpty());

  windows.activate(one.id);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return windows.all()[0].active && !windows.all()[1].active; }));
  ASSERT_TRUE(desk.sway.order(u"[app_id=second] move to output HEADLESS-2"_s));
  ASSERT_TRUE(desk.sway.order(u"[app_id=second] fullscreen enable"_s));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    const ClientWindow& two = windows.all()[1];
    return two.fullscreen && two.screens == QStringList{kSecond} && two.frame == QRectF(1280, 0, 640, 400);
  }));
  windows.close(windows.all()[1].id);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return windows.all().size() == 1; }));
  windows.close(12345);
}

TEST(WaylandPanel, IsAboveFullScreenWindowsUnlessSetOtherwise) {
  Desk desk;
  const auto terminal = desk.sway.terminal(u"wide"_s);
  ASSERT_TRUE(desk.sway.order(u"[app_id=wide] fullscreen enable"_s));
  PaintedPanel one(desk, Qt::red);
  one.panel->place({.screen = kFirst, .rectangle = QRect(300, 720, 400, 80), .margins = {}});
  one.panel->setShown(true);
  EXPECT_TRUE(desk.shows({350, 750}, Qt::red));
  one.panel->setAboveFullscreen(false);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return desk.sway.pixel({350, 750}) != Qt::red; }));
  one.panel->setAboveFullscreen(true);
  EXPECT_TRUE(desk.shows({350, 750}, Qt::red));
}

// The compositor draws the window that came first above one that comes later.
TEST(WaylandPanel, LiesBelowAPopupThatIsToBeAboveAllPanels) {
  Desk desk;
  PaintedPanel dock(desk, Qt::red);
  dock.panel->place({.screen = kFirst, .rectangle = QRect(300, 300, 400, 80), .margins = {}});
  dock.panel->setShown(true);
  ASSERT_TRUE(desk.shows({350, 330}, Qt::red));
  PaintedPanel anchor(desk, Qt::green);
  anchor.panel->place({.screen = kFirst, .rectangle = QRect(300, 200, 400, 1), .margins = {}});
  anchor.panel->setShown(true);
  PopupStyle style{.gap = 0, .abovePanels = true};
  auto popup = anchor.panel->popup(std::make_unique<Paint>(Qt::blue, QSize(400, 300)), QRect(0, 0, 400, 1), style);
  EXPECT_TRUE(desk.shows({350, 330}, Qt::blue));
  popup.reset();
  const auto terminal = desk.sway.terminal(u"wide"_s);
  ASSERT_TRUE(desk.sway.order(u"[app_id=wide] fullscreen enable"_s));
  EXPECT_TRUE(desk.shows({350, 330}, Qt::red)) << "back above full-screen windows";
}

}  // namespace
}  // namespace tarnwick::testing
