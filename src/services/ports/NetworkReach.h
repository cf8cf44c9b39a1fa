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
  /// True until it is known otherwise.
  virtual bool isOnline() const = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
