#include "widgets/FileWords.h"

#include <QDir>
#include <QTimeZone>
#include <algorithm>
#include <array>
#include <cmath>

#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kGigabyte = 1024.0 * 1024 * 1024;

struct Unit {
  double bytes;
  const char* name;
};
constexpr std::array kSpeeds = {Unit{1e9, QT_TRANSLATE_NOOP("Tiles", "GB/s")},
                                Unit{1e6, QT_TRANSLATE_NOOP("Tiles", "MB/s")},
                                Unit{1e3, QT_TRANSLATE_NOOP("Tiles", "kB/s")}};

double sound(double value) { return std::isfinite(value) ? std::max(0.0, value) : 0; }

/// One decimal where it says something.
QString shortNumber(const QLocale& locale, double value) {
  const bool whole = value >= 99.95 || std::abs(value - std::round(value)) < 0.05;
  return locale.toString(value, 'f', whole ? 0 : 1);
}

}  // namespace

QString agoWord(const QDateTime& then, const QDateTime& now, const QLocale& locale) {
  const qint64 minutes = then.secsTo(now) / 60;
  if (minutes < 1) return TileWords::tr("now");
  if (minutes < 60) return TileWords::tr("%1 min ago").arg(locale.toString(minutes));
  const QDate day = then.toTimeZone(now.timeZone()).date();
  if (day >= now.date()) return TileWords::tr("%1 h ago").arg(locale.toString(minutes / 60));
  return dayWord(day, now.date(), locale);
}

QString dayWord(const QDate& then, const QDate& today, const QLocale& locale) {
  const qint64 days = then.daysTo(today);
  if (days == 0) return TileWords::tr("today");
  if (days == 1) return TileWords::tr("yesterday");
  if (days > 0 && days < 7) return TileWords::tr("%1 days ago").arg(locale.toString(days));
  return locale.toString(then, QLocale::ShortFormat);
}

QString shortFolder(const QString& path) {
  const QString home = QDir::homePath();
  if (path == home) return u"~"_s;
  return path.startsWith(home + u'/') ? u'~' + path.sliced(home.size()) : path;
}

SpeedWords speedWords(const QLocale& locale, double bytesPerSecond, double scaleOf) {
  const double value = sound(bytesPerSecond);
  const double size = std::max(value, sound(scaleOf));
  // What rounds up to a thousand belongs to the next unit.
  const auto unit = std::ranges::find_if(kSpeeds, [size](const Unit& each) { return size >= each.bytes * 0.9995; });
  const Unit& used = unit == kSpeeds.end() ? kSpeeds.back() : *unit;
  const double number = value / used.bytes;
  const bool small = used.bytes < 1e6;
  return {small ? locale.toString(number, 'f', 0) : locale.toString(number, 'f', number < 99.95 ? 1 : 0),
          TileWords::tr(used.name)};
}

QString memoryWords(const QLocale& locale, double used, double total) {
  return TileWords::tr("%1 of %2 GB")
      .arg(shortNumber(locale, sound(used) / kGigabyte), shortNumber(locale, sound(total) / kGigabyte));
}

}  // namespace tarnwick
