#include "platform/dbus/toggles/XfconfSwitch.h"

#include <QDBusVariant>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kXfconf = "org.xfce.Xfconf"_L1;
constexpr auto kXfconfPath = "/org/xfce/Xfconf"_L1;

}  // namespace

XfconfSwitch::XfconfSwitch(const QDBusConnection& session, const QString& channel, const QString& property)
    : service_(session, kXfconf), channel_(channel), property_(property) {
  for (const QString& signal : {u"PropertyChanged"_s, u"PropertyRemoved"_s})
    service_.listen(kXfconfPath, kXfconf, signal, [this](const QDBusMessage&) { read(); }, {channel, property});
  connect(&service_, &BusService::ownerChanged, this, &XfconfSwitch::read);
}

void XfconfSwitch::read() {
  if (!service_.isRunning()) {
    value_.reset();
    Q_EMIT changed();
    return;
  }
  service_.call(kXfconfPath, kXfconf, u"GetProperty"_s, {channel_, property_}, this, [this](const QDBusMessage& reply) {
    value_ = reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
    Q_EMIT changed();
  });
}

void XfconfSwitch::set(bool on) {
  if (!value_) {
    Q_EMIT changed();
    return;
  }
  service_.call(kXfconfPath, kXfconf, u"SetProperty"_s,
                {channel_, property_, QVariant::fromValue(QDBusVariant(QVariant(on)))}, this,
                [this](const QDBusMessage&) { read(); });
}

}  // namespace tarnwick
