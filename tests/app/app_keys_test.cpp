#include "app/AppKeys.h"

#include <gtest/gtest.h>

#include "app/HotKeyTable.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

/// A desktop that promises every key and gives none of the command bar's, as one may that asks its user first.
struct PromisedKeys final : HotKeys {
  HotKeyBinding bind(quint32 identifier, const HotKeyRequest& request) override {
    if (identifier == HotKeyTable::kCommandBar) asked << request;
    return {true, QString::number(request.keyCode), {}};
  }
  void unbindAll() override {}
  /// As often as the bar's key is asked for, up to a number that no desktop would bear.
  void refuse() {
    for (qsizetype told = 0; told < asked.size() && told < 20; ++told) Q_EMIT lost(HotKeyTable::kCommandBar);
  }
  QList<HotKeyRequest> asked;
};

TEST(AppKeys, AreNotAskedForAgainWhereTheDesktopRefusedThem) {
  TestScheduler scheduler;
  NoDesktop desktop(scheduler);
  AppStore store(desktop.diagnosticSetup());
  PromisedKeys keys;
  RecordingCommands commands;
  AppKeys app(store, keys, commands);
  app.follow();
  ASSERT_EQ(keys.asked.size(), 1);
  keys.refuse();
  const QList<HotKeyRequest> once = keys.asked;
  EXPECT_EQ(once.size(), 1 + HotKeyTable::commandBarFallbacks(store.config().desktopOptions()).size());
  for (const HotKeyRequest& each : once) EXPECT_EQ(once.count(each), 1);
  EXPECT_TRUE(app.commandBarKey().isEmpty());
  EXPECT_FALSE(store.error().isEmpty()) << "that is said";

  // Keys that the settings ask for anew are new.
  app.setRecording(true);
  app.setRecording(false);
  EXPECT_EQ(keys.asked.size(), once.size() + 1);
}

}  // namespace
}  // namespace tarnwick::test
