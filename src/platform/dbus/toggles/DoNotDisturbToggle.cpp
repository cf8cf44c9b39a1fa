#include "platform/dbus/toggles/DoNotDisturbToggle.h"

#include "base/DesktopId.h"
#include "platform/dbus/BusNames.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

DoNotDisturbToggle::DoNotDisturbToggle(const QDBusConnection& session) : session_(session) {}

void DoNotDisturbToggle::start() {
  service_ = std::make_unique<BusService>(session_, bus::kNotifications);
  pause_ = std::make_unique<BusProperties>(*service_, bus::kNotificationsPath, u"org.dunstproject.cmd0"_s);
  inhibition_ = std::make_unique<BusProperties>(*service_, bus::kNotificationsPath, bus::kNotifications);
  ownInhibition_ =
      std::make_unique<CookieInhibition>(*service_, bus::kNotificationsPath, bus::kNotifications,
                                         QVariantList{QString(kDesktopId), tr("Do Not Disturb"), QVariantMap()});
  connect(pause_.get(), &BusProperties::changed, this, &DoNotDisturbToggle::changed);
  connect(inhibition_.get(), &BusProperties::changed, this, &DoNotDisturbToggle::changed);
  connect(ownInhibition_.get(), &CookieInhibition::changed, this, &DoNotDisturbToggle::changed);
  connect(service_.get(), &BusService::ownerChanged, this, &DoNotDisturbToggle::serviceChanged);
}

// Settings may be installed anywhere, but only the service that reads them obeys them.
void DoNotDisturbToggle::serviceChanged() {
  banners_.reset();
  setting_.reset();
  service_->call(bus::kNotificationsPath, bus::kNotifications, u"GetServerInformation"_s, {}, this,
                 [this](const QDBusMessage& reply) {
                   const QString server = reply.arguments().value(0).toString();
                   if (server == "Xfce Notify Daemon"_L1) {
                     setting_ = std::make_unique<XfconfSwitch>(session_, u"xfce4-notifyd"_s, u"/do-not-disturb"_s);
                     connect(setting_.get(), &XfconfSwitch::changed, this, &DoNotDisturbToggle::changed);
                   }
                   if (server != "gnome-shell"_L1) return;
                   banners_ = std::make_unique<GSettingsKey>(session_, u"org.gnome.desktop.notifications"_s,
                                                             u"show-banners"_s);
                   connect(banners_.get(), &GSettingsKey::changed, this, &DoNotDisturbToggle::changed);
                 });
}

DoNotDisturbToggle::Dialect DoNotDisturbToggle::dialect() const {
  if (!service_ || !service_->isRunning()) return Dialect::None;
  if (pause_->has(u"paused"_s)) return Dialect::Pause;
  if (setting_ && setting_->value()) return Dialect::Setting;
  if (inhibition_->has(u"Inhibited"_s)) return Dialect::Inhibition;
  if (banners_ && banners_->value()) return Dialect::Banners;
  return Dialect::None;
}

ToggleState DoNotDisturbToggle::state() const {
  switch (dialect()) {
    case Dialect::Pause:
      return {pause_->value(u"paused"_s).toBool(), Capability::yes()};
    case Dialect::Setting:
      return {*setting_->value(), Capability::yes()};
    case Dialect::Inhibition: {
      const bool on = inhibition_->value(u"Inhibited"_s).toBool();
      if (on && !ownInhibition_->isHeld())
        return {true, Capability::no(tr("Another app has turned on Do Not Disturb."))};
      return {on, Capability::yes()};
    }
    case Dialect::Banners:
      return {*banners_->value() == "false"_L1, Capability::yes()};
    case Dialect::None:
      break;
  }
  return {false, Capability::no(service_ && service_->isRunning()
                                    ? tr("Tarnwick cannot control Do Not Disturb of this notification service.")
                                    : tr("No notification service was found."))};
}

void DoNotDisturbToggle::set(bool on) {
  switch (dialect()) {
    case Dialect::Pause:
      pause_->set(u"paused"_s, on);
      break;
    case Dialect::Setting:
      setting_->set(on);
      break;
    case Dialect::Inhibition:
      ownInhibition_->want(on);
      break;
    case Dialect::Banners:
      banners_->set(on ? u"false"_s : u"true"_s);
      break;
    case Dialect::None:
      Q_EMIT changed();
      break;
  }
}

}  // namespace tarnwick
