#include "platform/dbus/toggles/KeepAwakeToggle.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

KeepAwakeToggle::KeepAwakeToggle(const QDBusConnection& session, const QDBusConnection& system)
    : session_(session), system_(system) {}

void KeepAwakeToggle::start() {
  const auto why = tr("Keep Awake is on");
  login_ = std::make_unique<BusService>(system_, u"org.freedesktop.login1"_s);
  sleepLock_ = std::make_unique<LoginInhibitor>(*login_, u"idle:sleep"_s, why, u"block"_s);
  screenSaver_ = std::make_unique<BusService>(session_, u"org.freedesktop.ScreenSaver"_s);
  screenLock_ = std::make_unique<CookieInhibition>(*screenSaver_, u"/org/freedesktop/ScreenSaver"_s,
                                                   screenSaver_->name(), QVariantList{u"Tarnwick"_s, why});
  connect(sleepLock_.get(), &LoginInhibitor::changed, this, &KeepAwakeToggle::changed);
  connect(screenLock_.get(), &CookieInhibition::changed, this, &KeepAwakeToggle::changed);
  connect(login_.get(), &BusService::ownerChanged, this, [this] {
    sleepLock_->release();
    if (wanted_) sleepLock_->take();
    Q_EMIT changed();
  });
}

ToggleState KeepAwakeToggle::state() const {
  if (!login_ || !(login_->isRunning() || screenSaver_->isRunning())) {
    return {false, Capability::no(tr("No power service was found."))};
  }
  return {wanted_ && (sleepLock_->isHeld() || screenLock_->isHeld()), Capability::yes()};
}

void KeepAwakeToggle::set(bool on) {
  wanted_ = on;
  screenLock_->want(on);
  if (on) {
    sleepLock_->take();
  } else {
    sleepLock_->release();
    Q_EMIT changed();
  }
}

}  // namespace tarnwick
