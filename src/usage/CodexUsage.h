#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <stop_token>

#include "services/RemoteValue.h"
#include "usage/ports/ChildExchange.h"

namespace tarnwick {

/// What the Codex command-line program tells of the user's plan: its server mode is asked over pipes and closed again.
struct CodexRPCRead {
  static constexpr double kSeconds = 25;
  static constexpr qint64 kMostBytes = 2'000'000;

  /// The first of the usual places where an executable of that name is; otherwise the commonest of them.
  static QString defaultExecutable();
  /// Asks, and gives the result. Blocks; not for the main thread. Throws DomainError and Cancelled.
  static QJsonObject run(const QString& executable, const StartChild& start, double timeout,
                         const std::stop_token& stop);
};

/// What is shown of it. Throws DomainError.
struct CodexUsageData {
  static QList<UsageWindow> windows(const QJsonObject& result, const QDateTime& now);
  static RemoteValue value(const QJsonObject& result, const QDateTime& now);
};

}  // namespace tarnwick
