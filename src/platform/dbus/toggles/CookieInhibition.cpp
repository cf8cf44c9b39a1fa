#include "platform/dbus/toggles/CookieInhibition.h"

#include <utility>

namespace tarnwick {

using namespace Qt::StringLiterals;

CookieInhibition::CookieInhibition(BusService& service, const QString& path, const QString& interface,
                                   const QVariantList& arguments, QObject* parent)
    : QObject(parent), service_(service), path_(path), interface_(interface), arguments_(arguments) {
  connect(&service_, &BusService::ownerChanged, this, [this] {
    cookie_.reset();
    asking_ = false;
    settle();
    Q_EMIT changed();
  });
}

void CookieInhibition::want(bool wanted) {
  wanted_ = wanted;
  settle();
  if (!asking_) Q_EMIT changed();
}

// One question at a time; a change of mind while it is under way is settled by its answer.
void CookieInhibition::settle() {
  if (asking_ || wanted_ == isHeld() || !service_.isRunning()) return;
  asking_ = true;
  if (!wanted_) {
    service_.call(path_, interface_, u"UnInhibit"_s, {*std::exchange(cookie_, std::nullopt)}, this,
                  [this](const QDBusMessage&) {
                    asking_ = false;
                    settle();
                    Q_EMIT changed();
                  });
    return;
  }
  service_.call(path_, interface_, u"Inhibit"_s, arguments_, this, [this](const QDBusMessage& reply) {
    asking_ = false;
    if (reply.type() == QDBusMessage::ReplyMessage) {
      cookie_ = reply.arguments().value(0).toUInt();
      settle();
    } else {
      // Refused; asking again at once would only be refused again.
      wanted_ = false;
    }
    Q_EMIT changed();
  });
}

}  // namespace tarnwick
