#include "commandbar/CommandBarLatency.h"

#include <QRandomGenerator>
#include <QUuid>
#include <algorithm>
#include <array>

#include "clipboard/ClipboardEntry.h"
#include "commandbar/CommandRanking.h"
#include "commandbar/CommandSources.h"
#include "commandbar/SymbolTable.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr std::array kQueries{"m"_L1,     "s"_L1,      "a"_L1,      "mail"_L1,   "calendar"_L1,    "safari"_L1,
                              "vsc"_L1,   "actmon"_L1, "sysp"_L1,   "2+2"_L1,    "1234*5678/3"_L1, "50%+10"_L1,
                              "arrow"_L1, "heart"_L1,  "thumbs"_L1, "qqqqzz"_L1, "report"_L1,      "scr"_L1};
constexpr int kCopies = 30;
constexpr int kSources = 6;
constexpr qsizetype kUsedApplications = 40;
constexpr double kWeek = 604'800;  // Seconds.
constexpr double kNanosecondsInMillisecond = 1'000'000;

struct LatencyFixture {
  explicit LatencyFixture(const QList<DesktopEntry>& installed) {
    // By their names alone: what else an entry says differs too much from one desktop to the next.
    for (const DesktopEntry& each : installed) {
      DesktopEntry entry;
      entry.path = each.path;
      entry.name = entry.untranslatedName = each.name;
      applications << entry;
    }
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (int i = 0; i < kCopies; ++i) {
      ClipboardEntry copy;
      copy.id = QUuid::createUuid();
      copy.value = u"clipboard entry number %1 with some text in it"_s.arg(i);
      copy.added = now;
      copies << copy;
    }
    for (const DesktopEntry& each : applications.first(std::min(applications.size(), kUsedApplications))) {
      const double ago = QRandomGenerator::global()->bounded(kWeek);
      usage.record("app:"_L1 + each.path, now.addMSecs(static_cast<qint64>(-ago * 1000)));
    }
  }

  /// All rows are made anew, also those that the bar makes only when something changed.
  QList<CommandItem> rows(const QString& query) const {
    QList<ReadyRows> sources;
    sources.reserve(kSources);
    if (auto row = CommandSources::calculation(query)) sources << ReadyRows({*std::move(row)});
    sources << ReadyRows(CommandSources::apps(applications));
    sources << ReadyRows(CommandSources::widgets(Catalog::items()));
    sources << ReadyRows(CommandSources::symbols(query));
    sources << ReadyRows(CommandSources::clipboard(copies));
    if (auto row = CommandSources::web(query)) sources << ReadyRows({*std::move(row)});
    return CommandRanking::rank(sources, query, usage, QDateTime::currentDateTimeUtc());
  }

  QList<DesktopEntry> applications;
  QList<ClipboardEntry> copies;
  CommandUsage usage;
};

/// The figures are the same in every language.
QString milliseconds(double value) { return QString::number(value, 'f', 3); }

double percentile(const QList<double>& sorted, double fraction) {
  if (sorted.isEmpty()) return 0;
  const auto place = static_cast<qsizetype>(fraction * static_cast<double>(sorted.size()));
  return sorted[std::min(sorted.size() - 1, place)];
}

QString candidatesLine(const LatencyFixture& fixture) {
  return u"candidates: %1 applications, %2 widgets, %3 symbols, %4 clipboard entries\n"_s.arg(
      QString::number(fixture.applications.size()), QString::number(Catalog::items().size()),
      QString::number(SymbolTable::entries().size()), QString::number(fixture.copies.size()));
}

QString timesBlock(const QList<double>& sorted) {
  QString text = u"\nkeystroke to first result, milliseconds\n"_s;
  const auto add = [&](QLatin1StringView name, double value) {
    text += "  "_L1 + name + "  "_L1 + milliseconds(value) + u'\n';
  };
  add("p50"_L1, percentile(sorted, 0.5));
  add("p95"_L1, percentile(sorted, 0.95));
  add("p99"_L1, percentile(sorted, 0.99));
  add("max"_L1, sorted.isEmpty() ? 0 : sorted.last());
  return text;
}

}  // namespace

int CommandBarLatency::run(const QList<DesktopEntry>& applications, int iterations, const Means& means) {
  const LatencyFixture fixture(applications);
  means.print(candidatesLine(fixture));
  means.print(u"iterations: %1 per query, %2 queries\n"_s.arg(iterations).arg(kQueries.size()));

  QList<double> times;
  std::array<qsizetype, kQueries.size()> counts{};
  for (int i = 0; i < iterations; ++i) {
    for (std::size_t q = 0; q < kQueries.size(); ++q) {
      const QString query = kQueries[q];
      const qint64 start = means.clock();
      const QList<CommandItem> rows = fixture.rows(query);
      times << static_cast<double>(means.clock() - start) / kNanosecondsInMillisecond;
      counts[q] = rows.size();
    }
  }
  std::ranges::sort(times);
  means.print(timesBlock(times));

  QString results = u"\nresults per query\n"_s;
  for (std::size_t q = 0; q < kQueries.size(); ++q)
    results += "  "_L1 + kQueries[q] + ": "_L1 + QString::number(counts[q]) + u'\n';
  means.print(results);

  const double slow = percentile(times, 0.99);
  const bool isKept = slow <= kBudget;
  means.print(u"budget %1 ms (one frame at 60Hz) — p99 %2 ms — %3\n"_s.arg(
      QString::number(kBudget, 'f', 0), milliseconds(slow), isKept ? u"ok"_s : u"OVER"_s));
  return isKept ? 0 : 1;
}

}  // namespace tarnwick
