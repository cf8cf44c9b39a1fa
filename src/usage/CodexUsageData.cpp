#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "services/UsageReport.h"
#include "usage/CodexUsage.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kMinutesInHour = 60;

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
    each.resetsAt = UsageReport::moment(now, window.value("resetsAt"_L1));
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
  return UsageReport::of(now, windows(result, now));
}

}  // namespace tarnwick
