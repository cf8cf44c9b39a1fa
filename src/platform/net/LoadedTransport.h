#pragma once

#include "platform/net/NetworkModule.h"

namespace tarnwick {

/// The transport of the running program: loads the module that holds it with the first request. Where it cannot be
/// loaded, no server can be reached.
class LoadedTransport final : public HTTPTransport {
 public:
  explicit LoadedTransport(NetworkSetup setup) : setup_(std::move(setup)) {}

  std::unique_ptr<HTTPTransfer> send(HTTPRequest request, Done done) override;

 private:
  NetworkSetup setup_;
  std::unique_ptr<HTTPTransport> transport_;
  bool isAsked_ = false;
};

/// The same for the server that a browser comes back to; null where the module cannot be loaded.
std::unique_ptr<LoopbackServer> loadedLoopbackServer(const NetworkSetup& setup);

}  // namespace tarnwick
