// What belongs to Wayland alone: the start of the real executable there, displays that come and go, and ends
// that no other window system has.
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QGuiApplication>
#include <QRegularExpression>

#include "config/Persistence.h"
#include "desktop/Program.h"
#include "desktop/ShellTest.h"
#include "handover/Docks.h"
#include "platform/wayland/WaylandEnvironment.h"
#include "platform/wayland/WaylandSession.h"
#include "support/HeadlessSway.h"
#include "views/panels/PanelPresentation.h"
#include "views/panels/TilePanel.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class WaylandProgram : public ::testing::Test {
 protected:
  ~WaylandProgram() override { Program::resetVariables(); }

  QString home() const { return folder.path(); }
  QString file() const { return home() + u"/Tarnwick/config.json"_s; }
  QByteArray contents(const QString& path) const {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(unreadable)");
  }
  bool comesTrue(const std::function<bool()>& predicate) const { return VirtualDisplay::waitUntil(predicate); }
  bool isUp(const Program& program) const {
    const auto owner = QDBusConnection::sessionBus().interface()->servicePid(u"com.brindlemoor.Tarnwick"_s);
    return program.isRunning() && owner.value() == static_cast<uint>(program.pid());
  }
  /// Whether a compositor takes connections there.
  bool answers(const QString& display) const {
    const QByteArray own = qgetenv("WAYLAND_DISPLAY");
    qputenv("WAYLAND_DISPLAY", display.toUtf8());
    const bool found = WaylandSession::offer() != WaylandSession::Offer::Nothing;
    qputenv("WAYLAND_DISPLAY", own);
    return found;
  }
  /// Waits until the program's talk with its compositor has such a line.
  bool says(Program& program, const QString& pattern) {
    const QRegularExpression wanted(pattern);
    return comesTrue([&] {
      talk += program.standardError();
      return talk.contains(wanted);
    });
  }
  /// Whether a dock is seen at the middle of the first display's lower edge.
  bool isSeen() const { return desk.isPainted(kMiddle); }

  static constexpr QPoint kMiddle{640, 750};
  TestDesk& desk = TestDesk::current();
  HeadlessSway& sway = HeadlessSway::current();
  QTemporaryDir folder;
  QString talk;
};

TEST_F(WaylandProgram, AKeyOfTheCompositorOpensTheCommandBar) {
  DockConfiguration config;
  config.onboardingComplete = true;
  Persistence::save(config, file());
  const Program program(home());
  ASSERT_TRUE(comesTrue([&] { return isUp(program); }));
  ASSERT_TRUE(
      sway.order(u"bindsym Control+space exec env XDG_DATA_HOME=%1 DBUS_SESSION_BUS_ADDRESS=%2 %3 --command-bar"_s.arg(
          home(), qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), Program::path())));
  const QPoint field(900, 300);
  for (const bool isOpen : {true, false}) {
    desk.type({KEY_SPACE}, {KEY_LEFTCTRL});
    EXPECT_TRUE(comesTrue([&] { return desk.isPainted(field) == isOpen; })) << isOpen;
  }
  EXPECT_TRUE(sway.order(u"unbindsym Control+space"_s));
}

TEST_F(WaylandProgram, StandsThereByItselfAndComesBackAfterAKill) {
  ASSERT_FALSE(isSeen());
  {
    Program first(home());
    EXPECT_TRUE(comesTrue([&] { return isSeen(); }));
    first.signal(SIGKILL);
    first.end();
  }
  EXPECT_TRUE(comesTrue([&] { return !isSeen(); }));
  Program::setVariable(u"QT_QPA_PLATFORM"_s, u"xcb;wayland-egl"_s);
  Program second(home());
  EXPECT_TRUE(comesTrue([&] { return isSeen(); })) << "with the first of the user's list that answers";
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(comesTrue([&] { return !isSeen(); }));
  second.signal(SIGTERM);
  EXPECT_EQ(second.end(), 0);
  EXPECT_EQ(contents(file()), Persistence::encode(Persistence::read(file())));
}

TEST_F(WaylandProgram, ThatItStartsGetNoneOfItsOwnVariables) {
  const QString outputFile = home() + u"/environment"_s;
  const QString script = home() + u"/script"_s;
  const QString entry = home() + u"/applications/test.desktop"_s;
  QDir().mkpath(home() + u"/applications"_s);
  const auto write = [](const QString& path, const QString& text) {
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text.toUtf8());
  };
  write(script, u"env > '%1.new'; mv '%1.new' '%1'"_s.arg(outputFile));
  write(entry, u"[Desktop Entry]\nType=Application\nName=Test\nExec=sh %1\n"_s.arg(script));
  DockConfiguration config;
  DockWidget& launcher = config.profiles[0].widgets[0];
  launcher.kind = u"appLauncher"_s;
  launcher.options = {{u"path"_s, entry}};
  config.profiles[0].widgets = {launcher};
  Persistence::save(config, file());

  Program::setVariable(u"USERS_OWN"_s, u"kept"_s);
  Program program(home());
  ASSERT_TRUE(comesTrue([&] { return isSeen(); }));
  sway.click(kMiddle);
  ASSERT_TRUE(comesTrue([&] { return QFile::exists(outputFile); }));
  const QByteArray variables = contents(outputFile);
  EXPECT_TRUE(variables.contains("USERS_OWN=kept\n"));
  EXPECT_TRUE(variables.contains("XDG_ACTIVATION_TOKEN=")) << "to come to the front with";
  QStringList names = WaylandEnvironment::names();
  names << u"QT_XCB_NO_MITSHM"_s;
  for (const QString& name : names) {
    EXPECT_FALSE(variables.contains(name.toUtf8() + '=')) << qPrintable(name);
  }
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

