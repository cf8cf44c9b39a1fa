#pragma once

#include <QByteArray>
#include <QHash>
#include <QProcess>
#include <QString>
#include <memory>

#include "services/ports/HTTPTransport.h"

namespace tarnwick {

/// The servers of all services of the script, each at a loopback address of its own over TLS, in a process of their
/// own.
class ServiceProcess {
 public:
  /// What the servers saw since they were asked before.
  struct Report {
    int requests = 0;
    qint64 bytes = 0;  ///< Of the answers.
    int most = 0;      ///< Connections to one of them at once, counted at the client's sockets at every step.
    QString busiest;   ///< The host that had so many.
  };

  /// Starts them; `authority` is empty where that failed.
  ServiceProcess();
  Q_DISABLE_COPY_MOVE(ServiceProcess)
  ~ServiceProcess();

  const QByteArray& authority() const { return authority_; }
  Report report();
  /// A transport that asks these servers in the place of the services.
  std::shared_ptr<HTTPTransport> redirected(std::shared_ptr<HTTPTransport> real) const;

  /// Is the servers: writes where they are in one line, then a report for each line that it reads, until its input
  /// ends.
  static int serve();

 private:
  QByteArray line();

  QProcess process_;
  QByteArray authority_;
  QHash<QString, QString> places_;  ///< Address and port by host.
};

}  // namespace tarnwick
