#pragma once

#include <QList>

#include "facilities/BeatClient.h"

namespace tarnwick {

/// The beat's clients in their three orders: of the start, of a beat and of the end. Clients of one step run in the
/// order in which they were given. Borrowed.
class BeatClients {
 public:
  explicit BeatClients(const QList<BeatClient*>& clients);

  /// Starts those up to a step, counted in the order of the start.
  void startThrough(BeatStep last, const DockConfiguration& config, const ActiveSets& active) const;
  /// Starts those behind it.
  void startAfter(BeatStep last, const DockConfiguration& config, const ActiveSets& active) const;
  /// Beats those from one step to another, both included, that are needed and due on this tick.
  void beat(BeatStep from, BeatStep to, qint64 tick, const ActiveSets& active) const;
  void wake() const;
  /// Ends those up to a step, counted in the order of the end.
  void endThrough(BeatStep last) const;
  /// Ends those behind it.
  void endAfter(BeatStep last) const;

 private:
  QList<BeatClient*> starting_;
  QList<BeatClient*> beating_;
  QList<BeatClient*> ending_;
};

}  // namespace tarnwick
