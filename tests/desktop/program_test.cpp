// The real executable, from its start to its end, on a display with a window manager.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>

#include <QDBusConnection>
#include <QDBusReply>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "config/Persistence.h"
#include "desktop/Program.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::Program;
using tarnwick::testing::runToEnd;
using tarnwick::testing::VirtualDisplay;

class ProgramTest : public ::testing::Test {
 protected:
  ~ProgramTest() override { Program::resetVariables(); }

  QString home() const { return folder.path(); }
  QString file(const QString& name = u"config.json"_s) const { return home() + u"/Tarnwick/"_s + name; }
  QByteArray contents(const QString& path) const {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(unreadable)");
  }
  void write(const QByteArray& bytes) const {
    QDir().mkpath(QFileInfo(file()).path());
    QFile out(file());
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  }
  /// The dock's glass must be painted at its place and nothing beside it.
  static bool isGlassAt(QPoint inside, QPoint outside) {
    VirtualDisplay& display = VirtualDisplay::current();
    const QColor wallpaper = display.pixel({5, 5});
    return display.pixel(inside) != wallpaper && display.pixel(outside) == wallpaper;
  }

  QTemporaryDir folder;
};

TEST_F(ProgramTest, StandsAtTheBottomAndComesBackAfterAKill) {
  DockConfiguration config;
  config.onboardingComplete = true;  // No window covers the dock.
  Persistence::save(config, file());
  Program first(home());
  ASSERT_TRUE(first.shows(1)) << qPrintable(first.standardError());
  const auto standsInTheMiddle = [] { return isGlassAt({800, 850}, {800, 804}) && isGlassAt({440, 850}, {800, 895}); };
  EXPECT_TRUE(VirtualDisplay::waitUntil(standsInTheMiddle));
  first.signal(SIGKILL);
  EXPECT_FALSE(first.end());

  // The next one finds the lock free and the settings whole.
  config.position = u"top"_s;
  Persistence::save(config, file());
  {
    Program::setVariable(u"QT_QPA_PLATFORM"_s, u"wayland;xcb"_s);
    Program second(home());
    ASSERT_TRUE(second.shows(1)) << "with the first of the user's list that answers";
    Program::resetVariables();
    EXPECT_TRUE(VirtualDisplay::waitUntil([] { return isGlassAt({800, 50}, {800, 850}); }));
    second.signal(SIGKILL);
    second.end();
  }
  Program third(home());
  ASSERT_TRUE(third.shows(1));
  EXPECT_TRUE(VirtualDisplay::waitUntil([] { return isGlassAt({800, 50}, {800, 850}); }));
  EXPECT_EQ(Persistence::read(file()).profiles, config.profiles);
  third.signal(SIGTERM);
  EXPECT_EQ(third.end(), 0);
  EXPECT_EQ(contents(file()), Persistence::encode(Persistence::read(file())));
}

TEST_F(ProgramTest, EndsInOrderOnEverySignal) {
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    QFile::remove(file());
    Program program(home());
    ASSERT_TRUE(program.shows(1));
    program.signal(number);
    EXPECT_EQ(program.end(), 0) << number;
    struct stat about = {};
    ASSERT_EQ(::stat(QFile::encodeName(file()).constData(), &about), 0) << number;
    EXPECT_EQ(about.st_mode & 0777u, 0600u);
    EXPECT_EQ(Persistence::read(file()).profiles.first().widgets.size(), 7);
  }
}

TEST_F(ProgramTest, ASecondLaunchHandsOver) {
  Program first(home());
  ASSERT_TRUE(first.shows(1));
  EXPECT_EQ(runToEnd(home(), {}).status, 0);
  EXPECT_TRUE(first.shows(1));
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(first.shows(0));
  // Opened again, a hidden dock comes back.
  EXPECT_EQ(runToEnd(home(), {}).status, 0);
  EXPECT_TRUE(first.shows(1));
  Program::setVariable(u"DISPLAY"_s, u":4711"_s);  // Asking needs no display.
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(first.shows(0));
  first.signal(SIGTERM);
  EXPECT_EQ(first.end(), 0);
}

