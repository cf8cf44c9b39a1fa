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

}  // namespace

std::unique_ptr<HTTPTransfer> LoadedTransport::send(HTTPRequest request, Done done) {
  if (!isAsked_) {
    isAsked_ = true;
    const auto make =
        reinterpret_cast<MakeHTTPTransport>(ModuleLoader::function(QString::fromLatin1(kNetworkModule), kNetworkDoor));
    if (make) transport_.reset(make(setup_));
  }
  if (!transport_) return std::make_unique<NoTransfer>(*setup_.scheduler, std::move(done));
  return transport_->send(std::move(request), std::move(done));
}

}  // namespace tarnwick
