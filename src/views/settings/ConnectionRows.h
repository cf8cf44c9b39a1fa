#pragma once

#include <QDateTime>
#include <QList>
#include <optional>

#include "config/DockConfiguration.h"
#include "services/RemoteReading.h"
#include "views/settings/OrderList.h"

namespace tarnwick {

/// What Settings says of widgets that are connected to a service. Pure.
struct ConnectionRows {
  /// The widgets of all profiles that are, in their order.
  static QList<DockWidget> widgets(const DockConfiguration& config);
  /// The service and the host that a widget asks: "Plausible · plausible.io".
  static QString service(const DockWidget& widget);
  /// How it stands, in a word or two.
  static QString state(const std::optional<RemoteReading>& reading, const QDateTime& now, bool use24Hour);
  /// What went wrong or is waited for, when the service last answered, and when it is asked the next time.
  static QString details(const std::optional<RemoteReading>& reading, const std::optional<QDateTime>& next,
                         const QDateTime& now, bool use24Hour);
};

}  // namespace tarnwick