TEST_F(ProgramTest, AFileThatIsNotOpenedIsSaidToWhoAskedForIt) {
  const struct {
    const char* name;
    const char* sentence;
  } cases[] = {
      {"notes.txt", "“notes.txt” was not opened. Tarnwick only opens the desktop entries of apps (.desktop files).\n"},
      {"a.tarnwickspace", "“a.tarnwickspace” was not opened. Spaces come with a later version of Tarnwick.\n"},
      {"gone.txt", "There is no file “gone.txt”.\n"},
  };
  const QString entry = home() + u"/app.desktop"_s;
  for (const QString& name : {home() + u"/notes.txt"_s, home() + u"/a.tarnwickspace"_s, entry}) {
    QFile made(name);
    ASSERT_TRUE(made.open(QIODevice::WriteOnly));
  }
  DockConfiguration config;
  config.onboardingComplete = true;
  Persistence::save(config, file());
  Program first(home());
  ASSERT_TRUE(first.shows(1));
  for (const auto& each : cases) {
    const bool isGone = QLatin1StringView(each.name).startsWith("gone"_L1);
    const QString name = QString::fromUtf8(each.name);
    const auto second = runToEnd(home(), {isGone ? name : home() + u'/' + name});
    EXPECT_EQ(second.status, 2) << each.name;
    EXPECT_TRUE(second.standardError.endsWith(QString::fromUtf8(each.sentence))) << qPrintable(second.standardError);
  }
  EXPECT_EQ(runToEnd(home(), {entry}).status, 0) << "what may be opened is";
  first.signal(SIGTERM);
  EXPECT_EQ(first.end(), 0);
  // Where none runs, the dock comes up and says it itself.
  for (const QString& name : {home() + u"/notes.txt"_s, u"gone.txt"_s}) {
    Program alone(home(), {name});
    EXPECT_TRUE(alone.shows(2)) << qPrintable(name);
    alone.signal(SIGTERM);
    EXPECT_EQ(alone.end(), 0);
  }
}

TEST_F(ProgramTest, AProfileThatIsNotThereIsSaidToWhoAskedForIt) {
  DockConfiguration config;
  config.onboardingComplete = true;
  Persistence::save(config, file());
  Program first(home());
  ASSERT_TRUE(first.shows(1));
  const auto second = runToEnd(home(), {u"--profile"_s, u"7"_s});
  EXPECT_EQ(second.status, 2);
  EXPECT_TRUE(second.standardError.endsWith(u"There is no profile 7. The only one is 0.\n"_s))
      << qPrintable(second.standardError);
  EXPECT_TRUE(first.shows(1)) << "nobody else need read it";
  EXPECT_EQ(runToEnd(home(), {u"--profile"_s, u"0"_s}).status, 0);
  first.signal(SIGTERM);
  EXPECT_EQ(first.end(), 0);
  // Where none runs, the dock comes up and says it itself.
  Program alone(home(), {u"--profile"_s, u"7"_s});
  EXPECT_TRUE(alone.shows(2));
  alone.signal(SIGTERM);
  EXPECT_EQ(alone.end(), 0);
}

TEST_F(ProgramTest, ControlAndQCloseAWindowAndNotTheDock) {
  constexpr quint8 kControl = 37, kQ = 24;
  VirtualDisplay& display = VirtualDisplay::current();
  const xcb_window_t before = display.focus();
  Program program(home());  // A new user is asked in a window.
  ASSERT_TRUE(program.shows(1));
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return display.focus() != before && display.focus() > 1; }));
  const xcb_window_t window = display.focus();
  display.tap(kQ, {kControl});
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return display.focus() != window; }));
  // It is this copy that still takes orders, and not a new one.
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(program.shows(0));
  ASSERT_TRUE(program.isRunning());
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(ProgramTest, AnOrderToAProgramThatIsJustComingUpIsNotLost) {
  DockConfiguration config;
  config.profiles.append(DockProfile::initial());
  config.profiles[1].id = QUuid::createUuid();
  for (DockWidget& widget : config.profiles[1].widgets) widget.id = QUuid::createUuid();
  Persistence::save(config, file());
  Program first(home());
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return contents(file(u"tarnwick.lock"_s)).endsWith('\n'); }));
  EXPECT_EQ(runToEnd(home(), {u"--profile"_s, u"1"_s}).status, 0);
  first.signal(SIGTERM);
  EXPECT_EQ(first.end(), 0);
  EXPECT_EQ(Persistence::read(file()).activeProfileID, config.profiles[1].id);
}

