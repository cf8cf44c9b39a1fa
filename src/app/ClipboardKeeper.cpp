#include "app/ClipboardKeeper.h"

#include "desktop/SessionEvents.h"
#include "store/AppStore.h"

namespace tarnwick {

ClipboardKeeper::ClipboardKeeper(const Services& services, const QString& dataDirectory)
    : history_(dataDirectory, services.scheduler), recorder_(services.pasteboard, history_) {
  connect(&services.session, &SessionEvents::lockedChanged, &recorder_, &ClipboardRecorder::setLocked);
}

ClipboardKeeper::~ClipboardKeeper() = default;

void ClipboardKeeper::follow(AppStore& store) {
  const auto ask = [this, &store] {
    recorder_.setEnabled(store.config().clipboardEnabled);
    recorder_.follow(store.active());
  };
  connect(&store, &AppStore::configChanged, this, ask);
  connect(&store, &AppStore::activeChanged, this, ask);
  connect(&history_, &ClipboardHistory::failed, &store, &AppStore::setError);
  ask();
}

}  // namespace tarnwick
