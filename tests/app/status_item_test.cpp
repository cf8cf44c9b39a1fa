#include "app/StatusItem.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"

namespace tarnwick::test {
namespace {

TEST(StatusItem, ComesWithATrayHoweverLate) {
  TestScheduler scheduler;
  NoDesktop desktop(scheduler);
  AppStore store(desktop.diagnosticSetup());
  RecordingCommands commands;
  TestTray tray;
  const StatusItem item(store, commands, tray);
  EXPECT_EQ(tray.looks, 1);
  Q_EMIT tray.missing();
  EXPECT_FALSE(item.hasTray());
  Q_EMIT tray.found();
  EXPECT_TRUE(item.hasTray());
  Q_EMIT tray.found();
  EXPECT_TRUE(item.hasTray()) << "another tray in its place";
}

TEST(EitherTray, LooksForTheOtherOnlyWhileThereIsNone) {
  enum Event { FirstFound, FirstMissing, OtherFound, OtherMissing };
  const struct {
    const char* name;
    QList<Event> events;
    int found, missing, looksForTheOther;
  } cases[] = {
      {"the first at once", {FirstFound}, 1, 0, 0},
      {"neither", {FirstMissing, OtherMissing}, 0, 1, 1},
      {"the other at once", {FirstMissing, OtherFound}, 1, 0, 1},
      {"the other later", {FirstMissing, OtherMissing, OtherFound}, 1, 1, 1},
      {"the first later", {FirstMissing, OtherMissing, FirstFound}, 1, 1, 1},
      {"the first comes again", {FirstFound, FirstMissing, FirstFound}, 2, 0, 0},
  };
  for (const auto& each : cases) {
    auto first = std::make_unique<TestTray>();
    auto other = std::make_unique<TestTray>();
    TestTray* trays[] = {first.get(), other.get()};
    EitherTray either(std::move(first), std::move(other));
    const QSignalSpy found(&either, &Tray::found);
    const QSignalSpy missing(&either, &Tray::missing);
    either.look();
    for (const Event event : each.events) {
      TestTray& tray = *trays[event == OtherFound || event == OtherMissing];
      event == FirstFound || event == OtherFound ? Q_EMIT tray.found() : Q_EMIT tray.missing();
    }
    EXPECT_EQ(found.size(), each.found) << each.name;
    EXPECT_EQ(missing.size(), each.missing) << each.name;
    EXPECT_EQ(trays[1]->looks, each.looksForTheOther) << each.name;
  }
}

}  // namespace
}  // namespace tarnwick::test
