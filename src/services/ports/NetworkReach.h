#pragma once

#include <QObject>

namespace tarnwick {

/// Whether the machine has a network at all. A sign-in page in between, or a network without a way out, counts as one:
/// what is asked then fails with a sentence of its own.
class NetworkReach : public QObject {
  Q_OBJECT
 public:
  /// Begins to watch, once. Before that nothing is asked of the machine.
  virtual void start() = 0;
  /// Whether it is known already; `changed` tells when it is.
  virtual bool isKnown() const = 0;
  /// True until it is known otherwise.
  virtual bool isOnline() const = 0;
  /// Whether there is one that is still being made, or taken down: what is asked meanwhile may fail for that.
  virtual bool isOnItsWay() const = 0;

 Q_SIGNALS:
  /// One of these is another.
  void changed();
};

}  // namespace tarnwick
