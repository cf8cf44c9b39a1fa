#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace tarnwick {

/// What bounds every exchange with a service.
struct HTTPLimits {
  /// Of the body of a success, decoded. Exactly so many pass.
  static constexpr qsizetype largestBody = 5'000'000;
  /// From leaving the queue of its host to the last byte of the body.
  static constexpr double seconds = 20;
  static constexpr int connectionsToHost = 4;
};

/// Header fields in the order in which they were set. Names compare without case.
class HTTPHeaders {
 public:
  /// Replaces a field of that name.
  void set(const QByteArray& name, const QByteArray& value) {
    for (auto& [known, kept] : fields_) {
      if (known.compare(name, Qt::CaseInsensitive) != 0) continue;
      known = name;
      kept = value;
      return;
    }
    fields_.emplaceBack(name, value);
  }
  std::optional<QByteArray> value(const QByteArray& name) const {
    for (const auto& [known, kept] : fields_) {
      if (known.compare(name, Qt::CaseInsensitive) == 0) return kept;
    }
    return std::nullopt;
  }
  const QList<std::pair<QByteArray, QByteArray>>& fields() const { return fields_; }

 private:
  QList<std::pair<QByteArray, QByteArray>> fields_;
};

/// What is sent as it stands. One with a body is a POST, one without a GET.
struct HTTPRequest {
  QUrl url;
  HTTPHeaders headers;
  std::optional<QByteArray> body;
};

/// What a server answered. A redirection is an answer like others.
struct HTTPResponse {
  int status = 0;  ///< 0 where the answer was none of HTTP.
  HTTPHeaders headers;
  QByteArray body;     ///< Decoded; read only of a status from 200 to 299.
  QDateTime received;  ///< By the wall clock, in local time.
};

/// Why there is no answer.
enum class HTTPFailure { Unreachable, TimedOut, TooLarge };

using HTTPAnswer = std::variant<HTTPResponse, HTTPFailure>;

/// An exchange under way. Destroying it cancels: it leaves the queue of its host, or its connection is closed.
class HTTPTransfer {
 public:
  HTTPTransfer() = default;
  Q_DISABLE_COPY_MOVE(HTTPTransfer)
  virtual ~HTTPTransfer() = default;
};

/// Carries requests to servers within HTTPLimits. It follows no redirection, keeps nothing (cookies, credentials,
/// answers) from one to the next, in memory or on the disk, and trusts the certificates that the system trusts. Main
/// thread only; never blocks it.
class HTTPTransport {
 public:
  using Done = std::function<void(HTTPAnswer)>;

  HTTPTransport() = default;
  Q_DISABLE_COPY_MOVE(HTTPTransport)
  virtual ~HTTPTransport() = default;

  /// `done` is called once, never inside this call, and not after the transfer is gone; it may destroy the transfer.
  /// The transport must outlive what it gives.
  [[nodiscard]] virtual std::unique_ptr<HTTPTransfer> send(HTTPRequest request, Done done) = 0;
};

}  // namespace tarnwick
