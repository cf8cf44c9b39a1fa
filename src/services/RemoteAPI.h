#pragma once

#include <QCoroTask>
#include <QJsonValue>
#include <memory>
#include <stop_token>

#include "services/ServiceSession.h"
#include "services/ports/HTTPTransport.h"

namespace tarnwick {

/// Requests to services, as steps that are awaited. All throw Cancelled once `stop` is requested, at once, and keep the
/// transport until they have ended. Main thread only.
struct RemoteAPI {
  /// Larger bodies are decoded on another thread.
  static constexpr qsizetype largestDecodedHere = 64 * 1024;

  /// By HTTPContract from the address to the decoded body. Throws what that throws, and DomainError with the sentence
  /// of a transfer that failed.
  static QCoro::Task<QJsonValue> json(std::shared_ptr<HTTPTransport> transport, ServiceCall call, std::stop_token stop);

  /// The answer as it came, whatever its status. Throws DomainError where there is none.
  static QCoro::Task<HTTPResponse> send(std::shared_ptr<HTTPTransport> transport, HTTPRequest request,
                                        std::stop_token stop);
};

}  // namespace tarnwick
