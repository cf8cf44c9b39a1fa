#include "platform/dbus/StatusNotifierWatch.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace tarnwick {

using namespace Qt::StringLiterals;

void StatusNotifierWatch::look() {
  if (!bus_.isConnected()) {
    Q_EMIT missing();
    return;
  }
  const QString name = u"org.kde.StatusNotifierWatcher"_s;
  if (!watcher_) {
    watcher_ = new QDBusServiceWatcher(name, bus_, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher_, &QDBusServiceWatcher::serviceRegistered, this, &Tray::found);
  }
  auto* asked = new QDBusPendingCallWatcher(bus_.interface()->asyncCall(u"NameHasOwner"_s, name), this);
  connect(asked, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
    const QDBusPendingReply<bool> reply = *call;
    call->deleteLater();
    const bool isThere = reply.isValid() && reply.value();
    isThere ? Q_EMIT found() : Q_EMIT missing();
  });
}

}  // namespace tarnwick
