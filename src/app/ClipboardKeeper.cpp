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
}

ClipboardKeeper::~ClipboardKeeper() = default;

void ClipboardKeeper::follow(AppStore& store) {
  const auto ask = [this, &store] {
    neverRecord_ = store.config().desk().neverRecord;
    if (!neverRecord_.isEmpty()) apps_.load();
    recorder_.setEnabled(store.config().clipboardEnabled);
    recorder_.follow(store.active());
  };
  connect(&store, &AppStore::configChanged, this, ask);
  connect(&store, &AppStore::activeChanged, this, ask);
  connect(&history_, &ClipboardHistory::failed, &store, &AppStore::setError);
  ask();
}

/// Until the applications are known any of them may be a listed one.
bool ClipboardKeeper::isListed(const PasteboardOwner& owner) const {
  if (neverRecord_.isEmpty()) return false;
  if (!apps_.loaded()) return true;
  return neverRecord_.contains(ClipboardOwners::applicationOf(owner, *apps_.index(), executableOf_));
}

}  // namespace tarnwick
