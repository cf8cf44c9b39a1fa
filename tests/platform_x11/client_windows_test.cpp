#include <gtest/gtest.h>

#include <QSignalSpy>
#include <algorithm>

#include "Desk.h"
#include "platform/x11/X11ClientWindows.h"
#include "platform/x11/X11Properties.h"
#include "support/ForeignTexts.h"
#include "support/ForeignWindow.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class X11ClientWindowsTest : public ::testing::Test {
 protected:
  std::optional<ClientWindow> find(const QString& title) const {
    for (const ClientWindow& window : windows.all()) {
      if (window.title == title) return window;
    }
    return std::nullopt;
  }
  /// Waits until the window of that title meets the condition, and says whether it became so.
  bool becomes(const QString& title, const std::function<bool(const ClientWindow&)>& condition) const {
    return VirtualDisplay::waitUntil([&] {
      const auto window = find(title);
      return window && condition(*window);
    });
  }

  /// Whether the server tells us of each move of a window.
  bool areMovesTold(xcb_window_t window) const {
    xcb_connection_t* connection = desk.events.connection();
    const auto cookie = xcb_get_window_attributes(connection, window);
    const XcbReply reply(xcb_get_window_attributes_reply(connection, cookie, nullptr));
    return reply && (reply->your_event_mask & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0;
  }

  Desk desk;
  X11ClientWindows windows{desk.events, desk.screens};
};

TEST_F(X11ClientWindowsTest, FollowARealProgram) {
  PaintedPanel ours(desk, Qt::red);
  ours.panel->place({.screen = desk.screens.mainId(), .rectangle = QRect(0, 700, 90, 90), .margins = {}});
  ours.panel->setShown(true);
  const auto first = ChildProcess::start({u"xterm"_s, u"-T"_s, u"Søster"_s, u"-geometry"_s, u"40x10+50+50"_s});
  ASSERT_TRUE(becomes(u"Søster"_s, [](const ClientWindow& window) { return window.active; }));
  const auto second = ChildProcess::start({u"xterm"_s, u"-T"_s, u"Two"_s, u"-geometry"_s, u"40x10+500+50"_s});
  ASSERT_TRUE(becomes(u"Two"_s, [](const ClientWindow& window) { return window.active; }));

  const QList<ClientWindow> all = windows.all();
  ASSERT_EQ(all.size(), 2) << "ours is none of them";
  const ClientWindow expected{.id = all[0].id,
                              .title = u"Søster"_s,
                              .applicationId = u"XTerm"_s,
                              .instance = u"xterm"_s,
                              .sandboxId = {},
                              .pid = first->pid(),
                              .inTaskbar = true,
                              .active = false,
                              .minimised = false,
                              .fullscreen = false,
                              .screens = {desk.screens.mainId()},
                              .frame = {}};
  EXPECT_EQ(all[0], expected);

  windows.activate(all[0].id);
  EXPECT_TRUE(becomes(u"Søster"_s, [](const ClientWindow& window) { return window.active; }));
  EXPECT_FALSE(find(u"Two"_s)->active);
  windows.minimise(all[0].id);
  EXPECT_TRUE(becomes(u"Søster"_s, [](const ClientWindow& window) { return window.minimised && !window.active; }));
  windows.activate(all[0].id);
  EXPECT_TRUE(becomes(u"Søster"_s, [](const ClientWindow& window) { return !window.minimised && window.active; }));
  windows.close(all[0].id);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return !first->isRunning(); }));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return windows.all().size() == 1; }));
  windows.activate(all[0].id);  // An identity of the past asks nobody.
}

TEST_F(X11ClientWindowsTest, TellWhereAllWindowsAreOnlyWhileAskedTo) {
  ForeignWindow window(desk.display, QRect(100, 100, 200, 100));
  window.setText("_NET_WM_NAME", "UTF8_STRING", "plain");
  ASSERT_TRUE(window.show());
  const auto isAt = [&](const QRectF& place) {
    return becomes(u"plain"_s, [&](const ClientWindow& one) { return one.frame == place; });
  };
  ASSERT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return one.active; }));
  EXPECT_TRUE(find(u"plain"_s)->frame.isEmpty());
  const auto id = static_cast<xcb_window_t>(find(u"plain"_s)->id);
  EXPECT_FALSE(areMovesTold(id)) << "nobody asks where it is";
  window.moveTo({120, 100});
  desk.display.settle();
  windows.watchFrames(true);
  EXPECT_TRUE(isAt(QRectF(120, 100, 200, 100))) << "moved before anybody asked";
  EXPECT_TRUE(areMovesTold(id));

  desk.display.settle();
  const QSignalSpy changes(&windows, &ClientWindows::changed), moves(&windows, &ClientWindows::framesChanged);
  window.moveTo({300, 500});
  EXPECT_TRUE(isAt(QRectF(300, 500, 200, 100)));
  EXPECT_GT(moves.size(), 0);
  // Left, right, top, bottom.
  window.setWords("_GTK_FRAME_EXTENTS", "CARDINAL", {10, 12, 14, 16});
  EXPECT_TRUE(isAt(QRectF(310, 514, 178, 70))) << "without its shadow";
  window.setWords("_GTK_FRAME_EXTENTS", "CARDINAL", {10, 12, 14, 0xFFFFFFFF});
  EXPECT_TRUE(isAt(QRectF(300, 500, 200, 100))) << "what makes no sense";
  EXPECT_EQ(changes.size(), 0) << "nothing else changed";
  window.addState("_NET_WM_STATE_MAXIMIZED_VERT");
  window.addState("_NET_WM_STATE_MAXIMIZED_HORZ");
  EXPECT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return one.maximised; }));
  windows.watchFrames(false);
  EXPECT_TRUE(find(u"plain"_s)->frame.isEmpty());
  EXPECT_FALSE(areMovesTold(id));
  window.addState("_NET_WM_STATE_FULLSCREEN");
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return areMovesTold(id); })) << "it may cover a display";

  windows.watchFrames(true);
  const auto framed = ChildProcess::start({u"xterm"_s, u"-T"_s, u"framed"_s, u"-geometry"_s, u"40x10+50+50"_s});
  EXPECT_TRUE(becomes(u"framed"_s, [&](const ClientWindow& one) {
    const QRectF inner = desk.display.frame(static_cast<xcb_window_t>(one.id));
    return !inner.isEmpty() && one.frame.contains(inner) && one.frame.height() > inner.height() + 5;
  })) << "with its title bar";
}

