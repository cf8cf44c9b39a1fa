#include "views/library/PreviewSamples.h"

#include <QSet>

#include "views/library/LibraryWords.h"
#include "views/snapshot/CalendarFixture.h"
#include "views/snapshot/SnapshotFixture.h"
#include "widgets/HabitMath.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kShortHistory = 12;
constexpr qsizetype kFolderIcons = 4;

/// A habit that was kept on most of the days before today.
QString someDays(const QDateTime& now) {
  QStringList days;
  for (const int ago : {6, 5, 3, 2, 1}) days.append(HabitMath::key(now.addDays(-ago)));
  return days.join(u',');
}

QMap<QString, QString> example(const QString& kind, const QDateTime& now, const QStringList& applications) {
  if (kind == "worldClockCity"_L1) return {{u"timezone"_s, u"Asia/Tokyo"_s}};
  if (kind == "scratchNote"_L1) return {{u"text"_s, LibraryWords::tr("Water the plants on Friday")}};
  if (kind == "drinkWater"_L1) return {{u"glasses"_s, u"5"_s}, {u"day"_s, HabitMath::key(now)}};
  if (kind == "habitTracker"_L1) return {{u"text"_s, LibraryWords::tr("Read")}, {u"history"_s, someDays(now)}};
  if (kind == "calculator"_L1) return {{u"expression"_s, u"12 × 4 + 2"_s}};
  if (kind == "colorPicker"_L1) return {{u"color"_s, u"#2E8C94"_s}};
  if (kind == "appFolder"_L1) return {{u"paths"_s, applications.mid(0, kFolderIcons).join(u'\n')}};
  return {};
}

}  // namespace

PreviewSamples::PreviewSamples() = default;
PreviewSamples::~PreviewSamples() = default;

DockWidget PreviewSamples::shown(const DockWidget& widget, const QDateTime& now, const QStringList& applications) {
  DockWidget shown = widget;
  if (shown.options.isEmpty()) shown.options = example(widget.kind, now, applications);
  return shown;
}

const TileSources& PreviewSamples::samples() {
  if (!samples_) samples_ = std::make_unique<TileSources>(SnapshotFixture::sources());
  return *samples_;
}

void PreviewSamples::fill(TileSources& sources, const QList<DockWidget>& widgets) {
  QSet<QString> kinds;
  QSet<QString> families;
  for (const DockWidget& widget : widgets) {
    kinds.insert(widget.kind);
    families.insert(Catalog::find(widget.kind).family);
  }
  if (families.contains(u"metric"_s) && (!sources.metrics || sources.cpuHistory.size() < kShortHistory)) {
    sources.metrics = samples().metrics;
    sources.cpuHistory = samples().cpuHistory;
    sources.memoryHistory = samples().memoryHistory;
    sources.networkHistory = samples().networkHistory;
    sources.readings.downloadHistory = samples().readings.downloadHistory;
    sources.readings.uploadHistory = samples().readings.uploadHistory;
  }
  if (families.contains(u"weather"_s) && !sources.weather) sources.weather = samples().weather;
  if (families.contains(u"todos"_s) && sources.todos.isEmpty()) sources.todos = samples().todos;
  if (kinds.contains(u"notesLatest"_s) && !sources.latestNote) sources.latestNote = samples().latestNote;
  if (families.contains(u"calendar"_s) || families.contains(u"reminders"_s)) {
    const bool bare = !sources.calendar || (sources.calendar->upcoming.isEmpty() && sources.calendar->today.isEmpty() &&
                                            sources.calendar->reminders.isEmpty());
    if (bare && calendarDay_ != sources.now.date()) {
      calendarDay_ = sources.now.date();
      calendar_ = calendarFixture(sources.now);
    }
    if (bare) sources.calendar = calendar_;
  }
  ReadingFacts& readings = sources.readings;
  const auto sampled = [this]() -> const ReadingFacts& { return samples().readings; };
  if (kinds.contains(u"processTopApps"_s) && readings.processes.isEmpty()) {
    readings.processes = sampled().processes;
    readings.processMessage.clear();
  }
  if (families.contains(u"temperature"_s) && !readings.celsius) {
    readings.celsius = sampled().celsius;
    readings.celsiusHistory = sampled().celsiusHistory;
  }
  if (kinds.contains(u"recentFiles"_s) && readings.recentNames.isEmpty()) readings.recentNames = sampled().recentNames;
  if (kinds.contains(u"screenshots"_s) && (!readings.screenshots || readings.screenshots->isEmpty()))
    readings.screenshots = sampled().screenshots;
}

}  // namespace tarnwick
