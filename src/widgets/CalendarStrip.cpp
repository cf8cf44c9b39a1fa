#include "widgets/CalendarStrip.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {
namespace {

struct CalendarStripWords {
  Q_DECLARE_TR_FUNCTIONS(ContributionSummary)
};

using namespace Qt::StringLiterals;

/// A whole number not below 0. What a sum could not hold counts as the most that one day can.
qint64 countOf(const QJsonValue& value) {
  constexpr double kMost = 1e15;
  const double number = value.toDouble(-1);
  if (!value.isDouble() || number < 0 || number != std::floor(number)) {
    throw DomainError::invalid(CalendarStripWords::tr("Invalid contribution count."));
  }
  return static_cast<qint64>(std::min(number, kMost));
}

}  // namespace

QList<QDate> CalendarStrip::days(const QString& kind, const QDateTime& date, Qt::DayOfWeek firstDay) {
  QDate first = date.date();
  if (KindTraits::of(kind).beginsWithWeek) first = first.addDays(-((first.dayOfWeek() - firstDay + 7) % 7));
  QList<QDate> result;
  for (int day = 0; day < 7; ++day) result.append(first.addDays(day));
  return result;
}

ContributionSummary ContributionSummary::decode(const QJsonArray& days, const QDateTime& now) {
  static const QRegularExpression form(u"^[0-9]{4}-[0-9]{2}-[0-9]{2}\\z"_s);
  const QDate today = now.date();
  ContributionSummary summary;
  bool found = false;
  for (const QJsonValue& day : days) {
    const QString text = day[u"date"].toString();
    const QDate date = form.match(text).hasMatch() ? QDate::fromString(text, Qt::ISODate) : QDate();
    if (!date.isValid()) continue;
    found = true;
    const qint64 count = countOf(day[u"contributionCount"]);
    summary.total += count;
    if (date == today) summary.today = count;
    if (date <= today && date > today.addDays(-7)) summary.lastSevenDays += count;
  }
  if (!found) {
    throw DomainError::invalid(CalendarStripWords::tr("GitHub did not return contribution dates."));
  }
  return summary;
}

QString ContributionSummary::totalText(const QLocale& locale) const {
  return locale.toString(total) + CalendarStripWords::tr(" in the last year");
}

}  // namespace tarnwick
