#include "app/ClipboardKeeper.h"

#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/TestServices.h"
#include "support/Wait.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class ClipboardKeeperTest : public FolderTest {
 protected:
  void SetUp() override {
    store.edit([](DockConfiguration& config) {
      config.clipboardEnabled = true;
      config.profiles.first().widgets = {DockWidget{QUuid::createUuid(), QString(kind::clipboard), {}, {}}};
    });
    keeper.beatClient().start(store.config(), store.active());
    keeper.follow(store);
  }
  /// A program copies a text. Gives all texts that are kept by then, the newest first.
  QStringList copy(const QString& text, const PasteboardOwner& owner = {}) {
    desktop.pasteboard.copy({u"writer"_s, {{u"text/plain;charset=utf-8"_s, text.toUtf8()}}, owner, {}, {}});
    for (int round = 0; round < 3; ++round) {
      desktop.pasteboard.answerAll();
      bool isDone = false;
      keeper.history().load([&] { isDone = true; });
      EXPECT_TRUE(waitFor([&] { return isDone; }));
    }
    QStringList kept;
    for (const ClipboardEntry& entry : keeper.history().items()) kept << entry.value;
    return kept;
  }

  TestScheduler scheduler;
  TestServices desktop{scheduler, AppEnvironment()};
  NoDesktop bare{scheduler};
  ClipboardKeeper keeper{desktop.all(), folder_.path()};
  AppStore store{bare.diagnosticSetup()};
};

TEST_F(ClipboardKeeperTest, RecordsNothingWhileTheSessionIsLocked) {
  EXPECT_EQ(copy(u"before"_s), QStringList{u"before"_s});
  Q_EMIT desktop.session.lockedChanged(true);
  EXPECT_EQ(copy(u"meanwhile"_s), QStringList{u"before"_s});
  EXPECT_EQ(desktop.pasteboard.asked.size(), 1) << "it is not even read";
  Q_EMIT desktop.session.lockedChanged(false);
  EXPECT_EQ(copy(u"after"_s), (QStringList{u"after"_s, u"before"_s}));
}

}  // namespace
}  // namespace tarnwick::test
