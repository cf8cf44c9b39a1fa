#pragma once

#include <QDBusConnection>
#include <QLatin1StringView>
#include <QObject>
#include <QVariant>

#include "platform/dbus/BusService.h"

namespace tarnwick {

/// One setting of the desktop as the settings portal reports it, for as long as this lives. Asks at once and whenever
/// the portal comes; one that isn't running yet is started, as it rarely is early in a session. Never blocks.
class PortalSetting final : public QObject {
  Q_OBJECT
 public:
  /// `space` and `key` must be literals.
  PortalSetting(const QDBusConnection& session, QLatin1StringView space, QLatin1StringView key);

  /// Invalid where the portal or this setting of it is missing, and until it has answered.
  const QVariant& value() const { return value_; }

 Q_SIGNALS:
  /// The portal answered or reported a change; the value may be the same as before.
  void answered();

 private:
  void read();
  void take(const QVariant& value);

  QDBusConnection session_;
  QLatin1StringView space_;
  QLatin1StringView key_;
  BusService portal_;
  QVariant value_;
};

}  // namespace tarnwick
