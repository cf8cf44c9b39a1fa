#include "views/settings/ConnectionRows.h"

#include <QLocale>
#include <QTimeZone>
#include <QUrl>
#include <algorithm>

#include "base/ForeignText.h"
#include "services/ProviderTable.h"
#include "services/RemoteRules.h"
#include "services/WidgetLoader.h"
#include "views/settings/SettingsWords.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool isConnected(const DockWidget& widget) {
  return isConnectedFamily(Catalog::find(widget.kind).family) &&
         (!widget.options.value(option::endpoint).isEmpty() || !widget.options.value(option::connectionMode).isEmpty());
}

/// The time of day, with the date where that is another.
QString moment(const QDateTime& at, const QDateTime& now, bool use24Hour) {
  const QDateTime local = at.toTimeZone(now.timeZone());
  const QString time = ClockWords::time(local.time(), QLocale(), use24Hour).full();
  return local.date() == now.date() ? time : QLocale().toString(local.date(), QLocale::ShortFormat) + u' ' + time;
}

bool isPaused(const RemoteReading& reading, const QDateTime& now) {
  return reading.pausedUntil && *reading.pausedUntil > now;
}

}  // namespace

QList<DockWidget> ConnectionRows::widgets(const DockConfiguration& config) {
  QList<DockWidget> found;
  for (const DockProfile& profile : config.profiles)
    std::ranges::copy_if(profile.widgets, std::back_inserter(found), isConnected);
  return found;
}

QString ConnectionRows::service(const DockWidget& widget) {
  const Provider* provider = providerFor(widget.kind);
  const QString name = WidgetLoader::readsAddress(widget) ? SettingsWords::tr("Own address")
                       : provider                         ? provider->name
                                                          : Catalog::find(widget.kind).name;
  // What reads this computer may hold an address of earlier.
  const QString mode = widget.options.value(option::connectionMode);
  const bool asksTheNet = mode.isEmpty() || mode == value::native;
  const QString host = asksTheNet ? QUrl(widget.options.value(option::endpoint)).host(QUrl::FullyEncoded) : QString();
  return host.isEmpty() ? name : name + u" · "_s + ForeignText::line(host);
}

QString ConnectionRows::state(const std::optional<RemoteReading>& reading, const QDateTime& now, bool use24Hour) {
  if (!reading) return SettingsWords::tr("Not asked yet");
  if (isPaused(*reading, now))
    return SettingsWords::tr("Paused until %1").arg(moment(*reading->pausedUntil, now, use24Hour));
  if (reading->isLoading) return SettingsWords::tr("Asking…");
  if (reading->value.failed) return SettingsWords::tr("Failed");
  if (reading->waitsFor) return SettingsWords::tr("Waiting");
  return reading->goodAt ? SettingsWords::tr("Connected") : SettingsWords::tr("Not asked yet");
}

QString ConnectionRows::details(const std::optional<RemoteReading>& reading, const std::optional<QDateTime>& next,
                                const QDateTime& now, bool use24Hour) {
  QStringList said;
  if (reading && reading->value.failed) said << ForeignText::line(reading->value.subtitle);
  if (reading && reading->waitsFor) said << RemoteRules::sentenceOf(*reading->waitsFor);
  if (reading && reading->goodAt)
    said << SettingsWords::tr("Last answer %1.").arg(moment(*reading->goodAt, now, use24Hour));
  if (next && !(reading && isPaused(*reading, now)))
    said << SettingsWords::tr("Next refresh about %1.").arg(moment(*next, now, use24Hour));
  return said.join(u' ');
}

}  // namespace tarnwick
