#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

#include "usage/LocalTokens.h"
#include "usage/ports/UsageDatabase.h"

namespace tarnwick {

/// The tokens of Gemini models that two programs noted in their databases. Throws DomainError; never a part of a total.
struct LocalUsageDatabase {
  static RemoteValue openCode(UsageDatabase& database, const QDateTime& now);
  static RemoteValue hermes(UsageDatabase& database, const QDateTime& now);

  /// A number of tokens.
  static double count(const QVariant& value);
};

}  // namespace tarnwick
