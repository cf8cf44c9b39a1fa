#include <gtest/gtest.h>

#include "views/families/system/MachineWords.h"
#include "views/families/system/ProcessSection.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

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
  PanelContext context = fixture.contextOf(u"cpu"_s);
  int readings = 0;
  context.actions.refreshProcesses = [&readings] { ++readings; };
  ProcessSection section(context, ProcessOrder::CPU);
  EXPECT_EQ(readings, 1) << "at once";
  TileSources sources = SnapshotFixture::sources();
  const QList<ProcessUsage> known = std::exchange(sources.readings.processes, {});
  section.fill(sources);
  const int height = section.sizeHint().height();
  fixture.store().heartbeat();
  fixture.store().heartbeat();
  EXPECT_EQ(readings, 3) << "until there is something to show";
  sources.readings.processes = known;
  for (ProcessUsage& usage : sources.readings.processes) usage.cpu.reset();
  section.fill(sources);
  fixture.store().heartbeat();
  EXPECT_EQ(readings, 4) << "the first sample has no loads";
  sources.readings.processes = known;
  section.fill(sources);
  EXPECT_EQ(section.sizeHint().height(), height) << "nothing moved";
  for (int i = 0; i < 8; ++i) fixture.store().heartbeat();
  EXPECT_EQ(readings, 6);
  fixture.store().add(u"processTopApps"_s);
  for (int i = 0; i < 8; ++i) fixture.store().heartbeat();
  EXPECT_EQ(readings, 6) << "the beat does it for the tile";
}

}  // namespace
}  // namespace tarnwick
