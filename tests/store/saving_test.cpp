// What a user is shown about saving, and what the store refuses because it could not be saved.
#include <gtest/gtest.h>

#include "config/Persistence.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestScheduler;

class Saving : public FolderTest {
 protected:
  QString file() const { return at(u"config.json"_s); }
  AppStore& start() {
    StoreSetup setup = desktop.storeSetup();
    setup.storage = file();
    store = std::make_unique<AppStore>(std::move(setup));
    return *store;
  }
  void setScale(double scale) {
    store->edit([scale](DockConfiguration& config) { config.scale = scale; });
  }
  /// Nothing can take the settings' place.
  void block() {
    QFile::remove(file());
    ASSERT_TRUE(QDir().mkpath(file() + u"/in the way"_s));
  }
  void unblock() { ASSERT_TRUE(QDir(file()).removeRecursively()); }
  bool tellsOfFailure() const { return store->error().startsWith(u"Settings could not be saved: "_s); }

  TestScheduler time;
  NoDesktop desktop{time};
  std::unique_ptr<AppStore> store;
};

TEST_F(Saving, WhatWasCountedAndWrittenOutlivesAKill) {
  DockConfiguration config;
  config.profiles[0].widgets[0].kind = u"scratchNote"_s;
  Persistence::save(config, file());
  start();
  const QUuid note = store->widgets().first().id;
  time.advance(20);
  store->save();
  store->set(note, u"text"_s, u"Buy tea"_s);
  store->addTodo(u"Drink it"_s);
  time.advance(1.01);
  EXPECT_EQ(Persistence::read(file()).todos.size(), 0) << "not saved yet";
  store.reset();
  start();
  EXPECT_EQ(store->widgets().first().options.value(u"text"_s), u"Buy tea"_s);
  ASSERT_EQ(store->config().todos.size(), 1);
  EXPECT_EQ(store->config().todos.first().text, u"Drink it"_s);
  store->shutdown();
  EXPECT_EQ(entries(), QStringList{u"config.json"_s});
  EXPECT_EQ(Persistence::read(file()).todos.size(), 1);
}

TEST_F(Saving, AFirstRunTakesNothingFromAnEarlierJournal) {
  put(u"content-journal.json"_s, "{\"shelf\":[\"/old\"]}\n");
  start();
  EXPECT_TRUE(store->config().shelf.isEmpty());
  EXPECT_TRUE(entries().isEmpty());
}

TEST_F(Saving, TheMessageGoesOnceItSucceededAndADismissedOneStaysAway) {
  start();
  block();
  setScale(1.1);
  time.advance(0.3);
  EXPECT_TRUE(tellsOfFailure());
  store->clearError();
  time.advance(6);
  EXPECT_TRUE(store->error().isEmpty());
  setScale(1.2);
  time.advance(0.3);
  EXPECT_TRUE(tellsOfFailure()) << "of another change";
  unblock();
  time.advance(15);
  EXPECT_TRUE(store->error().isEmpty());
  EXPECT_EQ(Persistence::read(file()).scale, 1.2);

  block();
  setScale(1.3);
  time.advance(0.3);
  store->setError(u"Something else."_s);
  unblock();
  time.advance(15);
  EXPECT_EQ(store->error(), u"Something else."_s);
}

TEST_F(Saving, SettingsThatCouldNotBePreservedAreNeverWritten) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"config.json"_s));
  put(u"content-journal.json"_s, "{\"shelf\":[\"/kept\"]}\n");
  const QString taken = u"config-recovery-%1.json/in the way"_s.arg(time.now().toSecsSinceEpoch());
  ASSERT_TRUE(QDir(folder_.path()).mkpath(taken));
  start();
  ASSERT_FALSE(store->ready());
  ASSERT_TRUE(QDir(folder_.path()).rmdir(u"config.json"_s));
  setScale(1.5);
  time.advance(60);
  store->save();
  store->shutdown();
  EXPECT_FALSE(QFileInfo::exists(file()));
  EXPECT_EQ(content(u"content-journal.json"_s), "{\"shelf\":[\"/kept\"]}\n");
}

TEST_F(Saving, AChangeThatCouldNotBeReadAgainIsRefused) {
  start();
  const DockConfiguration before = store->config();
  const QString huge(qsizetype{65} * 1024 * 1024, u'x');
  store->set(store->widgets().first().id, u"text"_s, huge);
  EXPECT_EQ(store->error(),
            u"The change was not made: the settings would be larger than 64 MB and could not be read again."_s);
  EXPECT_EQ(store->config(), before);
}

}  // namespace
}  // namespace tarnwick
