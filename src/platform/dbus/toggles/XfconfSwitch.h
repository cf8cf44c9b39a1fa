#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <optional>

#include "platform/dbus/BusService.h"

namespace tarnwick {

/// A setting of Xfce that is on or off, kept up to date by its service's signals.
class XfconfSwitch final : public QObject {
  Q_OBJECT
 public:
  XfconfSwitch(const QDBusConnection& session, const QString& channel, const QString& property);

  /// Off where it was never set. Absent while the service isn't running, and until it has answered.
  std::optional<bool> value() const { return value_; }
  /// `changed` follows in any case.
  void set(bool on);

 Q_SIGNALS:
  void changed();

 private:
  void read();

  BusService service_;
  QString channel_;
  QString property_;
  std::optional<bool> value_;
};

}  // namespace tarnwick
