#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMutex>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QUrl>
#include <memory>

#include "app/BubblePlace.h"
#include "app/CommandLine.h"
#include "app/FixtureConfig.h"
#include "app/HotKeyTable.h"
#include "app/SingleInstance.h"
#include "app/SocketSession.h"
#include "base/DomainError.h"
#include "config/Persistence.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(CommandLine, TheFirstModeOfTheTableDecides) {
  struct Case {
    QString arguments;
    Mode mode;
    QString path;
  };
  const Case cases[] = {
      {u""_s, Mode::Run, {}},
      {u"--diagnose --restore-dock"_s, Mode::Diagnose, {}},
      {u"--restore-dock --network-diagnose --diagnose"_s, Mode::NetworkDiagnose, {}},
      {u"--snapshot --output x --claude-hook"_s, Mode::ClaudeHook, {}},
      {u"--command-bar-latency --snapshot"_s, Mode::Snapshot, {}},
      {u"--write-fixture-config a.json --restore-dock"_s, Mode::WriteFixtureConfig, u"a.json"_s},
      {u"--restore-dock --write-fixture-config"_s, Mode::RestoreDock, {}},
      {u"--write-fixture-config"_s, Mode::Run, {}},
      {u"--restore-dock-directory x"_s, Mode::Run, {}},
      {u"--benchmark-label x"_s, Mode::Run, {}},
      {u"--benchmark-label x --benchmark 30"_s, Mode::Benchmark, {}},
      {u"--benchmark"_s, Mode::Run, {}},
      {u"--benchmark half"_s, Mode::Run, {}},
      {u"--benchmark 0"_s, Mode::Run, {}},
      {u"--benchmark inf"_s, Mode::Run, {}},
      {u"--diagnosed"_s, Mode::Run, {}},
      {u"--version --help"_s, Mode::Help, {}},
      {u"--help --restore-dock"_s, Mode::RestoreDock, {}},
  };
  for (const Case& c : cases) {
    const CommandLine line = CommandLine::parse(c.arguments.split(u' ', Qt::SkipEmptyParts));
    EXPECT_EQ(line.mode, c.mode) << qPrintable(c.arguments);
    EXPECT_EQ(line.path, c.path) << qPrintable(c.arguments);
  }
  EXPECT_EQ(CommandLine::parse({u"--restore-dock"_s, u"--restore-dock-directory"_s, u"d"_s}).directory, u"d"_s);
  EXPECT_FALSE(CommandLine::parse({u"--restore-dock"_s, u"--restore-dock-directory"_s}).directory);
  EXPECT_EQ(CommandLine::parse({u"--benchmark"_s, u" 2.5 "_s}).mode, Mode::Benchmark);
}

TEST(CommandLine, AMeasurementOfTheCommandBarTakesItsCount) {
  const struct {
    const char* after;
    std::optional<int> count;
  } cases[] = {{"", {}}, {"5", 5}, {"0", 0}, {"-3", 0}, {"2.5", {}}, {"many", {}}, {"--toggle", {}}};
  for (const auto& each : cases) {
    const QString arguments = u"--command-bar-latency "_s + QString::fromLatin1(each.after);
    EXPECT_EQ(CommandLine::parse(arguments.split(u' ', Qt::SkipEmptyParts)).iterations, each.count) << each.after;
  }
}

