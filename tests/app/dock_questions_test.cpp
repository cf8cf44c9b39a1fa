#include "app/DockQuestions.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "app/DockMenuHost.h"
#include "app/PanelHost.h"
#include "handover/FakeDock.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "views/panels/FixedReadings.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

/// A desktop without a display: no dock ever comes out.
class DockQuestionsTest : public ::testing::Test {
 protected:
  DockQuestionsTest() : store_(makeSetup()) {}
  void ask(const QString& name) {
    questions.ask({.title = name, .sentence = {}, .facts = {}, .label = {}, .accept = {}, .refuse = {}}, {},
                  [this, name](bool accepted) { answers << name + (accepted ? u" yes"_s : u" no"_s); });
  }
  QStringList taken() { return std::exchange(answers, {}); }

  QStringList answers;
  TestScheduler scheduler;

 private:
  StoreSetup makeSetup() {
    StoreSetup setup = noDesktop_.diagnosticSetup();
    setup.storage = folder_.filePath(u"config.json"_s);
    return setup;
  }
  NoDesktop noDesktop_{scheduler};
  QTemporaryDir folder_;
  FakeDock system_{folder_.filePath(u"dock"_s)};
  TestServices desktop_{scheduler, AppEnvironment()};
  const Services services_ = desktop_.all();
  AppStore store_;
  RecordingCommands commands_;
  UndoStack undo_;
  UndoableEdits edits_{store_, desktop_.installedApps, undo_};
  DockCommands tiles_{store_, services_, commands_};
  DockMenus menus_{store_, services_, commands_, edits_, tiles_};
  LiveDocks docks_;
  FixedReadings readings_{scheduler};
  PanelHost panels_{store_, services_, commands_, {[](const QString&) { return std::unique_ptr<KeptSources>(); }, readings_.services()}};

 protected:
  DockController dock{store_, services_, system_, system_,
                      [](const QString&) { return std::unique_ptr<DockContent>(); }};

 private:
  DockMenuHost menuHost_{store_, services_, menus_, dock, docks_, panels_};

 protected:
  DockQuestions questions{store_, dock, docks_, menuHost_, panels_};
};

TEST_F(DockQuestionsTest, WhatNoDockCanAskIsRefusedInTheEnd) {
  dock.toggle();
  ask(u"one"_s);
  EXPECT_FALSE(dock.isManuallyHidden()) << "a hidden dock comes out to ask";
  scheduler.advance(2);
  EXPECT_EQ(taken(), QStringList());
  scheduler.advance(10);
  EXPECT_EQ(taken(), QStringList{u"one no"_s});
  scheduler.advance(10);
  EXPECT_EQ(taken(), QStringList()) << "answered once";
}

TEST_F(DockQuestionsTest, OneQuestionWaitsAtATime) {
  ask(u"one"_s);
  scheduler.advance(1);
  ask(u"two"_s);
  EXPECT_EQ(taken(), QStringList{u"one no"_s});
  questions.withdraw();
  scheduler.advance(20);
  EXPECT_EQ(taken(), QStringList()) << "one that is withdrawn has no answer";
}

}  // namespace
}  // namespace tarnwick::test