TEST_F(ProgramTest, AnOrderReachesTheCopyOfItsOwnData) {
  QTemporaryDir elsewhere;
  Program stranger(elsewhere.path());  // Has the name on the bus.
  ASSERT_TRUE(stranger.shows(1));
  Program ours(home());
  ASSERT_TRUE(ours.shows(2));  // The dock, and the message that its keys are taken.
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(ours.shows(1));
  EXPECT_TRUE(stranger.shows(1));
  stranger.signal(SIGTERM);
  EXPECT_EQ(stranger.end(), 0);
  // Now the name is free, and the copy that stood in line has it.
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(ours.shows(2));
  ours.signal(SIGTERM);
  EXPECT_EQ(ours.end(), 0);
}

TEST_F(ProgramTest, AManualRepairIsLeftToTheCopyThatHoldsTheValues) {
  DockConfiguration config;
  config.layout = DockLayout::Replace;
  config.onboardingComplete = true;
  Persistence::save(config, file());
  const QString record = file(u"native-dock-recovery.plist"_s);
  Program program(home());
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return QFile::exists(record); }));
  const auto repair = runToEnd(home(), {u"--restore-dock"_s});
  EXPECT_EQ(repair.status, 0);
  EXPECT_EQ(repair.standardOutput, u"Restored the macOS Dock settings saved before Tarnwick changed them.\n"_s);
  EXPECT_FALSE(QFile::exists(record));
  // The next layout pass leaves it as it is.
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_FALSE(QFile::exists(record));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(ProgramTest, ToTogglesADockThatDoesNotRunMeansToShowIt) {
  Program program(home(), {u"--toggle"_s});
  EXPECT_TRUE(program.shows(1));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(ProgramTest, ANewerBuildTakesOver) {
  const QString build = home() + u"/tarnwick"_s;
  const auto dated = [&](const QDateTime& date) {
    QFile file(build);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(file.setFileTime(date, QFileDevice::FileModificationTime));
  };
  ASSERT_TRUE(QFile::copy(Program::path(), build));
  auto older = std::make_unique<Program>(home(), QStringList(), build);
  ASSERT_TRUE(older->shows(1));
  dated(QDateTime::currentDateTime().addSecs(60));
  auto replacing = std::make_unique<Program>(home(), QStringList(), build);
  EXPECT_EQ(older->end(), 0);
  EXPECT_TRUE(replacing->shows(1));

  // A package keeps the date of its making, so another file at the same path counts too; and a copy that cannot be
  // asked over the bus is asked by a signal.
  older = std::move(replacing);
  ASSERT_TRUE(QFile::copy(Program::path(), build + u".new"_s));
  ASSERT_EQ(::rename(QFile::encodeName(build + u".new"_s).constData(), QFile::encodeName(build).constData()), 0);
  dated(QDateTime::currentDateTime().addSecs(-1800));
  Program::setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
  replacing = std::make_unique<Program>(home(), QStringList(), build);
  EXPECT_EQ(older->end(), 0);
  EXPECT_TRUE(replacing->shows(1));
  replacing->signal(SIGTERM);
  EXPECT_EQ(replacing->end(), 0);
}

TEST_F(ProgramTest, StaysWhenItsTerminalClosesUnderNohup) {
  Program program(home(), {u"-c"_s, u"trap '' HUP; exec \"%1\""_s.arg(Program::path())}, u"/bin/sh"_s);
  ASSERT_TRUE(program.shows(1));
  program.signal(SIGHUP);
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(program.shows(0));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(ProgramTest, SettingsThatCannotBeUsedAreKeptAndTheMessageShows) {
  const QByteArray valid = Persistence::encode(DockConfiguration());
  const QByteArray cases[] = {
      "",
      "{ \"schema\": 1, \"profi",
      QByteArray(valid).replace("\"schema\": 1", "\"schema\": 2"),
      QByteArray(valid).replace("digitalClock", "clockOfTomorrow"),
      QByteArray(valid).replace("\"spacing\": 7", "\"spacing\": \"7\""),
  };
  for (const QByteArray& bytes : cases) {
    QDir(QFileInfo(file()).path()).removeRecursively();
    write(bytes);
    Program program(home());
    EXPECT_TRUE(program.shows(2)) << bytes.left(80).constData();  // The dock, and the message above it.
    const auto kept = QDir(QFileInfo(file()).path()).entryList({u"config-recovery-*.json"_s});
    ASSERT_EQ(kept.size(), 1) << bytes.left(80).constData();
    EXPECT_EQ(contents(file(kept.first())), bytes);
    program.signal(SIGTERM);
    EXPECT_EQ(program.end(), 0);
    EXPECT_EQ(contents(file(kept.first())), bytes);
  }
}

TEST_F(ProgramTest, RunsWhereNothingCanBeSaved) {
  const QString blocked = home() + u"/a file"_s;
  QFile in(blocked);
  ASSERT_TRUE(in.open(QIODevice::WriteOnly));
  in.close();
  Program program(blocked);
  EXPECT_TRUE(program.shows(1));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
  EXPECT_TRUE(program.standardError().contains(u"Settings could not be saved: "_s));
  EXPECT_EQ(contents(blocked), "");
}

TEST_F(ProgramTest, RunsWithoutASessionBusAndStillOnlyOnce) {
  Program::setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
  Program program(home());
  ASSERT_TRUE(program.shows(1));
  EXPECT_EQ(runToEnd(home(), {}).status, 0);
  EXPECT_TRUE(program.shows(1));
  EXPECT_EQ(runToEnd(home(), {u"--toggle"_s}).status, 0);
  EXPECT_TRUE(program.shows(0));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

TEST_F(ProgramTest, SaysOfEachServiceThatItIsOutOfReachWhereThereIsNoNetwork) {
  const QString alone = u"unshare"_s;
  if (runToEnd(home(), {u"-rn"_s, u"true"_s}, alone).status != 0)
    GTEST_SKIP() << "the kernel gives no network of our own";
  const auto ended = runToEnd(home(), {u"-rn"_s, Program::path(), u"--network-diagnose"_s}, alone);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.standardError, QString());
  EXPECT_EQ(ended.standardOutput.count(u"\"error\":\"The service could not be reached."_s), 3)
      << qPrintable(ended.standardOutput);
  EXPECT_EQ(ended.standardOutput.count(u'\n'), 1);
}

TEST_F(ProgramTest, SaysInOneSentenceWhatItCannotDo) {
  Program::setVariable(u"DISPLAY"_s, u":4711"_s);
  const auto noDisplay = runToEnd(home(), {});
  EXPECT_EQ(noDisplay.status, 1);
  EXPECT_EQ(noDisplay.standardError, u"Tarnwick cannot reach the display \":4711\".\n"_s);

  for (const QString& mode : {u"--diagnose"_s, u"--benchmark"_s}) {
    const auto ended = runToEnd(home(), {mode, u"30"_s});
    EXPECT_EQ(ended.status, 1) << qPrintable(mode);
    EXPECT_EQ(ended.standardError, u"This version of Tarnwick does not offer %1 yet.\n"_s.arg(mode));
  }
  const auto measured = runToEnd(home(), {u"--command-bar-latency"_s, u"1"_s});
  EXPECT_TRUE(measured.standardOutput.contains(u"\niterations: 1 per query, 18 queries\n"_s)) << "without a display";
  EXPECT_EQ(measured.status, measured.standardOutput.endsWith(u"— ok\n"_s) ? 0 : 1);
  EXPECT_EQ(measured.standardError, QString());
  EXPECT_EQ(runToEnd(home(), {u"--restore-dock"_s}).status, 0);
  EXPECT_EQ(runToEnd(home(), {u"--write-fixture-config"_s, file()}).status, 0);
  EXPECT_TRUE(Persistence::read(file()).liveApps);
}

}  // namespace
}  // namespace tarnwick
