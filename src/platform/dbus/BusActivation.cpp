#include "platform/dbus/BusActivation.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QRegularExpression>
#include <QVariantMap>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// Whether an id can be the name of a program on the bus.
bool isBusName(const QString& id) {
  static const QRegularExpression pattern(u"^[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+$"_s);
  return id.size() <= 255 && pattern.match(id).hasMatch();
}

QDBusMessage activation(const QString& application, const LaunchRequest& request) {
  QString path = u'/' + application;
  path.replace(u'.', u'/').replace(u'-', u'_');
  QVariantMap platform{{u"desktop-startup-id"_s, request.startupId}};
  if (!request.activationToken.isEmpty()) platform.insert(u"activation-token"_s, request.activationToken);
  const auto call = [&](const QString& method) {
    return QDBusMessage::createMethodCall(application, path, u"org.freedesktop.Application"_s, method);
  };
  QDBusMessage message;
  if (!request.action.isEmpty()) {
    message = call(u"ActivateAction"_s);
    message << request.action << QVariantList() << platform;
  } else if (request.urls.isEmpty()) {
    message = call(u"Activate"_s);
    message << platform;
  } else {
    QStringList urls;
    for (const QUrl& url : request.urls) urls << url.toString(QUrl::FullyEncoded);
    message = call(u"Open"_s);
    message << urls << platform;
  }
  return message;
}

}  // namespace

bool BusActivation::activate(const QString& application, const LaunchRequest& request,
                             std::function<void()> unreachable) {
  if (!isBusName(application)) return false;
  QDBusConnection bus = bus_();
  if (!bus.isConnected()) return false;
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(activation(application, request)), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, unreachable = std::move(unreachable)] {
    watcher->deleteLater();
    // A program that takes its time has been reached nevertheless: a second one is not wanted.
    const QDBusError error = QDBusPendingReply<>(*watcher).error();
    if (!error.isValid() || error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut) return;
    unreachable();
  });
  return true;
}

}  // namespace tarnwick
