#include <benchmark/benchmark.h>

#include "config/LayoutSignature.h"
#include "config/Persistence.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarnwick;

/// The largest document that is valid: 20 profiles of 150 widgets.
DockConfiguration largest() {
  DockConfiguration configuration;
  configuration.profiles.clear();
  const QStringList kinds{u"cpu"_s, u"ram"_s, u"digitalClock"_s, u"weatherCurrent"_s};
  for (qsizetype p = 0; p < DockConfiguration::kMostProfiles; ++p) {
    DockProfile profile{QUuid::createUuid(), u"Profile %1"_s.arg(p), {}};
    for (qsizetype w = 0; w < DockConfiguration::kMostWidgets; ++w) {
      profile.widgets.append({QUuid::createUuid(),
                              kinds[w % kinds.size()],
                              {},
                              {{u"minutes"_s, u"25"_s}, {u"deadline"_s, u"1700000000.5"_s}, {u"city"_s, u"Berlin"_s}}});
    }
    configuration.profiles.append(profile);
  }
  return configuration;
}

void decode(benchmark::State& state) {
  const QByteArray json = Persistence::encode(largest());
  for (auto _ : state) benchmark::DoNotOptimize(Persistence::decode(json));
  state.SetLabel("3,000 widgets; the promise is below 15 ms");
}
BENCHMARK(decode)->Unit(benchmark::kMillisecond);

void encode(benchmark::State& state) {
  const DockConfiguration configuration = largest();
  for (auto _ : state) benchmark::DoNotOptimize(Persistence::encode(configuration));
}
BENCHMARK(encode)->Unit(benchmark::kMillisecond);

// Paid for every change of the document, so once a second while a timer runs.
void signature(benchmark::State& state) {
  const DockConfiguration configuration = largest();
  const LayoutSignature before(configuration);
  for (auto _ : state) benchmark::DoNotOptimize(LayoutSignature(configuration) == before);
}
BENCHMARK(signature)->Unit(benchmark::kMillisecond);

}  // namespace
