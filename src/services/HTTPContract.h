#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>
#include <optional>

#include "services/ServiceSession.h"
#include "services/ports/HTTPTransport.h"

namespace tarnwick {

/// What every request to a service must be like, and what of an answer is taken. No message names the host, the
/// credential or the body.
struct HTTPContract {
  /// Throws DomainError for an address that is not https or has a user in it, and for a header with a line break.
  static HTTPRequest request(const ServiceCall& call);

  /// The decoded body. Throws what `judge` throws, and DomainError for a body that is no JSON.
  static QJsonValue response(const HTTPResponse& response);

  /// Throws ServiceHTTPError for a status that is no success, and DomainError for what is no answer or is too large.
  static void judge(const HTTPResponse& response);
  /// The object or array that a body is; absent for one that is none. Any thread.
  static std::optional<QJsonValue> decode(const QByteArray& body);
  /// What is said where `decode` gave nothing.
  static QString invalidJSON();

  /// Why there was no answer, for the user.
  static QString sentence(HTTPFailure failure);

  /// The moment that a Retry-After field names, a number of seconds or a date: not before `now` and at most a day
  /// behind it. Absent where it names none.
  static std::optional<QDateTime> retryDate(const std::optional<QString>& value, const QDateTime& now);
};

}  // namespace tarnwick
