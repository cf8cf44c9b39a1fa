#pragma once

#include <QByteArray>
#include <QDateTime>
#include <memory>

#include "base/ModuleLoader.h"
#include "platform/ical/CalendarTextReader.h"

namespace tarnwick {

/// A calendar around components, with the line ends that the format wants.
inline QByteArray calendarText(QByteArray components) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tarnwick//Tests//EN\r\n" + components.replace('\n', "\r\n") +
         "END:VCALENDAR\r\n";
}

inline QByteArray component(const QByteArray& kind, const QByteArray& uid, const QByteArray& lines) {
  return "BEGIN:" + kind + "\nUID:" + uid + "\nDTSTAMP:20260101T000000Z\n" + lines + "\nEND:" + kind + '\n';
}
inline QByteArray event(const QByteArray& uid, const QByteArray& lines) { return component("VEVENT", uid, lines); }
inline QByteArray todo(const QByteArray& uid, const QByteArray& lines) { return component("VTODO", uid, lines); }

/// November 2026, as the tests' clock has it.
inline CalendarRange november() { return {QDate(2026, 11, 1).startOfDay(), QDate(2026, 12, 1).startOfDay()}; }

inline std::unique_ptr<CalendarTextReader> calendarReader() {
  const auto make = reinterpret_cast<MakeCalendarTextReader>(
      ModuleLoader::function(QString::fromLatin1(kCalendarModule), kCalendarDoor));
  return std::unique_ptr<CalendarTextReader>(make ? make() : nullptr);
}

}  // namespace tarnwick
