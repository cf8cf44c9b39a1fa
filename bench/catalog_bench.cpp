// What the catalog costs: its one-time construction, which a start pays, and the look-up that every tile pays at each
// layout. Promises in a release build: construction below a millisecond, a look-up below 50 ns.

#include <benchmark/benchmark.h>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

// Runs first and once: later calls find the lists built.
void firstUse(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Catalog::items().size());
}
BENCHMARK(firstUse)->Iterations(1)->Unit(benchmark::kMicrosecond);

void findEachKnownKind(benchmark::State& state) {
  QStringList kinds;
  for (const WidgetDefinition& item : Catalog::items()) kinds.append(QString(item.id.data(), item.id.size()));
  qsizetype at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(&Catalog::find(kinds.at(at)));
    if (++at == kinds.size()) at = 0;
  }
}
BENCHMARK(findEachKnownKind);

void findUnknownKind(benchmark::State& state) {
  const QString kind = u"kindOfANewerVersion"_s;
  for (auto _ : state) benchmark::DoNotOptimize(&Catalog::find(kind));
}
BENCHMARK(findUnknownKind);

}  // namespace
}  // namespace tarnwick
