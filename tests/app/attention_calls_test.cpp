#include "app/AttentionCalls.h"

#include <gtest/gtest.h>

#include "apps/ports/LauncherHints.h"
#include "base/UuidText.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/TestScheduler.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

struct ToldHints final : LauncherHints {
  void start() override {}
  LauncherHint of(const QString& desktopId) const override {
    LauncherHint hint;
    hint.urgent = urgent.contains(desktopId);
    return hint;
  }
  void say(const QString& desktopId, bool isUrgent) {
    urgent.remove(desktopId);
    if (isUrgent) urgent.insert(desktopId);
    Q_EMIT changed(desktopId);
  }
  QSet<QString> urgent;
};

/// Two displays; the second shows a profile of its own.
class AttentionCallsTest : public ::testing::Test {
 protected:
  AttentionCallsTest() {
    store.edit([this](DockConfiguration& config) {
      config.profiles = {DockProfile::initial(), DockProfile::initial()};
      for (DockProfile& profile : config.profiles) {
        profile.id = QUuid::createUuid();
        profile.widgets.clear();
      }
      timer.id = QUuid::createUuid();
      timer.kind = kind::timer;
      timer.options = {{u"minutes"_s, u"1"_s}};
      config.profiles[1].widgets << PinnedTiles::launcher(u"/apps/mail.desktop"_s) << timer;
      config.activeProfileID = config.profiles[0].id;
      config.desktop.displayProfiles.insert(u"B"_s, UuidText::write(config.profiles[1].id));
      config.liveApps = false;
    });
    calls.emplace(store, hints, desktop.installedApps, [] { return QStringList{u"A"_s, u"B"_s}; });
    QObject::connect(&*calls, &AttentionCalls::called, [this](const QString& display) { seen << display; });
  }
  void run(bool urgent, bool active = false) {
    RunningApp app;
    app.identity = 7;
    app.desktopId = u"mail"_s;
    app.path = u"/apps/mail.desktop"_s;
    app.windows = {1};
    app.urgent = urgent;
    app.active = active;
    store.apply({app});
  }
  /// The displays that were called since this was asked last.
  QStringList called() { return std::exchange(seen, {}); }

  TestScheduler time;
  NoDesktop desktop{time};
  AppStore store{desktop.diagnosticSetup()};
  ToldHints hints;
  DockWidget timer;
  QStringList seen;
  std::optional<AttentionCalls> calls;
};

TEST_F(AttentionCallsTest, AnAppCallsOnceTheDocksThatHoldIt) {
  run(false);
  EXPECT_EQ(called(), QStringList());
  run(true);
  EXPECT_EQ(called(), QStringList{u"B"_s}) << "which has its tile";
  hints.say(u"mail"_s, true);
  hints.say(u"other"_s, true);
  EXPECT_EQ(called(), QStringList()) << "it asks already";
  run(false);
  hints.say(u"mail"_s, false);
  hints.say(u"mail"_s, true);
  EXPECT_EQ(called(), QStringList{u"B"_s}) << "by another way";
  hints.say(u"mail"_s, false);
  run(true, true);
  EXPECT_EQ(called(), QStringList()) << "the user is looking at it";
  run(true, false);
  EXPECT_EQ(called(), QStringList()) << "and has seen it";
}

TEST_F(AttentionCallsTest, RunningAppsAreInADockThatShowsThem) {
  store.edit([](DockConfiguration& config) { config.liveApps = true; });
  run(true);
  EXPECT_EQ(called(), (QStringList{u"A"_s, u"B"_s}));
  run(false);
  store.edit([](DockConfiguration& config) { config.desktop.runningAppsPlacement = u"none"_s; });
  run(true);
  EXPECT_EQ(called(), QStringList{u"B"_s});
}

TEST_F(AttentionCallsTest, ATimerCallsTheDockItIsIn) {
  store.toggleTimer(timer.id);
  store.advanceProductivity(time.now().addSecs(30));
  EXPECT_EQ(called(), QStringList());
  store.advanceProductivity(time.now().addSecs(61));
  EXPECT_EQ(called(), QStringList{u"B"_s});
}

}  // namespace
}  // namespace tarnwick::test
