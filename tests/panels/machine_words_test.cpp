#include <gtest/gtest.h>

#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "system/ProcessMonitor.h"
#include "views/families/system/MachineWords.h"
#include "views/families/system/ProcessSection.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

struct CountedProcesses final : ProcessSource {
  QList<ProcessReading> read() override {
    ++passes;
    return now;
  }
  void end(const ProcessReading&) override {}

  QList<ProcessReading> now;
  int passes = 0;  // Read only while no sample is under way.
};

TEST(MachineWords, TellAsMuchAsIsKnown) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  const QLocale german(QLocale::German);
  MachineReading reading;
  EXPECT_EQ(MachineWords::processor(english, reading) + MachineWords::uptime(reading), QString());
  reading.load = 0.5;
  EXPECT_EQ(MachineWords::processor(german, reading), u"load 0,50"_s);
  reading.cores = {{}, {}};
  reading.frequency = 3.45e9;
  EXPECT_EQ(MachineWords::processor(english, reading), u"2 cores · 3.5 GHz · load 0.50"_s);

  const std::pair<double, QString> times[] = {{-1, {}},
                                              {59, u"Up 0 minutes"_s},
                                              {3661, u"Up 1 hour, 1 minute"_s},
                                              {3 * 86400 + 4 * 3600, u"Up 3 days, 4 hours"_s}};
  for (const auto& [seconds, words] : times) {
    reading.uptime = seconds;
    EXPECT_EQ(MachineWords::uptime(reading), words);
  }

  constexpr double giga = 1024.0 * 1024 * 1024;
  const std::tuple<double, double, QString> swaps[] = {
      {0, 0, {}}, {0.2 * giga, 4 * giga, u"Swap 0.2 of 4 GB"_s}, {giga / 4, giga / 2, u"Swap 256 of 512 MB"_s}};
  for (const auto& [used, total, words] : swaps) {
    MemoryParts parts;
    parts.swapUsed = used;
    parts.swapTotal = total;
    EXPECT_EQ(MachineWords::swap(english, parts), words);
  }
}

TEST(ProcessSection, HasProcessesReadWhileNoTileDoes) {
  SnapshotStore fixture;
  fixture.store().edit([](DockConfiguration& config) {
    for (DockProfile& profile : config.profiles)
      profile.widgets.removeIf([](const DockWidget& widget) { return widget.kind == u"processTopApps"_s; });
  });
  auto owned = std::make_unique<CountedProcesses>();
  CountedProcesses& source = *owned;
  test::TestScheduler clock;
  ProcessMonitor monitor(std::move(owned), clock);
  const PanelContext fixed = fixture.contextOf(u"cpu"_s);
  const ReadingServices& others = fixed.readings;
  const PanelContext context{
      fixed.store,
      fixed.scheduler,
      fixed.toggles,
      fixed.commands,
      fixed.widget,
      fixed.display,
      fixed.sources,
      {others.recent, others.bookmarks, others.screenshots, others.stacks, others.thumbnails, monitor,
       others.temperature, others.machine, others.apps, others.windows, others.windowService, others.meeting,
       others.media, others.clipboard, others.pasteboard, others.connections}};
  const TileSources sources = SnapshotFixture::sources();
  // A sample at a time, as on a machine where a second is enough for one.
  const auto beat = [&] {
    clock.advance(1);
    fixture.store().heartbeat();
    ASSERT_TRUE(waitFor([&] { return !monitor.loading(); }));
  };
  ProcessSection section(context, ProcessOrder::CPU);
  ASSERT_TRUE(waitFor([&] { return !monitor.loading(); }));
  EXPECT_EQ(source.passes, 1) << "at once";
  section.fill(sources);
  const int height = section.sizeHint().height();
  beat();
  source.now = {{1, 1, u"a"_s, 0, 1}, {2, 1, u"b"_s, 0, 1}, {3, 1, u"c"_s, 0, 1}, {4, 1, u"d"_s, 0, 1}};
  beat();
  EXPECT_EQ(source.passes, 3) << "until there is something to show";
  section.fill(sources);
  beat();
  EXPECT_EQ(source.passes, 4) << "the first sample has no loads";
  section.fill(sources);
  EXPECT_EQ(section.sizeHint().height(), height) << "nothing moved";
  for (int i = 0; i < 8; ++i) beat();
  EXPECT_EQ(source.passes, 6);
  fixture.store().add(u"processTopApps"_s);
  for (int i = 0; i < 8; ++i) beat();
  EXPECT_EQ(source.passes, 6) << "the beat does it for the tile";
}

}  // namespace
}  // namespace tarnwick
