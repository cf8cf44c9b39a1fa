#include "app/Orders.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "app/HotKeyTable.h"
#include "app/RestoreDock.h"
#include "app/SocketSession.h"
#include "base/DomainError.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "support/RecordingCommands.h"
#include "support/TestScheduler.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

struct SilentSession final : SessionApplication {
  bool isReachable() const override { return true; }
  bool own() override { return isOurs = true; }
  void release() override { isOurs = false; }
  qint64 otherProcess() const override { return 0; }
  bool activateOther() override { return false; }
  bool openInOther(const QStringList&) override { return false; }
  bool actInOther(const QString&, const QVariantList&) override { return false; }
  bool isOurs = false;
};

class OrdersTest : public ::testing::Test {
 protected:
  OrdersTest() : door(folder.path()) {
    store = std::make_unique<AppStore>(desktop.diagnosticSetup());
    orders = std::make_unique<Orders>(*store, commands,
                                      OrdersSetup{session,
                                                  door,
                                                  folder.filePath(u"not there"_s),
                                                  {},
                                                  true,
                                                  [] { return qsizetype(2); },
                                                  [this] { return giveBack(); },
                                                  [this] { commands.asked << u"end"_s; }});
    orders->listen();
  }
  bool giveBack() const {
    if (!failure.isEmpty()) throw DomainError::invalid(failure);
    return true;
  }
  QStringList taken() { return std::exchange(commands.asked, {}); }

  TestScheduler scheduler;
  NoDesktop desktop{scheduler};
  QTemporaryDir folder;
  SilentSession session;
  SocketSession door;
  RecordingCommands commands;
  QString failure;
  std::unique_ptr<AppStore> store;
  std::unique_ptr<Orders> orders;
};

TEST_F(OrdersTest, AnActionIsDoneOrAnsweredWithASentence) {
  EXPECT_TRUE(session.isOurs);
  commands.missing = {Commands::Optional::CommandBar};
  const QString noProfile = u"There is no profile %1. The only one is 0."_s;
  const QString noApp = u"There is no app %1 in the dock. It has 2."_s;
  const struct {
    QString action;
    QVariantList parameter;
    QStringList asked;
    QString error;
  } cases[] = {
      {u"toggle"_s, {}, {u"toggle"_s}, {}},
      {u"quit"_s, {}, {u"end"_s}, {}},
      {u"profile"_s, {0}, {u"profile 0 "_s}, {}},
      {u"profile"_s, {1}, {}, noProfile.arg(1)},
      {u"profile"_s, {-1}, {}, noProfile.arg(-1)},
      {u"profile"_s, {}, {}, {}},
      {u"profile"_s, {u"one"_s}, {}, {}},
      {u"app"_s, {1}, {u"app 0"_s}, {}},
      {u"app"_s, {2}, {u"app 1"_s}, {}},
      {u"app"_s, {0}, {}, noApp.arg(0)},
      {u"app"_s, {3}, {}, noApp.arg(3)},
      {u"command-bar"_s, {}, {}, u"The command bar cannot be opened on this desktop."_s},
      {u"no such thing"_s, {1}, {}, {}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(qPrintable(each.action));
    store->clearError();
    // Whoever asks at the door hears the sentence; a refused action never comes further.
    EXPECT_EQ(door.refusal(each.action, each.parameter), each.error);
    Q_EMIT session.actionRequested(each.action, each.parameter);
    EXPECT_EQ(taken(), each.asked);
    EXPECT_EQ(store->error(), each.error);
  }
}

TEST_F(OrdersTest, EachKeyDoesWhatItStandsFor) {
  const struct {
    quint32 key;
    QStringList asked;
  } cases[] = {{HotKeyTable::kToggle, {u"toggle"_s}},
               {HotKeyTable::kCommandBar, {u"command bar"_s}},
               {HotKeyTable::kFirstProfile, {u"profile 0 "_s}},
               {HotKeyTable::kFirstApp - 1, {}},
               {HotKeyTable::kFirstApp, {u"app 0"_s}},
               {HotKeyTable::kFirstApp + 8, {u"app 8"_s}},
               {HotKeyTable::kTrial, {}}};
  for (const auto& each : cases) {
    orders->performKey(each.key);
    EXPECT_EQ(taken(), each.asked) << each.key;
  }
}

TEST_F(OrdersTest, OpensWhatItMayAndSaysWhatItDoesNot) {
  const QStringList given{u"file:///a%20b/tool.desktop"_s, u"file:///look.TarnwickSpace"_s, u"https://example.org/x"_s};
  Q_EMIT door.openRequested(given);
  EXPECT_EQ(taken(), QStringList{u"start /a b/tool.desktop"_s});
  const QString page =
      u"“https://example.org/x” was not opened. Tarnwick only opens the desktop entries of apps (.desktop files)."_s;
  EXPECT_EQ(store->error(), page);
  EXPECT_EQ(door.refusalToOpen(given),
            u"“look.TarnwickSpace” was not opened. Spaces come with a later version of Tarnwick.\n"_s + page);
}

TEST_F(OrdersTest, OpenedAgainTheDockComesOutFirst) {
  Q_EMIT session.activated();
  EXPECT_EQ(taken(), QStringList{u"settings"_s});
  commands.isHidden = true;
  Q_EMIT door.activated();
  EXPECT_EQ(taken(), (QStringList{u"toggle"_s, u"settings"_s}));
}

TEST_F(OrdersTest, ARepairHearsWhetherAnythingWasHeldAndWhyItFailed) {
  const QLatin1StringView held(RestoreDock::kHeld);
  const QLatin1StringView why(RestoreDock::kFailure);
  EXPECT_EQ(door.restoreDock(), (QJsonObject{{held, true}}));
  failure = u"The disk is gone."_s;
  EXPECT_EQ(door.restoreDock(), (QJsonObject{{held, true}, {why, failure}}));
  EXPECT_EQ(store->error(), failure);
}

TEST_F(OrdersTest, NothingIsDoneOnceTheProgramGoes) {
  orders->stop();
  Q_EMIT session.actionRequested(u"toggle"_s, {});
  Q_EMIT session.openRequested({u"file:///a/tool.desktop"_s});
  Q_EMIT session.activated();
  EXPECT_EQ(taken(), QStringList());
  EXPECT_EQ(door.restoreDock(), (QJsonObject{{QLatin1StringView(RestoreDock::kHeld), false}}));
  orders->release();
  EXPECT_FALSE(session.isOurs);
  // The door outlives the orders and asks nobody then.
  orders.reset();
  EXPECT_FALSE(door.restoreDock || door.refusal || door.refusalToOpen);
}

}  // namespace
}  // namespace tarnwick::test
