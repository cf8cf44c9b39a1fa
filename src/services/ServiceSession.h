#pragma once

#include <QCoroTask>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QUrl>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"

namespace tarnwick {

/// One request to a service.
struct ServiceCall {
  QUrl url;
  QString token;                    ///< The credential; nothing is sent of an empty one.
  std::optional<QJsonObject> body;  ///< With one the request is a POST, without a GET.
  bool bearer = true;               ///< Whether the credential is sent as "Bearer …" or as it stands.
  QMap<QString, QString> headers;
};

/// What a fetch may use of the world. Every fetch keeps the session alive until it has ended. Main thread only.
class ServiceSession {
 public:
  ServiceSession() = default;
  Q_DISABLE_COPY_MOVE(ServiceSession)
  virtual ~ServiceSession() = default;

  /// The decoded body of the answer. Throws DomainError, ServiceHTTPError for a status that is no success, and
  /// Cancelled once `stop` is requested: then at once, whatever the service does.
  virtual QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) = 0;

  /// The credential that is kept for this widget and the host of its `endpoint`; empty where there is none. Throws
  /// DomainError where it cannot be read, and Cancelled.
  virtual QCoro::Task<QString> credential(DockWidget widget, std::stop_token stop) = 0;

  /// The wall clock, in local time.
  virtual QDateTime now() const = 0;
};

}  // namespace tarnwick
