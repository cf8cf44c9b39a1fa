#include "app/RunningAppsWatch.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

TEST(RunningAppsWatch, FollowsThemOnlyWhileSomethingShowsThem) {
  TestScheduler scheduler;
  NoDesktop desktop(scheduler);
  desktop.installedApps.setFixed(std::make_shared<AppIndex>());
  const QTemporaryDir folder;
  StoreSetup setup = desktop.storeSetup();
  setup.storage = folder.filePath(u"config.json"_s);
  AppStore store(std::move(setup));
  const RunningAppsWatch watch(store, desktop.applications);
  const auto clear = [](DockConfiguration& config) {
    config.liveApps = false;
    config.profiles.first().widgets.clear();
  };
  const struct {
    const char* name;
    std::function<void(DockConfiguration&)> change;
    bool follows;
  } steps[] = {
      {"nothing", clear, false},
      {"the dock", [](DockConfiguration& config) { config.liveApps = true; }, true},
      {"nothing any more", clear, false},
      {"a widget",
       [](DockConfiguration& config) {
         DockWidget widget;
         widget.id = QUuid::createUuid();
         widget.kind = kind::pinnedWindow;
         config.profiles.first().widgets = {widget};
       },
       true},
      {"nothing in the end", clear, false},
  };
  quint64 opened = 0;
  for (const auto& step : steps) {
    store.edit(step.change);
    ClientWindow window;
    window.id = ++opened;
    window.applicationId = u"app%1"_s.arg(opened);
    window.inTaskbar = true;
    desktop.windows.list << window;
    const qsizetype known = desktop.applications.list().size();
    Q_EMIT desktop.windows.changed();
    EXPECT_EQ(desktop.applications.list().size() > known, step.follows) << step.name;
  }
}

}  // namespace
}  // namespace tarnwick::test
