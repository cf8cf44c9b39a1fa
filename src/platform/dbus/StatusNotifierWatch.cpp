#include "platform/dbus/StatusNotifierWatch.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace tarnwick {

using namespace Qt::StringLiterals;

void StatusNotifierWatch::start(QDBusConnection bus) {
  if (!bus.isConnected()) {
    Q_EMIT missing();
    return;
  }
  const QString name = u"org.kde.StatusNotifierWatcher"_s;
  auto* watcher = new QDBusServiceWatcher(name, bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierWatch::found);
  auto* asked = new QDBusPendingCallWatcher(bus.interface()->asyncCall(u"NameHasOwner"_s, name), this);
  connect(asked, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<bool> reply = *call;
    call->deleteLater();
    const bool isThere = reply.isValid() && reply.value();
    isThere ? Q_EMIT found() : Q_EMIT missing();
  });
}

}  // namespace tarnwick
