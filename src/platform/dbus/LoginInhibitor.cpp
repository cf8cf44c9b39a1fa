#include "platform/dbus/LoginInhibitor.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

LoginInhibitor::LoginInhibitor(BusService& login, const QString& what, const QString& why, const QString& mode,
                               QObject* parent)
    : QObject(parent), login_(login), what_(what), why_(why), mode_(mode) {}

void LoginInhibitor::take() {
  if (isHeld()) return;
  const int asked = ++generation_;
  login_.call(u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"Inhibit"_s,
              {what_, u"Tarnwick"_s, why_, mode_}, this, [this, asked](const QDBusMessage& reply) {
                // Released in the meantime: the descriptor in the reply closes with the reply.
                if (asked != generation_) return;
                if (reply.type() == QDBusMessage::ReplyMessage) {
                  descriptor_ = qvariant_cast<QDBusUnixFileDescriptor>(reply.arguments().value(0));
                }
                Q_EMIT changed();
              });
}

void LoginInhibitor::release() {
  ++generation_;
  descriptor_ = QDBusUnixFileDescriptor();
}

}  // namespace tarnwick
