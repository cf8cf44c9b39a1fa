#include "services/UsageReport.h"

#include <QTimeZone>
#include <cmath>

#include "services/ProviderData.h"
#include "services/ServiceWords.h"
#include "services/UsageWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// As seconds this is the year 5138: a larger number counts milliseconds.
constexpr double kMostSeconds = 1e11;

}  // namespace

QString UsageReport::missing(const QString& credential) {
  return ServiceWords::tr("Add a valid %1 in Connection Settings.").arg(credential);
}

double UsageReport::percent(const QJsonValue& value) {
  const double percent = value.isDouble() ? value.toDouble() : -1;
  require(std::isfinite(percent) && percent >= 0 && percent <= 100, ServiceWords::tr("Invalid usage percentage."));
  return percent;
}

std::optional<QDateTime> UsageReport::moment(const QDateTime& now, const QJsonValue& value) {
  const QTimeZone zone = now.timeZone();
  if (value.isString()) {
    const auto date = ProviderData::date(value.toString());
    return date ? std::optional(date->toTimeZone(zone)) : std::nullopt;
  }
  const double number = value.toDouble();
  if (!value.isDouble() || number <= 0 || number > kMostSeconds * 1000) return std::nullopt;
  const auto milliseconds = static_cast<qint64>(number > kMostSeconds ? number : number * 1000);
  return QDateTime::fromMSecsSinceEpoch(milliseconds, zone);
}

QList<UsageWindow> UsageReport::windows(const QDateTime& now, const QJsonValue& holder, const QString& prefix,
                                        std::span<const Named> named, const Fields& fields) {
  QList<UsageWindow> found;
  for (const auto& [name, label, minutes] : named) {
    const QString key = QString::fromLatin1(name);
    const QJsonValue window = holder[key];
    if (!window.isObject()) continue;
    found << UsageWindow{prefix + key, ServiceWords::tr(label), percent(window[QLatin1StringView(fields.percent)]),
                         minutes, moment(now, window[QLatin1StringView(fields.resets)])};
  }
  return found;
}

RemoteValue UsageReport::of(const QDateTime& now, const QList<UsageWindow>& windows) {
  require(!windows.isEmpty(), ServiceWords::tr("This account has not reported readable usage windows."));
  const UsageWindow& first = windows.first();
  RemoteValue value;
  value.value = QString::asprintf("%.0f%%", 100 - UsageWords::used(first));
  value.subtitle = ServiceWords::tr("Remaining · ") + first.label;
  value.symbol = u"cloud.sun.fill"_s;
  value.updated = now;
  value.usageWindows = windows;
  const QLocale locale;
  const bool use24Hour = !locale.timeFormat(QLocale::ShortFormat).contains(u'a', Qt::CaseInsensitive);
  QStringList lines;
  for (const UsageWindow& window : windows) {
    value.metrics << ServiceMetric{window.label, UsageWords::leftWords(window)};
    lines << UsageWords::line(window, locale, use24Hour);
  }
  value.detail = lines.join(u'\n');
  return value;
}

}  // namespace tarnwick
