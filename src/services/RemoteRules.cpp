#include "services/RemoteRules.h"

#include <algorithm>

#include "base/ForeignText.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kWaitingSymbol = "cloud.sun.fill"_L1;
constexpr int kTooManyRequests = 429;
constexpr qsizetype kMostDetailLines = 12;

RemoteValue headlineOnly(const std::optional<RemoteValue>& previous, const QString& subtitle, const QDateTime& now) {
  RemoteValue value;
  if (previous) value.value = previous->value;
  value.subtitle = subtitle;
  value.symbol = kWaitingSymbol;
  value.updated = now;
  return value;
}

}  // namespace

bool RemoteRules::isRemote(const QString& kind) {
  const QString family = Catalog::find(kind).family;
  return family == Family::Weather || isConnectedFamily(family) || kind == kind::todayClock ||
         kind == kind::todayOverview;
}

bool RemoteRules::isSetUp(const DockWidget& widget) {
  if (!isRemote(widget.kind)) return false;
  if (!widget.options.value(option::city).isEmpty()) return true;
  if (widget.options.value(option::weatherLocation) == value::current) return true;
  if (!widget.options.value(option::endpoint).isEmpty()) return true;
  const QString mode = widget.options.value(option::connectionMode);
  return mode == value::codexLocal || mode == value::perplexitySession || mode == value::geminiHistory ||
         mode == value::claudeActivity;
}

bool RemoteRules::asksTheNet(const DockWidget& widget) {
  const QString mode = widget.options.value(option::connectionMode);
  return mode != value::codexLocal && mode != value::geminiHistory && mode != value::claudeActivity;
}

RemoteValue RemoteRules::placeholder(const std::optional<RemoteValue>& previous, const QDateTime& now) {
  RemoteValue value = headlineOnly(previous, ServiceWords::tr("Updating…"), now);
  value.loading = true;
  return value;
}

RemoteValue RemoteRules::failed(const std::optional<RemoteValue>& previous, const QString& sentence,
                                const QDateTime& now) {
  RemoteValue value = headlineOnly(previous, ForeignText::line(sentence), now);
  value.failed = true;
  return value;
}

QString RemoteRules::sentenceOf(RemoteWait wait) {
  switch (wait) {
    case RemoteWait::Network:
      return ServiceWords::tr("Waiting for the network.");
    case RemoteWait::Unlocking:
      return ServiceWords::tr("Waiting for the screen to be unlocked.");
    case RemoteWait::Waking:
      return ServiceWords::tr("Waiting for the computer to wake up.");
    case RemoteWait::BeingSeen:
      return ServiceWords::tr("Waiting for the dock to be shown.");
  }
  return {};
}

RemoteValue RemoteRules::cleaned(RemoteValue value) {
  const auto clean = [](QString& text) { text = ForeignText::line(text); };
  if (value.value) clean(*value.value);
  clean(value.subtitle);
  // Its line breaks are ours: one line for each window of a plan.
  QStringList lines = value.detail.split(u'\n').first(std::min(value.detail.count(u'\n') + 1, kMostDetailLines));
  for (QString& line : lines) clean(line);
  value.detail = lines.join(u'\n');
  for (ServiceMetric& metric : value.metrics) {
    clean(metric.label);
    clean(metric.value);
  }
  for (ServiceRow& row : value.rows) {
    clean(row.title);
    clean(row.subtitle);
    if (row.url && !ForeignText::mayOpen(*row.url)) row.url.reset();
  }
  for (UsageWindow& window : value.usageWindows) clean(window.label);
  if (value.weather) {
    clean(value.weather->city);
    clean(value.weather->sunrise);
    clean(value.weather->sunset);
    for (QString& day : value.weather->days) clean(day);
    for (auto& [hour, degrees] : value.weather->hourly) clean(hour);
  }
  return value;
}

std::optional<QDateTime> RemoteRules::pause(const FetchFailure& failure, const QDateTime& now) {
  if (failure.status != kTooManyRequests) return std::nullopt;
  return failure.retryAt.value_or(now.addSecs(kPause));
}

}  // namespace tarnwick