TEST(CommandLine, OrdersAndFilesReachTheRun) {
  EXPECT_EQ(CommandLine::parse({u"--toggle"_s}).order, (Order{Order::Kind::Toggle, 0}));
  EXPECT_EQ(CommandLine::parse({u"--profile"_s, u"3"_s}).order, (Order{Order::Kind::Profile, 3}));
  EXPECT_EQ(CommandLine::parse({u"--app"_s, u"9"_s}).order, (Order{Order::Kind::App, 9}));
  EXPECT_EQ(CommandLine::parse({u"--app"_s, u"0"_s}).remarks.size(), 1);
  EXPECT_FALSE(CommandLine::parse({u"--profile"_s, u"three"_s}).order);
  EXPECT_FALSE(CommandLine::parse({u"--profile"_s}).order);
  EXPECT_EQ(CommandLine::parse({u"look.tarnwickspace"_s, u"--profile"_s, u"3"_s, u"--benchmark"_s, u"x"_s}).files,
            QStringList{u"look.tarnwickspace"_s});

  // What belongs to the toolkit is no file and no mistake; a mistake is reported and stops nothing.
  const CommandLine odd = CommandLine::parse({u"-platform"_s, u"xcb"_s, u"--style"_s, u"Fusion"_s, u"-reverse"_s,
                                              u"--platform=xcb"_s, u"--toggel"_s, u"--profile"_s, u"-1"_s, u"x"_s});
  EXPECT_EQ(odd.mode, Mode::Run);
  EXPECT_EQ(odd.files, QStringList{u"x"_s});
  ASSERT_EQ(odd.remarks.size(), 2);
  EXPECT_TRUE(odd.remarks[0].contains(u"--toggel"_s));
  EXPECT_TRUE(odd.remarks[1].contains(u"--profile"_s));

  // Only what is there, and addresses, are handed to anybody.
  QTemporaryDir folder;
  QFile look(folder.filePath(u"a look.tarnwickspace"_s));
  ASSERT_TRUE(look.open(QIODevice::WriteOnly));
  EXPECT_EQ(SingleInstance::urls(
                {u"a look.tarnwickspace"_s, u"gone.tarnwickspace"_s, u"https://example.org/x"_s, u""_s}, folder.path()),
            (QStringList{u"file://"_s + folder.path() + u"/a%20look.tarnwickspace"_s, u"https://example.org/x"_s}));
  EXPECT_EQ(SingleInstance::missing(
                {u"a look.tarnwickspace"_s, u"gone.tarnwickspace"_s, u"https://example.org/x"_s, u""_s}, folder.path()),
            QStringList{u"There is no file “gone.tarnwickspace”."_s});
}

TEST(SingleInstance, NewerBuildsReplaceOlderOnes) {
  const QDateTime built(QDate(2026, 11, 24), QTime(12, 0));
  using enum SingleInstance::Decision;
  EXPECT_EQ(SingleInstance::decide(std::nullopt, built, false), GoOn);
  EXPECT_EQ(SingleInstance::decide(built.addSecs(-1), built, true), GoOn);
  EXPECT_EQ(SingleInstance::decide(built.addSecs(-1), built, false), Replace);
  EXPECT_EQ(SingleInstance::decide(built, built, false), HandOver);
  EXPECT_EQ(SingleInstance::decide(built.addSecs(1), built, false), HandOver);
}

TEST(DataFolderLock, HoldsUntilItsOwnerGoes) {
  using enum DataFolderLock::Taking;
  QTemporaryDir folder;
  const QString data = folder.filePath(u"not/there/yet"_s);
  auto first = std::make_unique<DataFolderLock>(data);
  DataFolderLock second(data);
  EXPECT_EQ(first->take(), Held);
  EXPECT_EQ(second.take(), OthersHave);
  EXPECT_EQ(second.holder(), QCoreApplication::applicationPid());
  EXPECT_EQ(QFileInfo(data).permissions() & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther),
            QFile::Permissions());
  // A number that was left by somebody else names no holder.
  QFile written(data + u"/tarnwick.lock"_s);
  ASSERT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Truncate));
  written.write("1\n");
  written.close();
  EXPECT_EQ(second.holder(), 0);
  first.reset();
  EXPECT_EQ(second.take(), Held);
  EXPECT_EQ(DataFolderLock(data + u"/tarnwick.lock/below a file"_s).take(), Impossible);
}

