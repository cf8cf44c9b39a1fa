#include "usage/LocalTokens.h"

#include <QLocale>
#include <QTimeZone>

#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

QString LocalTokens::formatted(double number) {
  static const QLocale english(QLocale::English, QLocale::UnitedStates);
  return english.toString(number, 'f', 0);
}

RemoteValue LocalTokens::thisMonth(const QList<LocalTokenRecord>& records, const QDateTime& now,
                                   const QString& detail) {
  const QDate today = now.date();
  double month = 0;
  double day = 0;
  qsizetype answers = 0;
  for (const LocalTokenRecord& record : records) {
    const QDate date = record.time.toTimeZone(now.timeZone()).date();
    if (date.year() != today.year() || date.month() != today.month()) continue;
    month += record.tokens;
    ++answers;
    if (date >= today) day += record.tokens;
  }
  RemoteValue value;
  value.value = formatted(month);
  value.subtitle = UsageReaderWords::tr("Tokens this month · local estimate");
  value.symbol = u"cloud.sun.fill"_s;
  value.detail = detail;
  value.updated = now;
  value.metrics = {{UsageReaderWords::tr("Today"), formatted(day)},
                   {UsageReaderWords::tr("Responses this month"), formatted(static_cast<double>(answers))}};
  return value;
}

}  // namespace tarnwick
