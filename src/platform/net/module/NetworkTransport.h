#pragma once

#include <QNetworkAccessManager>
#include <QSslConfiguration>
#include <optional>

#include "platform/net/NetworkModule.h"
#include "platform/net/module/HostGate.h"
#include "platform/net/module/ProxyTable.h"

namespace tarnwick {

/// The transport over the toolkit's network access: HTTP/1.1 and 2.
class NetworkTransport final : public HTTPTransport {
 public:
  explicit NetworkTransport(const NetworkSetup& setup, ProxyTable::Sources proxies = ProxyTable::Sources::ofSystem());

  std::unique_ptr<HTTPTransfer> send(HTTPRequest request, Done done) override;

 private:
  friend class NetworkTransfer;

  QNetworkReply* start(const HTTPRequest& request, HostGate::Connection connection);

  Scheduler& scheduler_;
  std::optional<QSslConfiguration> trusting_;  ///< Where there are certificates besides those of the system.
  ProxyTable proxies_;
  HostGate gate_;
  QNetworkAccessManager manager_;
};

}  // namespace tarnwick
