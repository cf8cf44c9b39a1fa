#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace tarnwick {

/// How long ago something was, in as few letters as can be: "now", "2 min ago", "yesterday", and from a week on the
/// date.
QString agoWord(const QDateTime& then, const QDateTime& now, const QLocale& locale);

/// How long ago a whole day was: "today", "yesterday", "5 days ago", and from a week on the date.
QString dayWord(const QDate& then, const QDate& today, const QLocale& locale);

/// A folder in the short form in which people know it: "~/Documents".
QString shortFolder(const QString& path);

/// An amount of data that was or is sent in a second.
struct SpeedWords {
  QString number;
  QString unit;  ///< "MB/s".

  bool operator==(const SpeedWords&) const = default;
};
/// `scaleOf`: whose size decides the unit, so that two speeds beside each other can share one; 0 for its own.
SpeedWords speedWords(const QLocale& locale, double bytesPerSecond, double scaleOf = 0);

/// "9.8 of 16 GB", in the powers of two in which memory is sold.
QString memoryWords(const QLocale& locale, double used, double total);

}  // namespace tarnwick
