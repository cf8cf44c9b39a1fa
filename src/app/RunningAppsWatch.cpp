#include "app/RunningAppsWatch.h"

#include <algorithm>

#include "apps/RunningApplications.h"
#include "store/AppStore.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {

RunningAppsWatch::RunningAppsWatch(AppStore& store, RunningApplications& apps) : store_(store), apps_(apps) {
  connect(&store, &AppStore::layoutChanged, this, &RunningAppsWatch::follow);
}

void RunningAppsWatch::follow() {
  const auto needsThem = [](const QString& kind) { return KindTraits::of(kind).needsRunningApps; };
  const bool shown = store_.config().liveApps || std::ranges::any_of(store_.active().kinds, needsThem);
  shown ? apps_.start() : apps_.stop();
}

}  // namespace tarnwick
