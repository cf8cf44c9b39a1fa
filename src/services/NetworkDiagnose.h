#pragma once

#include <QCoroFwd>
#include <QJsonArray>
#include <QString>
#include <functional>
#include <memory>
#include <stop_token>

#include "services/BaseAddresses.h"
#include "services/ports/HTTPTransport.h"

namespace tarnwick {

class ServiceSession;

/// Whether services on the net can be reached from here: three that want no account are asked, one after the other.
struct NetworkDiagnose {
  static constexpr double kSeconds = 55;

  /// The mode of the command line: prints the three results as one line of JSON, or that they took longer than so many
  /// seconds. Waits for that in an event loop of its own. Gives the exit code, which is 0: a service that cannot be
  /// reached is a result.
  static int run(std::shared_ptr<HTTPTransport> transport, const BaseAddresses& addresses,
                 const std::function<void(const QString&)>& print, double seconds = kSeconds);

  /// The results: the name of each case with its value, or with the sentence of its failure. Throws only Cancelled.
  static QCoro::Task<QJsonArray> results(std::shared_ptr<ServiceSession> session, BaseAddresses addresses,
                                         std::stop_token stop);
};

}  // namespace tarnwick
