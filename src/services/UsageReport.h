#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <optional>
#include <span>

#include "services/RemoteValue.h"

namespace tarnwick {

/// What those share that tell how much of a subscription is used up: services, and programs on this machine. `now` is
/// the moment of the reading, and its zone the one of all dates.
struct UsageReport {
  /// An allowance that an answer holds under a name of its own.
  struct Named {
    const char* name;
    const char* label;  ///< In the words of ServiceWords.
    std::optional<double> minutes = std::nullopt;
  };
  /// How the fields of each are called.
  struct Fields {
    const char* percent;
    const char* resets;
  };

  /// "Add a valid … in Connection Settings."
  static QString missing(const QString& credential);
  /// Throws DomainError for what is no percentage.
  static double percent(const QJsonValue& value);
  /// The moment that an ISO 8601 text or a number of seconds or milliseconds names; absent for all else.
  static std::optional<QDateTime> moment(const QDateTime& now, const QJsonValue& value);
  /// Those that an answer holds, in the order of `named`; their ids begin with `prefix`. Throws DomainError.
  static QList<UsageWindow> windows(const QDateTime& now, const QJsonValue& holder, const QString& prefix,
                                    std::span<const Named> named, const Fields& fields);
  /// What is shown of the windows; the first one leads. Throws DomainError without one.
  static RemoteValue of(const QDateTime& now, const QList<UsageWindow>& windows);
};

}  // namespace tarnwick
