#include "platform/dbus/LoginSessionEvents.h"

#include <QMetaObject>

namespace tarnwick {

using namespace Qt::StringLiterals;

LoginSessionEvents::LoginSessionEvents(const QDBusConnection& system, QObject* parent)
    : login_(system, u"org.freedesktop.login1"_s),
      delay_(login_, u"sleep:shutdown"_s, tr("Saving the dock"), u"delay"_s) {
  setParent(parent);
  const auto listen = [this](const QString& signal, void (LoginSessionEvents::*handler)(bool)) {
    login_.listen(
        u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, signal,
        [this, handler](const QDBusMessage& message) { (this->*handler)(message.arguments().value(0).toBool()); });
  };
  listen(u"PrepareForSleep"_s, &LoginSessionEvents::prepareForSleep);
  listen(u"PrepareForShutdown"_s, &LoginSessionEvents::prepareForShutdown);
  connect(&login_, &BusService::ownerChanged, this, [this] {
    delay_.release();
    delay_.take();
  });
}

void LoginSessionEvents::prepareForSleep(bool begins) {
  if (begins) {
    Q_EMIT willSleep();
    releaseBehindTheHandlers();
  } else {
    delay_.take();
    Q_EMIT didWake();
  }
}

void LoginSessionEvents::prepareForShutdown(bool begins) {
  if (begins) {
    Q_EMIT ending();
    releaseBehindTheHandlers();
  } else {
    delay_.take();
  }
}

// Posted, so that work which a handler queued for itself is done too before the machine goes on.
void LoginSessionEvents::releaseBehindTheHandlers() {
  QMetaObject::invokeMethod(
      this, [this] { delay_.release(); }, Qt::QueuedConnection);
}

}  // namespace tarnwick
