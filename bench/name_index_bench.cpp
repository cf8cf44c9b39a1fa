// What finding files by name costs, off the main thread. Promise: a million names answer within 30 ms and 60 MiB.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <chrono>
#include <deque>

#include "base/Scheduler.h"
#include "files/MappedNames.h"
#include "files/NameIndex.h"
#include "files/NameIndexKeeper.h"
#include "files/NameSearch.h"
#include "files/NameWalk.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kNames = 1'000'000;
constexpr int kInFolder = 20;
constexpr int kFoldersInFolder = 4;
constexpr int kFolders = kNames / kInFolder;

/// Names as people and programs give them.
QByteArray someName(QRandomGenerator& random) {
  static const QByteArrayList words{"Report", "invoice", "IMG",  "holiday", "draft", "Überblick", "main",
                                    "index",  "test",    "copy", "README",  "notes", "budget",    "screenshot"};
  static const QByteArrayList endings{".txt", ".pdf", ".png", ".cpp", ".odt", ".jpg", ""};
  QByteArray name = words[random.bounded(words.size())];
  name += '-' + words[random.bounded(words.size())] + '_' + QByteArray::number(random.bounded(100'000));
  return name + endings[random.bounded(endings.size())];
}

/// Calls `add` with the folder, the name and whether it is a folder itself, of a million names, and takes what stands
/// for the new one.
template <class Place, class Add>
void eachName(const Place& root, Add add) {
  QRandomGenerator random(1);
  std::deque<Place> waiting{root};
  int folders = 1;
  for (int i = 0; i < kNames;) {
    const Place folder = waiting.front();
    waiting.pop_front();
    for (int j = 0; j < kInFolder && i < kNames; ++j, ++i) {
      const bool isFolder = j < kFoldersInFolder && folders < kFolders;
      const QByteArray number = isFolder ? '+' + QByteArray::number(i) : QByteArray();
      const Place place = add(folder, someName(random) + number, isFolder, random);
      if (!isFolder) continue;
      waiting.push_back(place);
      ++folders;
    }
  }
}

QByteArray madeIndex() {
  NameIndex::Builder builder("/home/u");
  eachName<quint32>(0, [&](quint32 folder, const QByteArray& name, bool isFolder, QRandomGenerator& random) {
    return builder.add(folder, name, random.bounded(1'700'000'000), {.isFolder = isFolder}).value_or(0);
  });
  return builder.finish();
}

/// The most memory that this process had since it was asked to forget that, in MiB.
double peak(bool forget) {
  if (forget) {
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly)) file.write("5");
  }
  QFile status(u"/proc/self/status"_s);
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n'))
    if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024;
  return 0;
}

/// Making the content of the file; reading the folders is not in it.
void build(benchmark::State& state) {
  for (auto _ : state) state.counters["bytes"] = static_cast<double>(madeIndex().size());
}
BENCHMARK(build)->Unit(benchmark::kMillisecond);

bool write(const QString& path, const QByteArray& content) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

enum class Opening {
  Once,      ///< Before the measurement.
  Prepared,  ///< Before each query, and not measured: the bar does so as it opens.
  Measured   ///< As where the query comes at once.
};

/// One query: searching, the paths of the best.
void query(benchmark::State& state, const QString& text, Opening opening) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"names"_s);
  if (!write(path, madeIndex())) return state.SkipWithError("cannot be written");
  MappedNames mapped(path, "/home/u");
  mapped.open();
  const double before = peak(true);
  for (auto _ : state) {
    auto names = mapped.get();
    const auto hits = names->index->find(text, NameSearch::kMostCandidates, {}, names->newest);
    for (const NameIndex::Hit& hit : hits) benchmark::DoNotOptimize(names->index->path(hit.place));
    state.counters["hits"] = static_cast<double>(hits.size());
    if (opening == Opening::Once) continue;
    state.PauseTiming();
    names.reset();
    benchmark::DoNotOptimize(mapped.close());
    mapped.open();
    if (opening == Opening::Prepared) mapped.get();
    state.ResumeTiming();
  }
  state.counters["MiB"] = peak(false) - before;
}
BENCHMARK_CAPTURE(query, everywhere, u"re"_s, Opening::Once)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, often, u"report"_s, Opening::Once)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, once, u"report-notes_4711"_s, Opening::Once)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, never, u"qqqqzz"_s, Opening::Once)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, everywhere_first, u"re"_s, Opening::Prepared)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, never_first, u"qqqqzz"_s, Opening::Prepared)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, everywhere_at_once, u"re"_s, Opening::Measured)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(query, never_at_once, u"qqqqzz"_s, Opening::Measured)->Unit(benchmark::kMillisecond);

