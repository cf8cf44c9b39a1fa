#include "app/AttentionCalls.h"

#include <algorithm>
#include <utility>

#include "apps/InstalledApps.h"
#include "apps/ports/LauncherHints.h"
#include "store/AppStore.h"
#include "widgets/PinnedTiles.h"

namespace tarnwick {

AttentionCalls::AttentionCalls(AppStore& store, const LauncherHints& hints, const InstalledApps& apps,
                               std::function<QStringList()> displays)
    : store_(store), hints_(hints), apps_(apps), displays_(std::move(displays)) {
  connect(&store_, &AppStore::runningAppsChanged, this, &AttentionCalls::look);
  connect(&hints_, &LauncherHints::changed, this, &AttentionCalls::look);
  connect(&store_, &AppStore::widgetCalls, this, &AttentionCalls::callFor);
  look();
}

void AttentionCalls::look() {
  QSet<quint64> asking;
  QList<RunningApp> begun;
  for (const RunningApp& app : store_.runningApps()) {
    if (!asks(app)) continue;
    asking.insert(app.identity);
    // One that the user is looking at needs no dock to say so.
    if (!asking_.contains(app.identity) && !app.active) begun << app;
  }
  asking_ = asking;
  if (begun.isEmpty()) return;
  for (const QString& display : displays_()) {
    if (std::ranges::any_of(begun, [&](const RunningApp& app) { return holds(display, app); })) Q_EMIT called(display);
  }
}

void AttentionCalls::callFor(QUuid widget) {
  for (const QString& display : displays_()) {
    const QList<DockWidget> shown = store_.displayedWidgets(display);
    if (std::ranges::any_of(shown, [widget](const DockWidget& one) { return one.id == widget; })) {
      Q_EMIT called(display);
    }
  }
}

bool AttentionCalls::asks(const RunningApp& app) const { return app.urgent || hints_.of(app.desktopId).urgent; }

bool AttentionCalls::holds(const QString& display, const RunningApp& app) const {
  const auto idOf = [this](const QString& path) { return apps_.environment().desktopIdOf(path); };
  if (PinnedTiles::unheld({app}, store_.displayedWidgets(display), idOf).isEmpty()) return true;
  const DockConfiguration& config = store_.config();
  if (!config.liveApps || config.desktopOptions().runningAppsPlacement == QLatin1String("none")) return false;
  const QList<RunningApp> shown = store_.unpinnedRunningApps(display);
  return std::ranges::any_of(shown, [&app](const RunningApp& one) { return one.identity == app.identity; });
}

}  // namespace tarnwick
