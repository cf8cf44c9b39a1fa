#pragma once

#include <QCoroFwd>
#include <QString>
#include <exception>
#include <memory>
#include <stop_token>

#include "base/Scheduler.h"
#include "services/ports/LoopbackServer.h"

namespace tarnwick {

struct OAuthLoopbackState;

/// Waits for the browser to come back from a sign-in: one object per attempt. It takes what comes once, and only from
/// the browser that was sent away with `state`; all else is refused and waited on. Destroying it ends the attempt and
/// frees the port. Main thread only.
class OAuthLoopback {
 public:
  static constexpr double kSeconds = 180;

  /// The scheduler must outlive it.
  OAuthLoopback(const MakeLoopbackServer& make, Scheduler& scheduler);
  Q_DISABLE_COPY_MOVE(OAuthLoopback)
  ~OAuthLoopback();

  /// Where the browser comes back to at this port.
  static QString redirect(quint16 port);

  /// Listens on a port of 127.0.0.1, 0 for any, and gives the address at which it does. Throws DomainError.
  QString start(quint16 port, const QString& state);
  /// The code that comes back, for kSeconds at most. Throws DomainError, OAuthDeclined, what `stop` is told, and
  /// Cancelled. May outlive this object, whose end is Cancelled.
  QCoro::Task<QString> code(std::stop_token stop);
  /// Ends the attempt for whoever waits.
  void stop(const std::exception_ptr& error);

 private:
  std::shared_ptr<OAuthLoopbackState> state_;
};

}  // namespace tarnwick
