#pragma once

#include <QJsonValue>
#include <optional>

#include "services/Provider.h"

namespace tarnwick {

/// What the services share that tell how much of a subscription is used up.
struct UsageReport {
  /// The credential without blanks around it. Throws DomainError with the row's sentence for one that holds any.
  static QString token(const ProviderRequest& request, const QString& missing);
  /// "Add a valid … in Connection Settings."
  static QString missing(const QString& credential);
  /// Throws DomainError for what is no percentage.
  static double percent(const QJsonValue& value);
  /// The moment that an ISO 8601 text or a number of seconds or milliseconds names; absent for all else.
  static std::optional<QDateTime> moment(const QJsonValue& value, const QDateTime& now);
  /// What is shown of the windows; the first one leads. Throws DomainError without one.
  static RemoteValue of(const ProviderRequest& request, const QList<UsageWindow>& windows);
};

}  // namespace tarnwick
