// What finding files by name costs, off the main thread. Promise: a million names answer within 30 ms.

#include <benchmark/benchmark.h>

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include "files/NameIndex.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kNames = 1'000'000;

/// Names as people and programs give them.
QByteArray someName(QRandomGenerator& random) {
  static const QByteArrayList words{"Report", "invoice", "IMG",  "holiday", "draft", "Überblick", "main",
                                    "index",  "test",    "copy", "README",  "notes", "budget",    "screenshot"};
  static const QByteArrayList endings{".txt", ".pdf", ".png", ".cpp", ".odt", ".jpg", ""};
  QByteArray name = words[random.bounded(words.size())];
  name += '-' + words[random.bounded(words.size())] + '_' + QByteArray::number(random.bounded(100'000));
  return name + endings[random.bounded(endings.size())];
}

QByteArray madeIndex() {
  QRandomGenerator random(1);
  NameIndex::Builder builder("/home/u");
  quint32 folder = 0;
  for (int i = 0; i < kNames; ++i) {
    const bool isFolder = i % 20 == 0;
    const auto place = builder.add(folder, someName(random), random.bounded(1'700'000'000), {.isFolder = isFolder});
    if (isFolder) folder = place.value_or(0);
  }
  return builder.finish();
}

/// Making the content of the file; reading the folders is not in it.
void build(benchmark::State& state) {
  for (auto _ : state) state.counters["bytes"] = static_cast<double>(madeIndex().size());
}
BENCHMARK(build)->Unit(benchmark::kMillisecond);

/// One query: opening, searching, the paths of the best, closing.
void query(benchmark::State& state, const QString& text) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"names"_s);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(madeIndex()) < 0) return state.SkipWithError("cannot be written");
  file.close();
  for (auto _ : state) {
    const auto index = NameIndex::open(path, "/home/u");
    const auto hits = index->find(text, 400);
    for (const NameIndex::Hit& hit : hits) benchmark::DoNotOptimize(index->path(hit.place));
    state.counters["hits"] = static_cast<double>(hits.size());
  }
}
BENCHMARK_CAPTURE(query, everywhere, u"re"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, often, u"report"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, once, u"report-notes_4711"_s)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, never, u"qqqqzz"_s)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnwick
