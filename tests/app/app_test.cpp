#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "app/Autostart.h"
#include "app/CommandLine.h"
#include "app/FixtureConfig.h"
#include "app/HotKeyTable.h"
#include "app/SingleInstance.h"
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
      {u"--diagnosed"_s, Mode::Run, {}},
  };
  for (const Case& c : cases) {
    const CommandLine line = CommandLine::parse(c.arguments.split(u' ', Qt::SkipEmptyParts));
    EXPECT_EQ(line.mode, c.mode) << qPrintable(c.arguments);
    EXPECT_EQ(line.path, c.path) << qPrintable(c.arguments);
  }
  EXPECT_EQ(CommandLine::parse({u"--restore-dock"_s, u"--restore-dock-directory"_s, u"d"_s}).directory, u"d"_s);
  EXPECT_FALSE(CommandLine::parse({u"--restore-dock"_s, u"--restore-dock-directory"_s}).directory);
}

TEST(CommandLine, OrdersAndFilesReachTheRun) {
  EXPECT_EQ(CommandLine::parse({u"--toggle"_s}).order, (Order{Order::Kind::Toggle, 0}));
  EXPECT_EQ(CommandLine::parse({u"--profile"_s, u"3"_s}).order, (Order{Order::Kind::Profile, 3}));
  EXPECT_FALSE(CommandLine::parse({u"--profile"_s, u"three"_s}).order);
  EXPECT_FALSE(CommandLine::parse({u"--profile"_s}).order);
  EXPECT_EQ(CommandLine::parse({u"look.tarnwickspace"_s, u"--profile"_s, u"3"_s}).files,
            QStringList{u"look.tarnwickspace"_s});
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
  QTemporaryDir folder;
  const QString data = folder.filePath(u"not/there/yet"_s);
  auto first = std::make_unique<DataFolderLock>(data);
  DataFolderLock second(data);
  EXPECT_TRUE(first->take());
  EXPECT_FALSE(second.take());
  EXPECT_EQ(second.holder(), QCoreApplication::applicationPid());
  first.reset();
  EXPECT_TRUE(second.take());
}

TEST(HotKeyTable, NamesTheEnabledKeysInOrder) {
  DesktopOptions options;
  const auto rows = HotKeyTable::rows(options);
  ASSERT_EQ(rows.size(), 12);
  EXPECT_EQ(rows[0], (HotKeyTable::Row{1, {2, 6400}}));
  EXPECT_EQ(rows[1], (HotKeyTable::Row{2, {49, 2048}}));
  EXPECT_EQ(rows[2], (HotKeyTable::Row{10, {29, 6400}}));
  EXPECT_EQ(rows[7], (HotKeyTable::Row{15, {23, 6400}}));
  EXPECT_EQ(rows[8], (HotKeyTable::Row{16, {22, 6400}}));
  EXPECT_EQ(HotKeyTable::signature(options), u"true:true:2:6400:6400:true:49:2048"_s);
  options.profileShortcutEnabled = options.commandBarEnabled = false;
  EXPECT_EQ(HotKeyTable::rows(options).size(), 1);
  EXPECT_EQ(HotKeyTable::signature(options), u"true:false:2:6400:6400:false:49:2048"_s);
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

TEST(Autostart, WritesItsEntryOnceAndTakesItAway) {
  QTemporaryDir folder;
  const QString file = folder.filePath(u"autostart/entry.desktop"_s);
  const auto exec = [&] {
    QFile in(file);
    EXPECT_TRUE(in.open(QIODevice::ReadOnly));
    for (const QByteArray& line : in.readAll().split('\n')) {
      if (line.startsWith("Exec=")) return QString::fromUtf8(line.mid(5));
    }
    return QString();
  };
  Autostart::apply(false, u"/opt/tarnwick"_s, file);
  EXPECT_FALSE(QFile::exists(folder.filePath(u"autostart"_s)));
  Autostart::apply(true, u"/opt/my $dock%/tarnwick"_s, file);
  EXPECT_EQ(exec(), u"\"/opt/my \\\\$dock%%/tarnwick\""_s);
  Autostart::apply(true, u"/opt/tarnwick"_s, file);
  EXPECT_EQ(exec(), u"\"/opt/tarnwick\""_s);
  Autostart::apply(false, u"/opt/tarnwick"_s, file);
  EXPECT_FALSE(QFile::exists(file));
}

}  // namespace
}  // namespace tarnwick
