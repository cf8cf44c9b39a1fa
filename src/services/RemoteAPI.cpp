#include "services/RemoteAPI.h"

#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include "base/Background.h"
#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/ProbeCounters.h"
#include "services/HTTPContract.h"
#include "services/ServiceUnreachable.h"

namespace tarnwick {

namespace {

/// A body of so many bytes leaves enough memory behind to be worth giving back.
constexpr qsizetype kMuch = 1 << 20;

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

using Pick = std::function<QJsonValue(const QJsonValue&)>;

/// What a body came to. Moved from thread to thread, so that it ends where it should.
struct Decoded {
  std::optional<QJsonValue> value;
  std::exception_ptr fault;
};

Decoded decodedBy(const QByteArray& body, const Pick& pick) {
  Decoded decoded;
  try {
    decoded.value = HTTPContract::decode(body);
    if (decoded.value && pick) decoded.value = pick(*decoded.value);
  } catch (...) {
    decoded.fault = std::current_exception();
  }
  return decoded;
}

/// Much JSON is hundreds of thousands of pieces of memory: letting go of it takes as long as decoding it.
void endElsewhere(Decoded decoded, bool isMuch) {
  const auto last = std::make_shared<Decoded>(std::move(decoded));
  Background::run(Background::Lane::Computing, [last, isMuch] {
    *last = {};
    if (isMuch) Background::giveBackMemory();
  });
}

QCoro::Task<QJsonValue> decodeElsewhere(QByteArray body, Pick pick, std::stop_token stop) {
  const auto pending = std::make_shared<Pending<Decoded>>();
  Background::run(Background::Lane::Computing, [body = std::move(body), pick = std::move(pick), pending]() mutable {
    const bool isMuch = body.size() > kMuch;
    const bool isWhole = !pick;
    const auto decoded = std::make_shared<Decoded>(decodedBy(body, pick));
    body.clear();
    Background::answer([pending = std::move(pending), decoded, isWhole, isMuch] {
      // Whoever waits for it goes on within this, and is done with it behind it.
      pending->end(*decoded);
      if (isWhole) endElsewhere(std::move(*decoded), isMuch);
    });
    if (isMuch && !isWhole) Background::giveBackMemory();
  });
  const std::stop_callback wake(stop, [pending] { pending->end(); });
  const EndOf<Decoded> end{pending};
  co_await end;
  throwIfStopped(stop);
  const Decoded decoded = *std::exchange(pending->result, std::nullopt);
  if (decoded.fault) std::rethrow_exception(decoded.fault);
  if (!decoded.value) throw DomainError::invalid(HTTPContract::invalidJSON());
  co_return *decoded.value;
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
  if (const auto* failure = std::get_if<HTTPFailure>(&*pending->result)) {
    if (*failure == HTTPFailure::TooLarge) throw DomainError::invalid(HTTPContract::sentence(*failure));
    throw ServiceUnreachable(HTTPContract::sentence(*failure));
  }
  co_return std::get<HTTPResponse>(*std::move(pending->result));
}

}  // namespace

QCoro::Task<QJsonValue> RemoteAPI::json(std::shared_ptr<HTTPTransport> transport, ServiceCall call,
                                        std::stop_token stop) {
  ProbeCounters::count("serviceRequest");
  HTTPRequest request = HTTPContract::request(call);
  HTTPResponse response = co_await send(transport, std::move(request), stop);
  throwIfStopped(stop);
  HTTPContract::judge(response);
  if (response.body.size() > largestDecodedHere) {
    QJsonValue value = co_await decodeElsewhere(std::move(response.body), std::move(call.pick), stop);
    co_return value;
  }
  const QJsonValue value = HTTPContract::response(response);
  co_return call.pick ? call.pick(value) : value;
}

QCoro::Task<HTTPResponse> RemoteAPI::send(std::shared_ptr<HTTPTransport> transport, HTTPRequest request,
                                          std::stop_token stop) {
  return exchange(std::move(transport), std::move(request), std::move(stop));
}

}  // namespace tarnwick
