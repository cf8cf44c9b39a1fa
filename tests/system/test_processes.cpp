#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <csignal>

#include "platform/linux/LinuxProcessSource.h"
#include "platform/linux/ProcessStat.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "system/ProcessCost.h"
#include "system/ProcessMonitor.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct ScriptedProcesses final : ProcessSource {
  QList<ProcessReading> now;
  QList<ProcessReading> read() override { return now; }
  void end(const ProcessReading&) override {}
};

TEST(ProcessMonitor, CpuIsTheGrowthOfOneAndTheSameProcess) {
  int argc = 0;
  const QCoreApplication app(argc, nullptr);
  auto owned = std::make_unique<ScriptedProcesses>();
  auto& source = *owned;
  test::TestScheduler clock;
  ProcessMonitor monitor(std::move(owned), clock);
  EXPECT_EQ(monitor.message(), u"Sampling processes…"_s);
  int changes = 0;
  QObject::connect(&monitor, &ProcessMonitor::changed, &monitor, [&] { ++changes; });

  constexpr auto kSeconds = [](double seconds) { return static_cast<quint64>(seconds * 1e9); };
  const struct {
    const char* what;
    double pause;
    QList<ProcessReading> readings;
    QList<std::optional<double>> cpu;
  } samples[] = {
      {"the first sample", 0, {{7, 1, u"a"_s, kSeconds(5), 10}, {8, 1, u"b"_s, 0, 0}}, {{}, {}}},
      {"cores and shares", 4, {{7, 1, u"a"_s, kSeconds(15), 10}, {8, 1, u"b"_s, kSeconds(0.5), 0}}, {250.0, 12.5}},
      {"a reused identifier", 4, {{7, 2, u"c"_s, kSeconds(16), 10}, {8, 1, u"b"_s, kSeconds(0.5), 0}}, {{}, 0.0}},
      {"time that went down", 4, {{7, 2, u"c"_s, kSeconds(15), 10}}, {{}}},
      {"back after a gap is new", 4, {{8, 1, u"b"_s, kSeconds(9), 0}}, {{}}},
      {"no time passed", 0, {{8, 1, u"b"_s, kSeconds(10), 0}}, {{}}},
      {"and on from there", 2, {{8, 1, u"b"_s, kSeconds(11), 0}}, {50.0}},
      {"nothing is told", 2, {}, {}},
  };
  for (const auto& sample : samples) {
    clock.advance(sample.pause);
    source.now = sample.readings;
    const int before = changes;
    monitor.refresh();
    EXPECT_TRUE(monitor.loading());
    monitor.refresh();
    ASSERT_TRUE(waitFor([&] { return changes > before; })) << sample.what;
    EXPECT_EQ(changes, before + 1) << sample.what;
    EXPECT_FALSE(monitor.loading());
    ASSERT_EQ(monitor.rows().size(), sample.readings.size()) << sample.what;
    for (qsizetype i = 0; i < sample.readings.size(); ++i) {
      EXPECT_EQ(monitor.rows()[i].reading, sample.readings[i]) << sample.what;
      EXPECT_EQ(monitor.rows()[i].cpu, sample.cpu[i]) << sample.what;
    }
    EXPECT_EQ(monitor.message(), sample.readings.isEmpty()
                                     ? u"Process metrics are unavailable on this Mac."_s
                                     : u"CPU uses one core as 100%. RAM is each process’s physical footprint."_s);
  }
  // Its owner may go while a sample is under way.
  monitor.refresh();
}

TEST(ProcessRanking, TheBusiestAndTheLargestComeFirst) {
  QList<ProcessUsage> rows;
  const auto add = [&](qint32 pid, quint64 memory, std::optional<double> cpu) {
    rows.append({{pid, 1, {}, 0, memory}, cpu});
  };
  add(1, 500, {});
  add(2, 100, 0.0);
  add(3, 300, 120.0);
  add(4, 300, 7.0);
  add(5, 100, 7.0);
  add(6, 300, 7.0);
  const auto order = [&](ProcessOrder by, int count) {
    QList<qint32> pids;
    for (const auto& row : ProcessRanking::top(rows, by, count)) pids.append(row.reading.pid);
    return pids;
  };
  EXPECT_EQ(order(ProcessOrder::CPU, 12), (QList<qint32>{3, 4, 6, 5, 2, 1}));
  EXPECT_EQ(order(ProcessOrder::RAM, ProcessRanking::tileRows), (QList<qint32>{1, 3, 4}));
  EXPECT_EQ(order(ProcessOrder::RAM, 0), QList<qint32>());
  EXPECT_EQ(ProcessRanking::cpuText(104.96), u"105.0%"_s);
  EXPECT_EQ(ProcessRanking::cpuText({}), u"—"_s);
}

