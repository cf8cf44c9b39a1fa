#include "platform/net/LoadedTransport.h"

#include "base/ModuleLoader.h"

namespace tarnwick {

namespace {

/// An exchange that fails in the next turn.
class NoTransfer final : public HTTPTransfer {
 public:
  NoTransfer(Scheduler& scheduler, HTTPTransport::Done done) {
    end_ = scheduler.after(0, [done = std::move(done)] { done(HTTPFailure::Unreachable); });
  }

 private:
  JobHandle end_;
};

/// A function of the module; null where it cannot be loaded.
template <class Function>
Function door(const char* name) {
  return reinterpret_cast<Function>(ModuleLoader::function(QString::fromLatin1(kNetworkModule), name));
}

}  // namespace

std::unique_ptr<HTTPTransfer> LoadedTransport::send(HTTPRequest request, Done done) {
  if (!isAsked_) {
    isAsked_ = true;
    if (const auto make = door<MakeHTTPTransport>(kNetworkDoor)) transport_.reset(make(setup_));
  }
  if (!transport_) return std::make_unique<NoTransfer>(*setup_.scheduler, std::move(done));
  return transport_->send(std::move(request), std::move(done));
}

std::unique_ptr<LoopbackServer> loadedLoopbackServer(const NetworkSetup& setup) {
  const auto make = door<MakeLoopbackListener>(kLoopbackDoor);
  return std::unique_ptr<LoopbackServer>(make ? make(setup) : nullptr);
}

}  // namespace tarnwick
