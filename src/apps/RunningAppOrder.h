#pragma once

#include <QList>
#include <QMap>

namespace tarnwick {

/// Keeps running applications in the order in which they were first seen, whichever is in front.
struct RunningAppOrder {
  QMap<quint64, int> firstSeen;  ///< By identity: the sequence number of its arrival.
  int arrivals = 0;              ///< The sequence number given last.

  /// The same identities in their lasting order. Those that are no longer listed are forgotten, and get a new place at
  /// the end should they come back.
  QList<quint64> ordered(const QList<quint64>& identities);

  bool operator==(const RunningAppOrder&) const = default;
};

}  // namespace tarnwick