TEST_F(FolderTest, ProcessesAreReadFromTheKernelsFiles) {
  const QByteArray rest = " 1 1 1 0 -1 4194560 10 20 0 0 250 50 900 900 20 0 3 0 4711 99999 300 18446744073709551615 1";
  const QByteArray kernelThread = " 2 0 0 0 -1 2129984 0 0 0 0 5 0 0 0 20 0 1 0 30 0 0 18446744073709551615 0";
  const struct {
    const char* pid;
    QByteArray stat, statm, command;
    std::optional<ProcessReading> reading;
  } cases[] = {
      {"10", "10 (sh) S" + rest, "900 300 60 1 0 80 0", "", ProcessReading{10, 4711, u"sh"_s, 3'000'000'000, 240}},
      {"11", "11 (a) b (c\n) ) R" + rest, "900 300 300", "",
       ProcessReading{11, 4711, u"a) b (c )"_s, 3'000'000'000, 0}},
      {"12", "12 (chromium-browse) S" + rest, "900 50 60", QByteArray("/usr/lib/chromium-browser-stable\0--type", 39),
       ProcessReading{12, 4711, u"chromium-browser-stable"_s, 3'000'000'000, 0}},
      {"13", "13 (Isolated Web Co) S" + rest, "900 60 0", "/usr/lib/firefox",
       ProcessReading{13, 4711, u"Isolated Web Co"_s, 3'000'000'000, 60}},
      {"14", "14 () S" + rest, "900 60 0", "", ProcessReading{14, 4711, u"Process 14"_s, 3'000'000'000, 60}},
      {"15", "15 (caf\xe9) S" + rest, "1 1 0", "", ProcessReading{15, 4711, u"caf\uFFFD"_s, 3'000'000'000, 1}},
      {"16", "16 (kworker/0:1) I" + kernelThread, "", "", ProcessReading{16, 30, u"kworker/0:1"_s, 50'000'000, 0}},
      {"17", "17 (cut off) S 1 1 1 0 -1 41", "1 1 0", "", {}},
      {"18", "18 (no memory) S" + rest, "", "", {}},
      {"19", "", "1 1 0", "", {}},
      {"20", "20 (x", "1 1 0", "", {}},
      {"self", "10 (sh) S" + rest, "1 1 0", "", {}},
      {"-5", "10 (sh) S" + rest, "1 1 0", "", {}},
      {"99999999999", "10 (sh) S" + rest, "1 1 0", "", {}},
  };
  QHash<qint32, ProcessReading> wanted;
  const auto page = static_cast<quint64>(::sysconf(_SC_PAGESIZE));
  for (const auto& c : cases) {
    const QString folder = QString::fromLatin1(c.pid) + u'/';
    put(folder + "stat"_L1, c.stat);
    put(folder + "statm"_L1, c.statm);
    put(folder + "cmdline"_L1, c.command);
    if (c.reading) wanted.insert(c.reading->pid, *c.reading);
  }
  for (auto& reading : wanted) reading.memory *= page;
  LinuxProcessSource source(folder_.path());
  for (int pass = 0; pass < 2; ++pass) {
    const auto readings = source.read();
    EXPECT_EQ(readings.size(), wanted.size());
    for (const auto& reading : readings) EXPECT_EQ(reading, wanted.value(reading.pid)) << reading.pid;
  }
  EXPECT_TRUE(LinuxProcessSource(at(u"nowhere"_s)).read().isEmpty());
}

TEST(LinuxProcessSource, EndsExactlyTheProcessThatWasShown) {
  LinuxProcessSource source;
  const auto readingOf = [&](qint32 pid) {
    for (const auto& reading : source.read()) {
      if (reading.pid == pid) return reading;
    }
    return ProcessReading{};
  };
  const auto own = readingOf(static_cast<qint32>(::getpid()));
  EXPECT_GT(own.memory, 0u);
  EXPECT_GT(own.start, 0u);
  EXPECT_GT(ProcessCost::cpuSeconds(), 0.0);

  const pid_t child = ::fork();
  if (child == 0) {
    for (;;) ::pause();
  }
  ProcessReading shown = readingOf(child);
  ASSERT_EQ(shown.pid, child);
  ++shown.start;
  source.end(shown);
  EXPECT_EQ(::waitpid(child, nullptr, WNOHANG), 0) << "another process has this identifier now";
  --shown.start;
  source.end(shown);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
  EXPECT_EQ(failureOf([&] { source.end(shown); }), "") << "it is gone already";
}

}  // namespace
}  // namespace tarnwick
