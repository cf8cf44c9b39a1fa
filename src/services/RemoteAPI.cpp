#include "services/RemoteAPI.h"

#include <coroutine>
#include <utility>

#include "base/Background.h"
#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/ProbeCounters.h"
#include "services/HTTPContract.h"

namespace tarnwick {

namespace {

/// Something that is awaited by one coroutine and ends once, with a result or, where it is not wanted any more,
/// without.
template <class Result>
struct Pending {
  std::optional<Result> result;
  bool isOver = false;
  std::coroutine_handle<> waiting;

  /// The coroutine goes on within this, and may destroy what holds it.
  void end() {
    if (std::exchange(isOver, true)) return;
    if (waiting) std::exchange(waiting, {}).resume();
  }
  void end(Result found) {
    if (isOver) return;
    result = std::move(found);
    end();
  }
};

/// Awaited. The compiler may keep a copy of it, so it holds nothing of its own.
template <class Result>
struct EndOf {
  std::shared_ptr<Pending<Result>> pending;

  bool await_ready() const noexcept { return pending->isOver; }
  void await_suspend(std::coroutine_handle<> coroutine) const { pending->waiting = coroutine; }
  void await_resume() const noexcept {}
};

QCoro::Task<std::optional<QJsonValue>> decodeElsewhere(QByteArray body, std::stop_token stop) {
  using Decoded = std::optional<QJsonValue>;
  const auto pending = std::make_shared<Pending<Decoded>>();
  Background::run(Background::Lane::Computing, [body, pending]() mutable {
    Decoded decoded = HTTPContract::decode(body);
    Background::answer([pending = std::move(pending), decoded = std::move(decoded)] { pending->end(decoded); });
  });
  const std::stop_callback wake(stop, [pending] { pending->end(); });
  const EndOf<Decoded> end{pending};
  co_await end;
  throwIfStopped(stop);
  co_return *pending->result;
}

QCoro::Task<HTTPResponse> exchange(std::shared_ptr<HTTPTransport> transport, HTTPRequest request,
                                   std::stop_token stop) {
  throwIfStopped(stop);
  const auto pending = std::make_shared<Pending<HTTPAnswer>>();
  const std::unique_ptr<HTTPTransfer> transfer =
      transport->send(std::move(request), [pending](HTTPAnswer answer) { pending->end(std::move(answer)); });
  const std::stop_callback wake(stop, [pending] { pending->end(); });
  const EndOf<HTTPAnswer> end{pending};
  co_await end;
  throwIfStopped(stop);
  if (const auto* failure = std::get_if<HTTPFailure>(&*pending->result))
    throw DomainError::invalid(HTTPContract::sentence(*failure));
  co_return std::get<HTTPResponse>(*std::move(pending->result));
}

}  // namespace

QCoro::Task<QJsonValue> RemoteAPI::json(std::shared_ptr<HTTPTransport> transport, ServiceCall call,
                                        std::stop_token stop) {
  ProbeCounters::count("serviceRequest");
  HTTPRequest request = HTTPContract::request(call);
  const HTTPResponse response = co_await send(transport, std::move(request), stop);
  throwIfStopped(stop);
  HTTPContract::judge(response);
  if (response.body.size() <= largestDecodedHere) co_return HTTPContract::response(response);
  const std::optional<QJsonValue> value = co_await decodeElsewhere(response.body, stop);
  if (!value) throw DomainError::invalid(HTTPContract::invalidJSON());
  co_return *value;
}

QCoro::Task<HTTPResponse> RemoteAPI::send(std::shared_ptr<HTTPTransport> transport, HTTPRequest request,
                                          std::stop_token stop) {
  return exchange(std::move(transport), std::move(request), std::move(stop));
}

}  // namespace tarnwick
