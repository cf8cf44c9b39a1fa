// Where the settings that were kept aside are offered.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "app/DockQuestions.h"
#include "app/StatusMenu.h"
#include "config/Persistence.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"
#include "views/controls/Buttons.h"
#include "views/window/AppWindow.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class KeptOfferTest : public ::testing::Test {
 protected:
  void SetUp() override {
    DockConfiguration config;
    config.profiles[0].widgets[0].title = u"Mine"_s;
    QByteArray json = Persistence::encode(config);
    json.replace("\"kind\": \"" + config.profiles[0].widgets[0].kind.toUtf8(), "\"kind\": \"later");
    QFile file(folder.filePath(u"config.json"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
    file.close();
    StoreSetup setup = desktop.storeSetup();
    setup.storage = file.fileName();
    setup.platformReads = false;
    store = std::make_unique<AppStore>(std::move(setup));
  }
  static Button* offerOf(AppWindow& window) {
    for (Button* button : window.findChildren<Button*>())
      if (button->label() == u"Open Without Them…"_s) return button;
    return nullptr;
  }

  QTemporaryDir folder;
  TestScheduler scheduler;
  NoDesktop desktop{scheduler};
  std::unique_ptr<AppStore> store;
};

TEST_F(KeptOfferTest, GoesWithTheMessage) {
  ASSERT_TRUE(store->keptSettings());
  EXPECT_EQ(store->keptSettings().leftOut, QStringList{u"Mine (later)"_s});
  const Question question = DockQuestions::aboutKept(store->keptSettings());
  EXPECT_EQ(question.facts, u"Mine (later)"_s);
  EXPECT_TRUE(store->error().contains(QFileInfo(store->keptSettings().file).fileName()));
  EXPECT_TRUE(question.sentence.contains(QFileInfo(store->keptSettings().file).fileName()));
  store->setError(u"The disk is full."_s);
  EXPECT_FALSE(store->keptSettings());
}

TEST_F(KeptOfferTest, AWindowOffersItBesideTheMessage) {
  AppWindow window(*store, u"Window"_s);
  window.show();
  Button* offer = offerOf(window);
  ASSERT_TRUE(offer);
  EXPECT_FALSE(offer->isVisible()) << "nothing to do it with";
  int opened = 0;
  window.setOpenKept([&] { ++opened; });
  EXPECT_TRUE(offer->isVisible());
  offer->click();
  EXPECT_EQ(opened, 1);
  store->setError(u"The disk is full."_s);
  EXPECT_FALSE(offer->isVisible());
}

TEST_F(KeptOfferTest, TheStatusMenuOffersItBelowTheMessage) {
  RecordingCommands commands;
  StatusMenu menu(*store, commands);
  const QList<QAction*> entries = menu.actions();
  ASSERT_EQ(entries[1]->text(), u"Open Without Them…"_s);
  EXPECT_TRUE(entries[1]->isVisible());
  entries[1]->trigger();
  EXPECT_EQ(commands.asked, QStringList{u"kept settings"_s});
  store->clearError();
  menu.refresh();
  EXPECT_FALSE(entries[1]->isVisible());
}

}  // namespace
}  // namespace tarnwick::test
