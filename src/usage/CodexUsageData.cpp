#include <QJsonArray>
#include <QSet>
#include <QTimeZone>
#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "services/UsageWords.h"
#include "usage/CodexUsage.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kMinutesInHour = 60;
/// As seconds this is the year 5138: a larger number counts milliseconds.
constexpr double kMostSeconds = 1e11;

std::optional<QDateTime> resetOf(const QJsonValue& value, const QDateTime& now) {
  if (value.isString()) {
    const QDateTime date = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
    return date.isValid() ? std::optional(date.toTimeZone(now.timeZone())) : std::nullopt;
  }
  const double number = value.toDouble();
  if (!(number > 0 && number < kMostSeconds * 1000)) return std::nullopt;
  const auto milliseconds = static_cast<qint64>(number > kMostSeconds ? number : number * 1000);
  return QDateTime::fromMSecsSinceEpoch(milliseconds, now.timeZone());
}

/// The windows of one limit, the shorter first. `name` is put before each where there is more than one limit.
QList<UsageWindow> windowsOf(const QJsonObject& limit, const QString& id, const QString& name, const QDateTime& now) {
  QList<UsageWindow> found;
  for (auto member = limit.begin(); member != limit.end(); ++member) {
    const QJsonObject window = member.value().toObject();
    const QJsonValue percent = window.value("usedPercent"_L1);
    if (!percent.isDouble() || !std::isfinite(percent.toDouble())) continue;
    if (percent.toDouble() < 0)
      throw DomainError::invalid(UsageReaderWords::tr("Codex returned a negative usage percentage."));
    UsageWindow each;
    each.id = u"codex."_s + id + u'.' + member.key();
    each.used = std::clamp(percent.toDouble(), 0.0, 100.0);
    if (const double minutes = window.value("windowDurationMins"_L1).toDouble(); std::isfinite(minutes) && minutes > 0)
      each.durationMinutes = minutes;
    each.label = each.durationMinutes ? QString::asprintf("%.0fh", *each.durationMinutes / kMinutesInHour)
                                      : UsageReaderWords::tr("Usage");
    if (!name.isEmpty()) each.label = name + u" · "_s + each.label;
    each.resetsAt = resetOf(window.value("resetsAt"_L1), now);
    found.append(std::move(each));
  }
  std::ranges::stable_sort(found, {}, [](const UsageWindow& each) { return each.durationMinutes.value_or(1e12); });
  return found;
}

QString idOf(const QJsonObject& limit, const QString& otherwise) {
  return limit.value("limitId"_L1).toString(otherwise);
}

}  // namespace

QList<UsageWindow> CodexUsageData::windows(const QJsonObject& result, const QDateTime& now) {
  const QJsonObject main = result.value("rateLimits"_L1).toObject();
  const QString first = idOf(main, u"codex"_s);
  QList<UsageWindow> found = windowsOf(main, first, {}, now);
  const QJsonObject others = result.value("rateLimitsByLimitId"_L1).toObject();
  for (auto each = others.begin(); each != others.end(); ++each) {
    const QJsonObject limit = each.value().toObject();
    const QString id = idOf(limit, each.key());
    if (id == first && !found.isEmpty()) continue;
    found += windowsOf(limit, id, limit.value("limitName"_L1).toString(id), now);
  }
  if (found.isEmpty())
    throw DomainError::invalid(UsageReaderWords::tr("Usage windows are unavailable for this Codex account."));
  return found;
}

RemoteValue CodexUsageData::value(const QJsonObject& result, const QDateTime& now) {
  RemoteValue value;
  value.usageWindows = windows(result, now);
  const UsageWindow& first = value.usageWindows.first();
  value.value = QString::asprintf("%.0f%%", 100 - UsageWords::used(first));
  value.subtitle = UsageReaderWords::tr("Remaining · ") + first.label;
  value.symbol = u"cloud.sun.fill"_s;
  value.updated = now;
  const QLocale locale;
  const bool use24Hour = !locale.timeFormat(QLocale::ShortFormat).contains(u'a', Qt::CaseInsensitive);
  QStringList lines;
  for (const UsageWindow& window : std::as_const(value.usageWindows)) {
    value.metrics.append({window.label, UsageWords::leftWords(window)});
    lines << UsageWords::line(window, locale, use24Hour);
  }
  value.detail = lines.join(u'\n');
  return value;
}

}  // namespace tarnwick