/// A million names on a disk: reading all of them, looking whether anything changed, and reading a hundred folders that
/// did. It takes its time to make them, so it runs only where TARNWICK_BENCH_DISK names a folder for them.
void disk(benchmark::State& state) {
  const QByteArray base = qgetenv("TARNWICK_BENCH_DISK");
  if (base.isEmpty()) return state.SkipWithError("TARNWICK_BENCH_DISK names no folder");
  const QByteArray root = base + "/home";
  if (::mkdir(root.constData(), 0700) == 0) {
    eachName<QByteArray>(root, [](const QByteArray& folder, const QByteArray& name, bool isFolder, QRandomGenerator&) {
      const QByteArray path = folder + '/' + name;
      if (isFolder) {
        ::mkdir(path.constData(), 0700);
      } else if (const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600); file >= 0) {
        ::close(file);
      }
      return path;
    });
  }
  const QString path = QFile::decodeName(base + "/names");
  for (auto _ : state) {
    QFile::remove(path);
    std::unique_ptr<NameIndex> known;
    for (const char* step : {"all", "same", "some"}) {
      if (qstrcmp(step, "some") == 0) {
        for (const quint32 place : known->newestFolders(100)) ::utimes(known->path(place).constData(), nullptr);
      }
      const double before = peak(true);
      const auto begin = std::chrono::steady_clock::now();
      const auto result = NameWalk::read({.root = root, .known = known.get()});
      if (!result) return state.SkipWithError("cannot be read");
      const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
      state.counters[std::string(step) + "_ms"] = took.count();
      state.counters[std::string(step) + "_MiB"] = peak(false) - before;
      state.counters[std::string(step) + "_folders"] = static_cast<double>(result->foldersRead);
      known.reset();
      if (!result->file.isEmpty() && !write(path, result->file)) return state.SkipWithError("cannot be written");
      known = NameIndex::open(path, root);
      if (!known) return state.SkipWithError("cannot be opened");
      state.counters["names"] = static_cast<double>(known->size());
    }
  }
}
BENCHMARK(disk)->Unit(benchmark::kMillisecond)->Iterations(1);

/// From the opening of the bar until nothing is left to do: once the first time, then where nothing was changed.
void opening(benchmark::State& state) {
  int none = 0;
  const QCoreApplication application(none, nullptr);
  const SystemScheduler clock;
  const QTemporaryDir folder;
  QDir home(folder.filePath(u"home"_s));
  constexpr int kFewFolders = 1'000;
  for (int i = 0; i < kFewFolders; ++i)
    if (!home.mkpath(u"%1/%2/report"_s.arg(i % kInFolder).arg(i))) return state.SkipWithError("cannot be made");
  for (auto _ : state) {
    NameIndexKeeper keeper(folder.filePath(u"names"_s), QFile::encodeName(home.path()), clock);
    QEventLoop loop;
    QObject::connect(&keeper, &NameIndexKeeper::rested, &loop, &QEventLoop::quit);
    keeper.opened();
    loop.exec();
    const auto names = keeper.names()->get();
    if (!names || names->index->find(u"report"_s, kNames).size() != kFewFolders)
      return state.SkipWithError("finds too little");
    state.counters["watched"] = static_cast<double>(keeper.watched());
    keeper.closed();
  }
}
BENCHMARK(opening)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
}  // namespace tarnwick