TEST(DataFolderLock, WritesOverNothingButANumberOfItsOwn) {
  using enum DataFolderLock::Taking;
  const QTemporaryDir folder;
  const QString lock = folder.filePath(u"tarnwick.lock"_s);
  const QString precious = folder.filePath(u"precious"_s);
  const auto content = [](const QString& path) {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  };
  const auto write = [](const QString& path, const QByteArray& bytes) {
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(bytes);
  };
  write(precious, "12");
  ASSERT_TRUE(QFile::link(precious, lock));
  EXPECT_EQ(DataFolderLock(folder.path()).take(), Impossible);
  QFile::remove(lock);
  ASSERT_EQ(::link(QFile::encodeName(precious).constData(), QFile::encodeName(lock).constData()), 0);
  EXPECT_EQ(DataFolderLock(folder.path()).take(), Held);
  EXPECT_EQ(content(precious), "12");
  QFile::remove(lock);
  for (const QByteArray& other : {QByteArray("a text"), QByteArray("7 of a longer text than any number")}) {
    write(lock, other);
    EXPECT_EQ(DataFolderLock(folder.path()).take(), Held);
    EXPECT_EQ(content(lock), other);
  }
  write(lock, "4194303\n");
  DataFolderLock first(folder.path());
  EXPECT_EQ(first.take(), Held);
  EXPECT_EQ(content(lock).trimmed().toLongLong(), QCoreApplication::applicationPid());
}

TEST(SingleInstance, KnowsWhenAProcessBegan) {
  const QDateTime before = QDateTime::currentDateTime();
  QProcess process;
  process.start(u"sleep"_s, {u"60"_s});
  ASSERT_TRUE(process.waitForStarted());
  const QDateTime after = QDateTime::currentDateTime();
  const auto started = SingleInstance::startOf(process.processId());
  ASSERT_TRUE(started);
  // The kernel counts hundredths of a second.
  EXPECT_GE(*started, before.addMSecs(-10));
  EXPECT_LE(*started, after.addMSecs(20));
  process.kill();
  process.waitForFinished();
  EXPECT_FALSE(SingleInstance::startOf(process.processId()));
}

/// A session in which the other copy answers as specified.
struct FakeSession : SessionApplication {
  bool isReachable() const override { return reachable; }
  bool own() override { return false; }
  void release() override {}
  qint64 otherProcess() const override { return process; }
  bool activateOther() override { return tell(u"activate"_s); }
  bool openInOther(const QStringList& urls) override { return tell(u"open %1"_s.arg(urls.size())); }
  bool actInOther(const QString& action, const QVariantList&) override { return tell(action); }
  bool tell(const QString& what) {
    asked << what;
    if (onAsked) onAsked();
    return refusals-- <= 0;
  }

  bool reachable = true;
  qint64 process = QCoreApplication::applicationPid();
  int refusals = 0;
  std::function<void()> onAsked;
  QStringList asked;
};

TEST(SingleInstance, HandsOverUntilItArrivesOrThePlaceIsFree) {
  QTemporaryDir folder;
  auto running = std::make_unique<DataFolderLock>(folder.path());
  ASSERT_EQ(running->take(), DataFolderLock::Taking::Held);
  QStringList said;
  const auto resolve = [&](FakeSession& session, const QStringList& arguments) {
    DataFolderLock lock(folder.path());
    return SingleInstance::resolve(lock, session, u"/not/there"_s, CommandLine::parse(arguments),
                                   {.say = [&](const QString& sentence) { said << sentence; }, .alert = {}});
  };
  FakeSession busy;
  busy.refusals = 2;
  EXPECT_EQ(resolve(busy, {folder.path(), u"--toggle"_s}), 0);
  EXPECT_EQ(busy.asked, (QStringList{u"open 1"_s, u"open 1"_s, u"open 1"_s, u"toggle"_s}));

  FakeSession another;  // The name belongs to a copy with other data.
  another.process = 1;
  EXPECT_EQ(resolve(another, {u"--toggle"_s}), 1);
  EXPECT_TRUE(another.asked.isEmpty());
  EXPECT_EQ(said, QStringList{u"Tarnwick is already running but does not respond."_s});

  FakeSession ending;
  ending.refusals = 100;
  ending.onAsked = [&] { running.reset(); };
  EXPECT_EQ(resolve(ending, {}), std::nullopt);
  EXPECT_EQ(ending.asked.size(), 1);
}

TEST(SingleInstance, ReachesACopyWithoutANameByTheDoorBesideItsLock) {
  QTemporaryDir folder;
  DataFolderLock running(folder.path());
  ASSERT_EQ(running.take(), DataFolderLock::Taking::Held);
  // On a thread of its own, as the copy is a process of its own.
  QThread thread;
  QObject worker;
  std::unique_ptr<SocketSession> door;
  QMutex mutex;
  QStringList arrived;
  const auto note = [&](const QString& what) {
    const QMutexLocker lock(&mutex);
    arrived << what;
  };
  worker.moveToThread(&thread);
  thread.start();
  const auto there = [&](const std::function<void()>& work) {
    QMetaObject::invokeMethod(&worker, work, Qt::BlockingQueuedConnection);
  };
  there([&] {
    door = std::make_unique<SocketSession>(folder.path());
    QObject::connect(door.get(), &SessionApplication::activated, [&] { note(u"activated"_s); });
    QObject::connect(door.get(), &SessionApplication::openRequested,
                     [&](const QStringList& urls) { note(urls.join(u' ')); });
    QObject::connect(door.get(), &SessionApplication::actionRequested,
                     [&](const QString& action, const QVariantList& parameter) {
                       note(action + u' ' + parameter.value(0).toString());
                     });
    door->refusal = [](const QString& action, const QVariantList& parameter) {
      return action == "profile"_L1 && parameter.value(0) == 7 ? u"There is no profile 7."_s : QString();
    };
    EXPECT_TRUE(door->own());
  });
  FakeSession session;
  session.process = 0;
  QStringList said;
  const auto resolve = [&](const QStringList& arguments) {
    DataFolderLock lock(folder.path());
    return SingleInstance::resolve(lock, session, u"/not/there"_s, CommandLine::parse(arguments),
                                   {.say = [&](const QString& sentence) { said << sentence; }, .alert = {}});
  };
  EXPECT_EQ(resolve({u"--foo"_s}), 2) << "nothing else is asked for, and what that was is said elsewhere";
  EXPECT_EQ(resolve({u"--profile"_s, u"7"_s}), 2);
  EXPECT_EQ(said, QStringList{u"There is no profile 7."_s});
  EXPECT_EQ(resolve({}), 0);
  EXPECT_EQ(resolve({u"--toggle"_s}), 0);
  EXPECT_EQ(resolve({folder.path(), u"--profile"_s, u"3"_s}), 0);
  there([&] { QCoreApplication::sendPostedEvents(door.get()); });
  const QString url = QUrl::fromLocalFile(folder.path()).toString();
  EXPECT_EQ(arrived, (QStringList{u"activated"_s, u"toggle "_s, url, u"profile 3"_s}));
  EXPECT_TRUE(session.asked.isEmpty());
  there([&] { door.reset(); });
  thread.quit();
  thread.wait();
}

TEST(SingleInstance, WithoutALockTheNameDecides) {
  QTemporaryDir folder;
  QFile inTheWay(folder.filePath(u"data"_s));
  ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
  DataFolderLock lock(inTheWay.fileName());
  FakeSession session;
  EXPECT_EQ(SingleInstance::resolve(lock, session, u"/not/there"_s, {}, {}), 0);
  EXPECT_EQ(session.asked, QStringList{u"activate"_s});
  session.process = 0;
  EXPECT_EQ(SingleInstance::resolve(lock, session, u"/not/there"_s, {}, {}), std::nullopt);
}

