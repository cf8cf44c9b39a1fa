#include "platform/ical/ICalendarFiles.h"

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ModuleLoader.h"
#include "platform/ical/TodoEdit.h"

namespace tarnwick {
namespace {

constexpr int kMostTries = 2;
// A synchronisation writes many files in a row; one reading a moment later serves them all.
constexpr double kBurstSeconds = 0.4;

std::unique_ptr<CalendarTextReader> loadReader() {
  const auto make = reinterpret_cast<MakeCalendarTextReader>(
      ModuleLoader::function(QString::fromLatin1(kCalendarModule), kCalendarDoor));
  return std::unique_ptr<CalendarTextReader>(make ? make() : nullptr);
}

QString tickOff(const Reminder& reminder, const TodoEdit& edit) {
  try {
    // A synchronisation may bring the file anew at any moment; what it brought is then what changes.
    for (int tries = 0; tries < kMostTries; ++tries) {
      const auto stamp = DurableFile::stamp(reminder.filePath);
      const QByteArray before = DurableFile::read(reminder.filePath);
      const QByteArray after = edit.apply(before);
      if (after == before || (stamp && DurableFile::replace(after, reminder.filePath, *stamp))) return {};
    }
    return ICalendarFiles::tr("Another app is changing this reminder. Try again in a moment.");
  } catch (const DomainError& failure) {
    return failure.message();
  }
}

}  // namespace

ICalendarFiles::ICalendarFiles(Scheduler& scheduler, CalendarPlaces places)
    : scheduler_(scheduler), places_(std::move(places)), scan_(std::make_shared<CalendarScan>(&loadReader)) {
  connect(&watch_, &FolderWatch::changed, this, &ICalendarFiles::fileChanged);
}

void ICalendarFiles::setFolders(const QStringList& folders) {
  if (added_ == folders) return;
  added_ = folders;
  outdate();
}

void ICalendarFiles::load(const CalendarRange& range, QObject* context, Loaded done) {
  wasAsked_ = true;
  waiting_.append({context, std::move(done)});
  if (!(range_ == range)) {
    range_ = range;
    isCurrent_ = false;
  }
  if (isCurrent_) {
    QMetaObject::invokeMethod(this, &ICalendarFiles::deliver, Qt::QueuedConnection);
  } else {
    scan();
  }
}

void ICalendarFiles::scan() {
  if (isScanning_) return;
  isScanning_ = true;
  isAgain_ = false;
  soon_.reset();
  scanned_ = range_;
  CalendarPlaces places = places_;
  places.folders += added_;
  work_.start(
      [scan = scan_, places, range = range_, stop = work_.stopToken()] { return scan->run(places, range, stop); },
      [this](const CalendarScan::Result& result) { take(result); });
}

void ICalendarFiles::take(const CalendarScan::Result& result) {
  isScanning_ = false;
  // What happened in a folder between the reading and the watching would otherwise be missed.
  if (watch_.watch(result.folders, result.awaited) || !(scanned_ == range_)) return scan();
  // A synchronisation may write for minutes: what was read is shown while it goes on.
  const bool isOutdated = std::exchange(isAgain_, false);
  isCurrent_ = !isOutdated;
  reading_ = result.reading;
  deliver();
  if (isOutdated && !isScanning_ && !soon_) fileChanged();
}

void ICalendarFiles::deliver() {
  if (isScanning_) return;
  for (const auto& [context, done] : std::exchange(waiting_, {})) {
    if (context) done(reading_);
  }
}

void ICalendarFiles::fileChanged() {
  isAgain_ = isScanning_;
  isCurrent_ = false;
  if (!soon_) soon_ = scheduler_.after(kBurstSeconds, [this] { outdate(); });
}

void ICalendarFiles::outdate() {
  soon_.reset();
  isCurrent_ = false;
  isAgain_ = isScanning_;
  if (wasAsked_) Q_EMIT changed();
}

void ICalendarFiles::setCompleted(const Reminder& reminder, bool completed, const QDateTime& at, QObject* context,
                                  Done done) {
  const TodoEdit edit{.uid = reminder.uid, .occasion = reminder.occasion, .completed = completed, .at = at};
  // The change is noticed like that of any other program.
  const auto write = [reminder, edit] {
    return reminder.canComplete ? tickOff(reminder, edit)
                                : tr("This list belongs to another app. Change the reminder there.");
  };
  work_.start(write, [guard = QPointer(context), done = std::move(done)](const QString& failure) {
    if (guard) done(failure);
  });
}

}  // namespace tarnwick
