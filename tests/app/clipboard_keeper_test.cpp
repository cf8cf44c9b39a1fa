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
  ClipboardKeeper keeper{desktop.all(), folder_.path(), [](qint64 pid) { return pid == 7 ? u"vault"_s : QString(); }};
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

TEST_F(ClipboardKeeperTest, RecordsNothingOfListedApplications) {
  DesktopEntry vault;
  vault.id = u"org.example.Vault"_s;
  vault.exec = u"/usr/bin/vault"_s;
  vault.startupWmClass = u"Vault"_s;
  const PasteboardOwner window{u"Vault"_s, {}, {}, 0};
  const PasteboardOwner process{{}, {}, {}, 7};
  const PasteboardOwner other{u"Writer"_s, {}, {}, 8};
  const auto list = [&](const QStringList& ids) {
    store.edit([&](DockConfiguration& config) {
      DeskOptions desk = config.desk();
      desk.neverRecord = ids;
      config.setDesk(desk);
    });
  };
  list({vault.id});
  EXPECT_EQ(copy(u"early"_s, other), QStringList()) << "which app that is nobody knows yet";
  desktop.installedApps.setFixed(
      std::make_shared<AppIndex>(AppEnvironment(), QList{vault}, QHash<QString, DesktopEntry>(), MimeDefaults()));
  Q_EMIT desktop.installedApps.changed();
  EXPECT_EQ(copy(u"by its window"_s, window), QStringList()) << "what came early was replaced before it was read";
  EXPECT_EQ(copy(u"by its process"_s, process), QStringList());
  EXPECT_EQ(copy(u"of another"_s, other), QStringList{u"of another"_s});
  EXPECT_EQ(copy(u"of nobody"_s), (QStringList{u"of nobody"_s, u"of another"_s}));
  EXPECT_EQ(desktop.pasteboard.asked.size(), 2);
  list({});
  EXPECT_EQ(copy(u"allowed"_s, window).first(), u"allowed"_s);
}

}  // namespace
}  // namespace tarnwick::test
