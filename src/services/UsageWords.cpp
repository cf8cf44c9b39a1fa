#include "services/UsageWords.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "services/ServiceWords.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;

QString rounded(double percent) { return QString::asprintf("%.0f", percent); }

/// With the month in short and without the day of the week.
QString dateWords(const QDate& date, const QLocale& locale) {
  static const QRegularExpression weekday(u"dddd[,،]?\\s*|[,،]?\\s*dddd"_s);
  QString format = locale.dateFormat(QLocale::LongFormat).remove(weekday);
  format.replace(u"MMMM"_s, u"MMM"_s);
  return locale.toString(date, format);
}

}  // namespace

double UsageWords::used(const UsageWindow& window) {
  return std::isfinite(window.used) ? std::clamp(window.used, 0.0, 100.0) : 0;
}

QString UsageWords::percent(const UsageWindow& window) { return rounded(used(window)) + u'%'; }

QString UsageWords::shortLabel(const UsageWindow& window) {
  const QString kind = ServiceWords::tr(" allowance");
  return window.label.size() > kind.size() && window.label.endsWith(kind) ? window.label.chopped(kind.size())
                                                                          : window.label;
}

QString UsageWords::usedWords(const UsageWindow& window) {
  return ServiceWords::tr("%1% used").arg(rounded(used(window)));
}

QString UsageWords::leftWords(const UsageWindow& window) {
  return ServiceWords::tr("%1% left").arg(rounded(100 - used(window)));
}

QString UsageWords::resets(const UsageWindow& window, const QLocale& locale, bool use24Hour) {
  if (!window.resetsAt || !window.resetsAt->isValid()) return ServiceWords::tr(" · reset unavailable");
  const QString time = ClockWords::time(window.resetsAt->time(), locale, use24Hour).full();
  return ServiceWords::tr(" · resets ") + dateWords(window.resetsAt->date(), locale) + u", "_s + time;
}

QString UsageWords::line(const UsageWindow& window, const QLocale& locale, bool use24Hour) {
  return window.label + u" · "_s + LocalFigures::of(usedWords(window), locale) + resets(window, locale, use24Hour);
}

QString UsageWords::countdown(const UsageWindow& window, const QDateTime& now, const QLocale& locale) {
  if (!window.resetsAt || !window.resetsAt->isValid()) return {};
  const qint64 left = now.secsTo(*window.resetsAt);
  if (left <= 0) return {};
  const auto number = [&](qint64 value) { return LocalFigures::number(value, locale); };
  const qint64 minutes = (left + kMinute - 1) / kMinute;
  if (minutes * kMinute < kHour) return ServiceWords::tr("%1 min").arg(number(minutes));
  if (left < 2 * kDay) return ServiceWords::tr("%1 h").arg(number(minutes * kMinute / kHour));
  return ServiceWords::tr("%1 days").arg(number(left / kDay));
}

}  // namespace tarnwick
