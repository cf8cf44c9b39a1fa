#include "app/LoginEntry.h"

#include <utility>

#include "base/DomainError.h"
#include "store/AppStore.h"

namespace tarnwick {

LoginEntry::LoginEntry(AppStore& store, Autostart entry) : store_(store), entry_(std::move(entry)) {
  connect(&store, &AppStore::configChanged, this, &LoginEntry::applySwitch);
}

void LoginEntry::follow() {
  isFollowed_ = true;
  launchesAtLogin_ = entry_.isOn();
  store_.followLoginEntry(launchesAtLogin_);
}

void LoginEntry::stop() { store_.disconnect(this); }

void LoginEntry::applySwitch() {
  if (!isFollowed_ || store_.config().launchAtLogin == launchesAtLogin_) return;
  launchesAtLogin_ = store_.config().launchAtLogin;
  try {
    entry_.set(launchesAtLogin_);
  } catch (const DomainError& failure) {
    store_.setError(failure.message());
    // Listeners of this change are notified of it before it is taken back.
    QMetaObject::invokeMethod(this, &LoginEntry::follow, Qt::QueuedConnection);
  }
}

}  // namespace tarnwick
