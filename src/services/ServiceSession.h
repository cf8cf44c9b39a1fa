#pragma once

#include <QCoroTask>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QString>
#include <QUrl>
#include <functional>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "services/MaybeCredential.h"

namespace tarnwick {

/// How one signs in to a service with a client of one's own, in the browser. Each is told by the row that needs it.
struct OAuthProvider {
  QString id;          ///< Stable: a stored sign-in names by it who gave it.
  QString name;        ///< As the service writes itself.
  QUrl authorization;  ///< The page that the browser opens.
  QUrl token;          ///< Where codes and refresh tokens are exchanged.
  QString scope;
  QMap<QString, QString> extraFields;  ///< Further fields of the authorization address.
  QString clientField;                 ///< How the service calls the client's identity.
  QString neededScope;                 ///< One that the answer must name; empty where it says none.
  QString scopeMissing;                ///< The sentence when it does not.
  quint16 port = 0;                    ///< Where the browser comes back to on the loopback address; 0 for any.
};

/// One request to a service.
struct ServiceCall {
  QUrl url;
  QString token;                    ///< The credential; nothing is sent of an empty one.
  std::optional<QJsonObject> body;  ///< With one the request is a POST, without a GET.
  std::optional<QByteArray> form;   ///< In its place: an encoded form, sent as it stands.
  bool bearer = true;               ///< Whether the credential is sent as "Bearer …" or as it stands.
  QMap<QString, QString> headers;
  /// What is wanted of the decoded body, where that is little of much: it is looked for on the thread that decodes, and
  /// what it gives is the answer. May throw DomainError; must hold nothing that only the main thread may touch.
  std::function<QJsonValue(const QJsonValue&)> pick = {};
};

/// What a fetch may use of the world. Every fetch keeps the session alive until it has ended. Main thread only.
class ServiceSession {
 public:
  ServiceSession() = default;
  Q_DISABLE_COPY_MOVE(ServiceSession)
  virtual ~ServiceSession() = default;

  /// The decoded body of the answer, or what the call picks of it. Throws DomainError, ServiceHTTPError for a status
  /// that is no success, and Cancelled once `stop` is requested: then at once, whatever the service does.
  virtual QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) = 0;

  /// The credential that is kept for this widget and the host of its `endpoint`; empty where there is none. Throws
  /// DomainError where it cannot be read, and Cancelled.
  virtual QCoro::Task<QString> credential(DockWidget widget, std::stop_token stop) = 0;

  /// The same for a widget that can do without: where the keyring cannot be read the fetch goes on, unless it is known
  /// to keep one.
  virtual QCoro::Task<MaybeCredential> credentialIfAny(DockWidget widget, std::stop_token stop);

  /// The same where the user signs in at `provider`: a token that is good for a while. What is kept may be one itself,
  /// pasted by the user.
  virtual QCoro::Task<QString> accessToken(DockWidget widget, OAuthProvider provider, std::stop_token stop);

  /// The wall clock, in local time.
  virtual QDateTime now() const = 0;
};

}  // namespace tarnwick
