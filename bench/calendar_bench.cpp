// What reading the calendars costs, off the main thread. Promise: below 150 ms for 5,000 events of which 500 recur, as
// one file and as one file an event; and next to nothing where no file changed.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/ModuleLoader.h"
#include "platform/ical/CalendarScan.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tarnwick;

constexpr int kEvents = 5000;
constexpr int kRecurring = 500;

QByteArray event(int number) {
  const QDate day = QDate(2018, 1, 1).addDays(number * 7 % 3650);
  QByteArray text = "BEGIN:VEVENT\r\nUID:" + QByteArray::number(number) + "-3f2a-4c1e@calendar.example\r\n";
  text += "DTSTAMP:20180101T000000Z\r\nCREATED:20180101T000000Z\r\nLAST-MODIFIED:20180101T000000Z\r\n";
  text += "DTSTART;TZID=Europe/Berlin:" + day.toString(u"yyyyMMdd"_s).toLatin1() + "T093000\r\n";
  text += "DTEND;TZID=Europe/Berlin:" + day.toString(u"yyyyMMdd"_s).toLatin1() + "T101500\r\n";
  if (number < kRecurring) {
    const char* rules[] = {"FREQ=WEEKLY;BYDAY=MO,WE", "FREQ=MONTHLY;BYDAY=2TU", "FREQ=DAILY;INTERVAL=3", "FREQ=YEARLY",
                           "FREQ=WEEKLY;COUNT=400"};
    text += QByteArray("RRULE:") + rules[number % 5] + "\r\nEXDATE;TZID=Europe/Berlin:20261130T093000\r\n";
  }
  text += "SUMMARY:A meeting about things that have to be talked about\\, number " + QByteArray::number(number) +
          "\r\nLOCATION:Second floor\r\nSTATUS:CONFIRMED\r\n";
  text += "DESCRIPTION:Bring what you have. Join at https://meet.example.org/room" + QByteArray::number(number) +
          " or\r\n  call the number that is written on the door.\\nThe list is long.\r\n";
  text += "ATTENDEE;CN=Ada;PARTSTAT=ACCEPTED:mailto:ada@example.org\r\nATTENDEE;CN=Kurt:mailto:kurt@example.org\r\n";
  return text + "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT15M\r\nEND:VALARM\r\nEND:VEVENT\r\n";
}

QByteArray calendar(const QByteArray& events) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//EN\r\n" + events + "END:VCALENDAR\r\n";
}

void put(const QString& path, const QByteArray& text) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(text);
}

CalendarScan newScan() {
  return CalendarScan([] {
    const auto make = reinterpret_cast<MakeCalendarTextReader>(
        ModuleLoader::function(QString::fromLatin1(kCalendarModule), kCalendarDoor));
    return std::unique_ptr<CalendarTextReader>(make ? make() : nullptr);
  });
}

enum class Layout { OneFile, SingleFiles };

void load(benchmark::State& state, Layout layout, bool isFirst) {
  const QTemporaryDir folder;
  if (layout == Layout::OneFile) {
    QByteArray events;
    for (int i = 0; i < kEvents; ++i) events += event(i);
    put(folder.filePath(u"all.ics"_s), calendar(events));
  } else {
    for (int i = 0; i < kEvents; ++i) put(folder.filePath(u"%1.ics"_s.arg(i)), calendar(event(i)));
  }
  CalendarPlaces places;
  places.folders = QStringList{folder.path()};
  const CalendarRange range{QDate(2026, 10, 20).startOfDay(), QDate(2027, 2, 2).startOfDay()};
  CalendarScan known = newScan();
  known.run(places, range, {});
  qsizetype count = 0;
  for (auto _ : state) {
    CalendarScan fresh = newScan();
    count = (isFirst ? fresh : known).run(places, range, {}).reading.events.size();
  }
  state.SetLabel(std::to_string(count) + " events in the range");
}
BENCHMARK_CAPTURE(load, one_file, Layout::OneFile, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, single_files, Layout::SingleFiles, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, single_files_unchanged, Layout::SingleFiles, false)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