// The toolkit ends the process there and then. What becomes of what was entered is in ends_test.cpp.
TEST_F(WaylandProgram, GivesTheSystemDockBackWhenTheCompositorDies) {
  const NameOwner plank(u"net.launchpad.plank"_s);
  output({u"dconf"_s, u"write"_s, u"/net/launchpad/plank/docks/dock1/hide-mode"_s, u"'window-dodge'"_s});
  const QByteArray before = dconfDump();
  DockConfiguration config = twoProfiles();
  config.layout = DockLayout::Replace;
  Persistence::save(config, file());
  HeadlessSway::Another compositor = sway.another();
  Program::setVariable(u"WAYLAND_DISPLAY"_s, compositor.display);
  Program program(home());
  ASSERT_TRUE(comesTrue([&] { return isUp(program) && dconfDump().contains("hide-mode='auto'"); }));

  compositor.process.reset();
  EXPECT_TRUE(program.end().value_or(-1) != 0);
  EXPECT_TRUE(comesTrue([&] { return dconfDump() == before; }));
  output({u"dconf"_s, u"reset"_s, u"-f"_s, u"/"_s});
}

// Neither layers nor a seat are there.
TEST_F(WaylandProgram, IsAPlainWindowWhereTheCompositorKnowsNoDocks) {
  const QString display = u"wayland-plain"_s;
  const auto weston = ChildProcess::start({u"weston"_s, u"--backend=headless-backend.so"_s, u"--use-pixman"_s,
                                           u"--no-config"_s, u"--idle-time=0"_s, u"--socket="_s + display});
  ASSERT_TRUE(comesTrue([&] { return answers(display); }));
  DockConfiguration config;
  config.layout = DockLayout::ReplaceAutoHide;
  Persistence::save(config, file());
  Program::setVariable(u"WAYLAND_DISPLAY"_s, display);
  Program::setVariable(u"WAYLAND_DEBUG"_s, u"client"_s);
  Program program(home());
  ASSERT_TRUE(comesTrue([&] { return isUp(program); }));
  // The dock, and what is said about its layout.
  EXPECT_TRUE(says(program, u"(?s)get_toplevel\\(.*get_toplevel\\("_s));
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  talk.clear();
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(says(program, u"get_toplevel\\("_s)) << "shown again";
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
  EXPECT_EQ(Persistence::read(file()).layout, config.layout) << "the wish stays";
}

class WaylandShell : public ShellTest {
 protected:
  ~WaylandShell() override { sway.plugPointer(true); }
  HeadlessSway& sway = HeadlessSway::current();
};

TEST_F(WaylandShell, StandsWithoutAPointerAndMeetsOneThatIsPluggedIn) {
  sway.plugPointer(false);
  start(DockConfiguration());
  EXPECT_TRUE(comesTrue([&] { return isPainted(middle()); }));
  sway.plugPointer(true);
  ASSERT_TRUE(comesTrue([&] { return takesClicks(glass().center()); }));
  desk.click(tile(4).center());
  EXPECT_TRUE(comesTrue([&] { return isOpen(); }));
}

TEST_F(WaylandShell, APanelStaysBesideItsTileWhenTheDisplayIsScaled) {
  startShown(DockConfiguration());
  desk.click(tile(1).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  const auto outline = [] {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      const auto* shown = qobject_cast<const PanelPresentation*>(window);
      if (shown && shown->isVisible())
        return shown->geometry().marginsRemoved(static_cast<const TilePanel&>(shown->content()).margins());
    }
    return QRect();
  };
  const QSize whole = desk.display(0).size();
  for (const auto& [scale, size] : {std::pair(u"2"_s, whole / 2), std::pair(u"1"_s, whole)}) {
    SCOPED_TRACE(qPrintable(scale));
    ASSERT_TRUE(sway.order(u"output HEADLESS-1 scale "_s + scale));
    EXPECT_TRUE(inTime([&, size = size] {
      const bool stands = desk.display(0).size() == size && desk.display(0).contains(glass());
      return stands && outline().bottom() == glass().top() - theme::kPanelGap - 1;
    }));
    EXPECT_TRUE(outline().intersects(tile(1).translated(0, -glass().height())));
  }
}

// The dock has the keyboard only while a tile is dragged.
TEST_F(WaylandShell, EscapeTakesADragBack) {
  const auto editor = sway.terminal(u"editor"_s);
  startShown(DockConfiguration());
  const QList<DockWidget> before = store().widgets();
  desk.moveTo(tile(1).center());
  desk.button(true);
  comesTrue([&, way = 0]() mutable {
    desk.moveTo(tile(2).center() + QPoint(++way % 8, 0));
    return QGuiApplication::focusWindow() != nullptr;
  });
  sway.type({u"-k"_s, u"Escape"_s});
  desk.settle();
  desk.button(false);
  desk.settle();
  EXPECT_EQ(store().widgets(), before);
  EXPECT_TRUE(comesTrue([] { return !QGuiApplication::focusWindow(); }));
}

}  // namespace
}  // namespace tarnwick::testing
