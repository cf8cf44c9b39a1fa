#include "app/ClipboardKeeper.h"

#include "apps/InstalledApps.h"
#include "desktop/SessionEvents.h"
#include "store/AppStore.h"

namespace tarnwick {

ClipboardKeeper::ClipboardKeeper(const Services& services, const QString& dataDirectory,
                                 ClipboardOwners::ExecutableOf executableOf)
    : apps_(services.installedApps),
      executableOf_(std::move(executableOf)),
      history_(dataDirectory, services.scheduler),
      recorder_(services.pasteboard, history_) {
  connect(&services.session, &SessionEvents::lockedChanged, &recorder_, &ClipboardRecorder::setLocked);
  recorder_.setNeverFrom([this](const PasteboardOwner& owner) { return isListed(owner); });
  connect(&apps_, &InstalledApps::changed, this, &ClipboardKeeper::judge);
}

ClipboardKeeper::~ClipboardKeeper() = default;

void ClipboardKeeper::follow(AppStore& store) {
  const auto ask = [this, &store] {
    neverRecord_ = store.config().desk().neverRecord;
    judge();
    recorder_.setEnabled(store.config().clipboardEnabled);
    recorder_.follow(store.active());
  };
  connect(&store, &AppStore::configChanged, this, ask);
  connect(&store, &AppStore::activeChanged, this, ask);
  connect(&history_, &ClipboardHistory::failed, &store, &AppStore::setError);
  ask();
}

void ClipboardKeeper::knowApps() {
  mayKnowApps_ = true;
  judge();
}

/// Until the applications are known any of them may be a listed one, so what is copied waits.
void ClipboardKeeper::judge() {
  if (!neverRecord_.isEmpty() && mayKnowApps_) apps_.load();
  recorder_.setReady(neverRecord_.isEmpty() || apps_.loaded());
}

bool ClipboardKeeper::isListed(const PasteboardOwner& owner) const {
  return !neverRecord_.isEmpty() &&
         neverRecord_.contains(ClipboardOwners::applicationOf(owner, *apps_.index(), executableOf_));
}

}  // namespace tarnwick
