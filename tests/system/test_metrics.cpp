#include <gtest/gtest.h>

#include <limits>

#include "support/TestScheduler.h"
#include "system/SystemMetrics.h"
#include "system/SystemSampler.h"

namespace tarnwick {
namespace {

constexpr quint32 kMax32 = std::numeric_limits<quint32>::max();
constexpr double kGiga = 1e9;

/// Counters that a test sets, and that count how often the slow ones are asked.
struct SetCounters final : SystemCounters {
  std::optional<ProcessorTicks> ticks;
  std::optional<MemoryReading> memoryNow;
  std::optional<NetworkReading> networkNow;
  std::optional<DiskReading> diskNow;
  std::optional<double> battery;
  int slowReadings = 0;
  bool awaits = false;

  std::optional<ProcessorTicks> processorTicks() override { return ticks; }
  std::optional<MemoryReading> memory() override { return memoryNow; }
  std::optional<NetworkReading> network() override { return networkNow; }
  std::optional<DiskReading> disk() override {
    ++slowReadings;
    return diskNow;
  }
  std::optional<double> batteryCharge() override { return battery; }
  BatteryFlow batteryFlow() override { return BatteryFlow::Charging; }
  bool awaitsSlowReading() const override { return awaits; }
};

TEST(SystemSampler, ProcessorLoadIsTheShareOfWhatWasNotIdle) {
  const struct {
    const char* what;
    std::optional<ProcessorTicks> ticks;
    double load;
  } steps[] = {
      {"the first sample", ProcessorTicks{100, 50, 800, 50}, 0.0},
      {"user, system and nice are busy", ProcessorTicks{110, 60, 870, 60}, 30.0},
      {"nothing passed", ProcessorTicks{110, 60, 870, 60}, 0.0},
      {"all idle", ProcessorTicks{110, 60, 970, 60}, 0.0},
      {"a failed read", std::nullopt, 0.0},
      {"the time since the last good read", ProcessorTicks{210, 60, 1270, 60}, 25.0},
      {"up to the edge", ProcessorTicks{kMax32 - 9, 60, kMax32 - 19, 60},
       (kMax32 - 219.0) / (2.0 * kMax32 - 1508) * 100},
      {"across the edge", ProcessorTicks{50, 60, 20, 60}, 60.0},
  };
  SystemSampler sampler;
  SetCounters counters;
  double now = 0.0;
  for (const auto& step : steps) {
    counters.ticks = step.ticks;
    EXPECT_NEAR(sampler.sample(counters, false, now += 2.0).cpu, step.load, 1e-9) << step.what;
  }
}

TEST(SystemSampler, NetworkRatesAreAveragesOverTheElapsedTime) {
  constexpr quint64 kHuge = quint64{1} << 40;
  const struct {
    const char* what;
    double now;
    std::optional<NetworkReading> bytes;
    double download;
    double upload;
  } steps[] = {
      {"the first sample", 100.0, NetworkReading{kHuge, 5000}, 0.0, 0.0},
      {"two seconds", 102.0, NetworkReading{kHuge + 4096, 5500}, 2048.0, 250.0},
      {"a gap", 202.0, NetworkReading{kHuge + 14096, 5500}, 100.0, 0.0},
      {"an adapter went away", 204.0, NetworkReading{900, 5600}, 0.0, 50.0},
      {"and what is left goes on", 206.0, NetworkReading{1100, 5600}, 100.0, 0.0},
      {"no time passed", 206.0, NetworkReading{9100, 9600}, 0.0, 0.0},
      {"a failed read", 208.0, std::nullopt, 0.0, 0.0},
      {"counts from the last good one", 210.0, NetworkReading{9500, 9600}, 100.0, 0.0},
  };
  SystemSampler sampler;
  SetCounters counters;
  for (const auto& step : steps) {
    counters.networkNow = step.bytes;
    const auto snapshot = sampler.sample(counters, false, step.now);
    EXPECT_DOUBLE_EQ(snapshot.download, step.download) << step.what;
    EXPECT_DOUBLE_EQ(snapshot.upload, step.upload) << step.what;
  }
}

TEST(SystemSampler, MemoryIsWhatIsNotAvailable) {
  // What is read, and the percentage, bytes used and bytes in all that come of it.
  const std::tuple<std::optional<MemoryReading>, double, double, double> cases[] = {
      {MemoryReading{16 * kGiga, 4 * kGiga}, 75, 12 * kGiga, 16 * kGiga},
      {MemoryReading{16 * kGiga, 17 * kGiga}, 0, 0, 16 * kGiga},
      {MemoryReading{16 * kGiga, std::nullopt}, 0, 0, 16 * kGiga},
      {MemoryReading{0, 0}, 0, 0, 0},
      {std::nullopt, 0, 0, 0},
  };
  SystemSampler sampler;
  SetCounters counters;
  for (const auto& [memory, percent, used, total] : cases) {
    counters.memoryNow = memory;
    const auto read = sampler.sample(counters, false, 0);
    EXPECT_EQ(std::tie(read.memory, read.memoryUsed, read.memoryTotal), std::tie(percent, used, total));
  }
}

TEST(SystemSampler, FastSamplesReuseTheSlowReadings) {
  SystemSampler sampler;
  SetCounters counters;
  counters.diskNow = DiskReading{500 * kGiga, 125 * kGiga};
  counters.battery = 104.0;
  EXPECT_EQ(sampler.sample(counters, false, 0.0), MetricsSnapshot{});
  auto snapshot = sampler.sample(counters, true, 2.0);
  EXPECT_DOUBLE_EQ(snapshot.disk, 75.0);
  EXPECT_DOUBLE_EQ(snapshot.diskFree, 125 * kGiga);
  EXPECT_EQ(snapshot.battery, 100.0) << "a worn battery may claim more than all";
  EXPECT_EQ(snapshot.batteryFlow, BatteryFlow::Charging);

  counters.diskNow = DiskReading{500 * kGiga, 500 * kGiga};
  counters.battery = std::nullopt;
  EXPECT_EQ(sampler.sample(counters, false, 4.0), snapshot);
  snapshot = sampler.sample(counters, true, 6.0);
  EXPECT_DOUBLE_EQ(snapshot.disk, 0.0);
  EXPECT_EQ(snapshot.battery, std::nullopt) << "the battery was taken out";

  counters.diskNow = std::nullopt;
  EXPECT_DOUBLE_EQ(sampler.sample(counters, true, 8.0).diskFree, 500 * kGiga) << "a failed read keeps the last";
}

TEST(SystemMetrics, ASlowReadingThatDidNotAnswerIsAskedForAgainAtTheNextSample) {
  auto owned = std::make_unique<SetCounters>();
  auto& counters = *owned;
  test::TestScheduler clock;
  SystemMetrics metrics(std::move(owned), clock);
  counters.awaits = true;
  metrics.sample();
  metrics.sample();
  counters.diskNow = DiskReading{500 * kGiga, 125 * kGiga};
  metrics.sample();
  EXPECT_EQ(counters.slowReadings, 3);
  EXPECT_DOUBLE_EQ(metrics.snapshot().disk, 75.0);
  counters.awaits = false;
  metrics.sample();
  EXPECT_EQ(counters.slowReadings, 3);
}

TEST(SystemMetrics, TheFirstSampleIsSlowAndThenEverySixteenthAndHistoriesKeepTheLastForty) {
  auto owned = std::make_unique<SetCounters>();
  auto& counters = *owned;
  test::TestScheduler clock;
  SystemMetrics metrics(std::move(owned), clock);
  int announced = 0;
  QObject::connect(&metrics, &SystemMetrics::changed, &metrics, [&] {
    ++announced;
    EXPECT_EQ(metrics.cpuHistory().size(), std::min(announced, SystemMetrics::depth));
    EXPECT_DOUBLE_EQ(metrics.networkHistory().last(), metrics.snapshot().download + metrics.snapshot().upload);
    EXPECT_EQ(metrics.holdsFirstSample(), announced <= SystemMetrics::depth) << announced;
  });
  counters.ticks = ProcessorTicks{};
  counters.networkNow = NetworkReading{};
  QList<int> slowAt;
  for (int i = 0; i < 41; ++i) {
    const int slowBefore = counters.slowReadings;
    counters.ticks->user += static_cast<quint32>(i);
    counters.ticks->idle += static_cast<quint32>(100 - i);
    counters.memoryNow = MemoryReading{100.0, 100.0 - i};
    counters.networkNow->received += 20;
    counters.networkNow->sent += static_cast<quint64>(i * 2);
    clock.advance(2);
    metrics.sample();
    if (counters.slowReadings > slowBefore) slowAt.append(i);
  }
  EXPECT_EQ(slowAt, (QList<int>{0, 16, 32}));
  EXPECT_EQ(announced, 41);
  ASSERT_EQ(metrics.ramHistory().size(), 40);
  EXPECT_DOUBLE_EQ(metrics.cpuHistory().first(), 1.0) << "the zero of the first sample is gone";
  EXPECT_DOUBLE_EQ(metrics.cpuHistory().last(), 40.0);
  EXPECT_DOUBLE_EQ(metrics.ramHistory().first(), 1.0);
  EXPECT_DOUBLE_EQ(metrics.networkHistory().first(), 11.0);
  EXPECT_DOUBLE_EQ(metrics.networkHistory().last(), 50.0);
}

}  // namespace
}  // namespace tarnwick