TEST(HotKeyTable, NamesTheEnabledKeysInOrder) {
  DesktopOptions options;
  const auto rows = HotKeyTable::rows(options);
  ASSERT_EQ(rows.size(), 13);
  EXPECT_EQ(rows[0], (HotKeyTable::Row{1, {2, 6400}}));
  EXPECT_EQ(rows[1], (HotKeyTable::Row{2, {49, 2048}}));
  EXPECT_EQ(rows[2], (HotKeyTable::Row{10, {29, 6400}}));
  EXPECT_EQ(rows[7], (HotKeyTable::Row{15, {23, 6400}}));
  EXPECT_EQ(rows[8], (HotKeyTable::Row{16, {22, 6400}}));
  EXPECT_EQ(rows[12], (HotKeyTable::Row{3, {2, 6912}}));
  EXPECT_EQ(HotKeyTable::signature(options), u"true:true:2:6400:6400:true:49:2048"_s);
  EXPECT_EQ(HotKeyTable::commandBarFallbacks(options), (QList<HotKeyRequest>{{49, 256}, {49, 6144}}));
  const auto apps = HotKeyTable::appRows(options);
  ASSERT_EQ(apps.size(), 9);
  EXPECT_EQ(apps[0], (HotKeyTable::Row{31, {18, 256}}));
  EXPECT_EQ(apps[8], (HotKeyTable::Row{39, {25, 256}}));
  options.commandBarModifiers = 4096;
  EXPECT_TRUE(HotKeyTable::commandBarFallbacks(options).isEmpty());
  options.shortcutModifiers = 6912;  // Shift is in it.
  options.profileShortcutEnabled = options.commandBarEnabled = false;
  DeskOptions desk;
  desk.appKeys = false;
  options.setDesk(desk);
  EXPECT_TRUE(HotKeyTable::appRows(options).isEmpty());
  EXPECT_EQ(HotKeyTable::rows(options).size(), 1);
  EXPECT_EQ(HotKeyTable::signature(options), u"true:false:2:6912:6400:false:49:4096"_s);
}

TEST(BubblePlace, LeavesRoomForAPanelAndStaysOnTheDisplay) {
  const QRect room(0, 0, 1000, 700);
  const struct {
    const char* name;
    QRect panel;
    QRect wanted;
    QRect place;
  } cases[] = {
      {"not in its way", {0, 300, 320, 300}, {400, 560, 200, 40}, {400, 560, 200, 40}},
      {"to the right, which is nearer", {300, 300, 320, 300}, {400, 560, 300, 40}, {628, 560, 300, 40}},
      {"to the left, which is nearer", {500, 300, 320, 300}, {400, 560, 300, 40}, {192, 560, 300, 40}},
      {"to the left, for there is no room", {500, 300, 320, 300}, {650, 560, 200, 40}, {292, 560, 200, 40}},
      {"above a panel in the middle", {340, 300, 320, 300}, {320, 560, 360, 40}, {320, 252, 360, 40}},
      {"below one that hangs from the top", {340, 0, 320, 300}, {320, 20, 360, 40}, {320, 308, 360, 40}},
      {"in a corner, where a panel fills the height", {340, 0, 320, 700}, {320, 560, 360, 40}, {0, 560, 360, 40}},
  };
  for (const auto& each : cases) EXPECT_EQ(clearOf(each.panel, each.wanted, room), each.place) << each.name;
}

TEST(FixtureConfig, IsWrittenWholeOrRefused) {
  QTemporaryDir folder;
  const QString path = folder.filePath(u"made/fixture.json"_s);
  ASSERT_EQ(writeFixtureConfig(path), 0);
  const DockConfiguration config = Persistence::read(path);
  EXPECT_TRUE(config.onboardingComplete && config.liveApps);
  EXPECT_EQ(config.layout, DockLayout::Fixed);
  EXPECT_EQ(config.position + config.alignment, u"bottomleft"_s);

  testing::internal::CaptureStderr();
  EXPECT_EQ(writeFixtureConfig(path + u"/below a file"_s), 1);
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(said.starts_with("could not write " + path.toStdString() + "/below a file: ")) << said;
  EXPECT_TRUE(said.ends_with("\n"));
}

}  // namespace
}  // namespace tarnwick