TEST_F(X11ClientWindowsTest, ReadWhatAWindowSaysOfItself) {
  ForeignWindow window(desk.display, QRect(100, 100, 200, 100));
  window.setText("_NET_WM_NAME", "UTF8_STRING", "plain");
  window.setText("WM_CLASS", "STRING", QByteArray("one\0Class\0", 10));
  window.setText("WM_CLIENT_MACHINE", "STRING", "some.other.machine");
  window.setWords("_NET_WM_PID", "CARDINAL", {4242});
  ASSERT_TRUE(window.show());
  ASSERT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) {
    return one.applicationId == u"Class" && one.instance == u"one" && one.pid == 0 && one.inTaskbar;
  }));

  for (const test::ForeignSample& sample : test::foreignSamples()) {
    window.setText("_NET_WM_NAME", "UTF8_STRING", sample.text.toUtf8());
    EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
      return std::ranges::any_of(windows.all(), [&](const ClientWindow& one) {
        return one.title.contains(sample.seen) && test::ForeignSample::isHarmless(one.title);
      });
    })) << qPrintable(sample.text.left(40));
  }
  window.setText("_NET_WM_NAME", "UTF8_STRING", "plain");
  ASSERT_TRUE(becomes(u"plain"_s, [](const ClientWindow&) { return true; }));

  const struct {
    const char* property;
    QByteArray text;
    QString id;
  } rows[] = {{"_BAMF_DESKTOP_FILE", "/usr/share/applications/org.pond.desktop", u"org.pond"_s},
              {"_KDE_NET_WM_DESKTOP_FILE", "org.lake.desktop", u"org.lake"_s},
              {"_GTK_APPLICATION_ID", "org.sea", u"org.sea"_s}};
  for (const auto& row : rows) {
    window.setText(row.property, "UTF8_STRING", row.text);
    EXPECT_TRUE(becomes(u"plain"_s, [&](const ClientWindow& one) { return one.applicationId == row.id; }))
        << row.property;
  }
  window.addState("_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_SKIP_TASKBAR");
  EXPECT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return one.fullscreen && !one.inTaskbar; }));

  EXPECT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return one.frame == QRectF(0, 0, 1280, 800); }));

  window.setWords("WM_HINTS", "WM_HINTS", {1 << 8, 0, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return one.urgent; }));
  window.setWords("WM_HINTS", "WM_HINTS", {0, 0, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_TRUE(becomes(u"plain"_s, [](const ClientWindow& one) { return !one.urgent; }));

  const auto place = [&] { return desk.display.words(window.id(), "_NET_WM_ICON_GEOMETRY"); };
  windows.setIconGeometry({find(u"plain"_s)->id, 1}, QRectF(500, 720, 64, 60));
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return place() == QList<quint32>{500, 720, 64, 60}; }));
  windows.setIconGeometry({find(u"plain"_s)->id}, {});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return place().isEmpty(); }));

  for (const auto& [type, isGround] :
       {std::pair("_NET_WM_WINDOW_TYPE_DESKTOP", true), std::pair("_NET_WM_WINDOW_TYPE_UTILITY", false)}) {
    window.setWords("_NET_WM_WINDOW_TYPE", "ATOM", {desk.display.atom(type)});
    EXPECT_TRUE(becomes(u"plain"_s, [isGround = isGround](const ClientWindow& one) {
      return one.desktop == isGround && !one.dock;
    })) << type;
  }

  ForeignWindow dock(desk.display, QRect(0, 0, 1280, 20));
  dock.setWords("_NET_WM_WINDOW_TYPE", "ATOM", {desk.display.atom("_NET_WM_WINDOW_TYPE_DOCK")});
  dock.setText("WM_NAME", "STRING", "B\xe4r");
  ASSERT_TRUE(dock.show());
  EXPECT_TRUE(becomes(u"Bär"_s, [](const ClientWindow& one) { return !one.inTaskbar; }));

  desk.display.settle();
  const QSignalSpy changes(&windows, &ClientWindows::changed);
  window.setWords("_NET_WM_USER_TIME", "CARDINAL", {1});
  window.setText("_NET_WM_NAME", "UTF8_STRING", "plain");
  desk.display.settle();
  EXPECT_EQ(changes.size(), 0) << "nothing that is told changed";
}

}  // namespace
}  // namespace tarnwick::testing
