#include "platform/dbus/LoginSessionEvents.h"

#include <unistd.h>

#include <QDBusObjectPath>
#include <QMetaObject>
#include <utility>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView kManagerPath("/org/freedesktop/login1");
constexpr QLatin1StringView kManager("org.freedesktop.login1.Manager");

QString pathIn(const QDBusMessage& message, int argument) {
  return message.arguments().value(argument).value<QDBusObjectPath>().path();
}

}  // namespace

LoginSessionEvents::LoginSessionEvents(const QDBusConnection& system, QObject* parent)
    : login_(system, u"org.freedesktop.login1"_s),
      delay_(login_, u"sleep:shutdown"_s, tr("Saving the dock"), u"delay"_s),
      sessionId_(qEnvironmentVariable("XDG_SESSION_ID")) {
  setParent(parent);
  const auto listen = [this](const QString& signal, void (LoginSessionEvents::*handler)(bool)) {
    login_.listen(kManagerPath, kManager, signal, [this, handler](const QDBusMessage& message) {
      (this->*handler)(message.arguments().value(0).toBool());
    });
  };
  listen(u"PrepareForSleep"_s, &LoginSessionEvents::prepareForSleep);
  listen(u"PrepareForShutdown"_s, &LoginSessionEvents::prepareForShutdown);
  login_.listen(kManagerPath, kManager, u"SessionRemoved"_s, [this](const QDBusMessage& message) {
    if (isOurs(message)) Q_EMIT ending();
  });
  login_.listen(kManagerPath, kManager, u"UserRemoved"_s, [this](const QDBusMessage& message) {
    if (message.arguments().value(0) == QVariant(static_cast<uint>(::getuid()))) Q_EMIT ending();
  });
  connect(&login_, &BusService::ownerChanged, this, [this] {
    delay_.release();
    delay_.take();
    findSession();
    findLock();
  });
}

// What the login manager knows goes before the environment, which may come from another session of the user's. A
// program that the user's service manager started is in no session: then the environment alone tells.
void LoginSessionEvents::findSession() {
  login_.call(kManagerPath, kManager, u"GetSessionByPID"_s, {0U}, this, [this](const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage) sessionPath_ = pathIn(reply, 0);
  });
}

bool LoginSessionEvents::isOurs(const QDBusMessage& removed) const {
  if (!sessionPath_.isEmpty()) return pathIn(removed, 1) == sessionPath_;
  return !sessionId_.isEmpty() && removed.arguments().value(0).toString() == sessionId_;
}

/// The one that the program runs in, or where it was started beside it, the one that the user sees. What was known of
/// it stays true until another login manager says something else.
void LoginSessionEvents::findLock() {
  session_.reset();
  if (!login_.isRunning()) return learnLock();
  login_.call(kManagerPath, kManager, u"GetSession"_s, {u"auto"_s}, this, [this](const QDBusMessage& reply) {
    const QString path = reply.type() == QDBusMessage::ReplyMessage
                             ? reply.arguments().value(0).value<QDBusObjectPath>().path()
                             : QString();
    if (path.isEmpty()) return setLocked(false);
    session_ = std::make_unique<BusProperties>(login_, path, u"org.freedesktop.login1.Session"_s);
    connect(session_.get(), &BusProperties::changed, this,
            [this] { setLocked(session_->value(u"LockedHint"_s).toBool()); });
  });
}

void LoginSessionEvents::setLocked(bool locked) {
  if (std::exchange(isLocked_, locked) != locked) Q_EMIT lockedChanged(locked);
  learnLock();
}

void LoginSessionEvents::learnLock() {
  if (!std::exchange(isLockKnown_, true)) Q_EMIT lockKnown();
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
