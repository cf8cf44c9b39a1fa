#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "base/UuidText.h"
#include "platform/secret/SecretServiceCalls.h"
#include "platform/secret/SecretServiceStore.h"
#include "secret/KeyringDaemon.h"
#include "secret/Told.h"
#include "services/Keychain.h"
#include "services/StoreIdentity.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::endOf;
using Asking = SecretStore::Asking;

class KeyringTest : public testing::Test {
 protected:
  std::string save(const Keychain& into, const QString& value, const QString& at, Asking asking = Asking::Never) {
    return endOf(into.save(value, at, u"Harbour"_s, asking));
  }
  static QString accountAt(const QUuid& widget, const QString& host) { return UuidText::write(widget) + u':' + host; }

  PrivateBus bus;
  test::KeyringDaemon daemon{bus};
  QTemporaryDir folder;
  std::shared_ptr<SecretStore> secrets = std::make_shared<SecretServiceStore>(bus.connection());
  Keychain keychain{secrets, folder.path()};
  const QUuid widget = QUuid::createUuid();
  const QString account = accountAt(widget, u"a.test"_s);
};

TEST_F(KeyringTest, SavesReplacesReadsListsAndRemoves) {
  daemon.startUnlocked();
  EXPECT_EQ(endOf(keychain.read(account)), "nothing");
  // Around the size of a block, and far beyond it.
  const QString values[] = {u"x"_s, QString(15, u'a'), QString(16, u'b'), u"schlüssel\U0001F511\n "_s,
                            QString(100'000, u'c')};
  for (const QString& value : values) {
    EXPECT_EQ(save(keychain, value, account), "done");
    EXPECT_EQ(endOf(keychain.read(account)), value.toStdString());
  }
  const QList<QVariantMap> items = daemon.itemsOf(account);
  ASSERT_EQ(items.size(), 1);
  EXPECT_EQ(items[0].value(u"Label"_s), u"Tarnwick · Harbour"_s);
  EXPECT_EQ(qdbus_cast<secretservice::Attributes>(items[0].value(u"Attributes"_s)),
            (secretservice::Attributes{{u"xdg:schema"_s, u"com.brindlemoor.Tarnwick.secrets"_s},
                                       {u"service"_s, u"com.brindlemoor.Tarnwick.secrets"_s},
                                       {u"account"_s, account},
                                       {u"store"_s, StoreIdentity::read(folder.path())}}));

  const QString elsewhere = accountAt(widget, u"b.test"_s);
  const QString other = accountAt(QUuid::createUuid(), u"a.test"_s);
  for (const QString& one : {elsewhere, other}) EXPECT_EQ(save(keychain, u"1"_s, one), "done");
  EXPECT_EQ(endOf(keychain.accounts()), test::wordsOf(QStringList{account, elsewhere, other}).toStdString());
  EXPECT_EQ(save(keychain, {}, elsewhere), "done");
  EXPECT_EQ(endOf(keychain.read(elsewhere)), "nothing");
  EXPECT_EQ(save(keychain, u"2"_s, elsewhere), "done");
  EXPECT_EQ(endOf(keychain.deleteAll({widget})), "done");
  EXPECT_EQ(endOf(keychain.accounts()), other.toStdString());
}

TEST_F(KeyringTest, TwoFoldersShareAKeyring) {
  daemon.startUnlocked();
  QTemporaryDir secondFolder;
  const Keychain second(secrets, secondFolder.path());
  const QString theirs = accountAt(QUuid::createUuid(), u"b.test"_s);
  EXPECT_EQ(save(keychain, u"mine"_s, account), "done");
  EXPECT_EQ(save(second, u"theirs"_s, theirs), "done");
  // One account has one item, which stays with the folder that made it.
  EXPECT_EQ(save(second, u"changed"_s, account), "done");
  EXPECT_EQ(daemon.itemsOf(account).size(), 1);
  EXPECT_EQ(endOf(keychain.read(account)), "changed");

  for (const QTemporaryDir* one : {&folder, &secondFolder}) {
    const Keychain start(secrets, one->path());
    EXPECT_EQ(endOf(start.removeOrphans({widget})), one == &folder ? "0" : "1");
    EXPECT_EQ(endOf(start.read(account)), "changed");
  }
  EXPECT_EQ(endOf(second.accounts()), "");
  EXPECT_EQ(endOf(Keychain(secrets, folder.path()).removeOrphans({})), "1");
}

TEST_F(KeyringTest, ALockedKeyringFailsAndHeals) {
  daemon.startUnlocked();
  EXPECT_EQ(save(keychain, u"1"_s, account), "done");
  daemon.lock();
  const std::string locked = "Keychain access unavailable (-2).";
  EXPECT_EQ(endOf(keychain.read(account)), locked);
  EXPECT_EQ(endOf(keychain.read(accountAt(widget, u"none.test"_s))), locked);
  EXPECT_EQ(endOf(keychain.readIfAny(account)), locked) << "it is known to be there";
  EXPECT_EQ(endOf(keychain.readIfAny(accountAt(widget, u"none.test"_s))), '/' + locked);
  EXPECT_EQ(endOf(keychain.accounts()), locked);
  EXPECT_EQ(endOf(Keychain(secrets, folder.path()).removeOrphans({})), locked);
  EXPECT_EQ(endOf(keychain.deleteAll({widget})), locked);
  EXPECT_EQ(save(keychain, u"2"_s, account), "Keychain could not save the credential (-2).");
  EXPECT_EQ(save(keychain, {}, account), "done");
  EXPECT_EQ(endOf(keychain.capability()), "true");
  // The keyring finds nothing to ask with.
  EXPECT_EQ(save(keychain, u"2"_s, account, Asking::Allowed), "Keychain could not save the credential (-4).");
  EXPECT_EQ(endOf(keychain.unlock()), "Keychain access unavailable (-4).");

  daemon.unlock();
  EXPECT_EQ(endOf(keychain.read(account)), "1");
  EXPECT_EQ(endOf(keychain.unlock()), "done");
  EXPECT_EQ(save(keychain, u"2"_s, account, Asking::Allowed), "done");
  EXPECT_EQ(endOf(keychain.read(account)), "2");
}

TEST_F(KeyringTest, AKeyringMayEndComeBackOrNotBeThere) {
  const std::string none = "Keychain access unavailable (-1).";
  EXPECT_EQ(endOf(keychain.read(account)), none);
  EXPECT_EQ(endOf(keychain.capability()),
            "No keyring runs on this desktop. Install GNOME Keyring, KWallet or KeePassXC to keep credentials.");
  EXPECT_EQ(save(keychain, u"1"_s, account, Asking::Allowed), "Keychain could not save the credential (-1).");

  daemon.start();
  EXPECT_EQ(endOf(keychain.read(account)), "nothing") << "there is no collection at all";
  EXPECT_EQ(save(keychain, u"1"_s, account), "Keychain could not save the credential (-5).");
  EXPECT_EQ(save(keychain, u"1"_s, account, Asking::Allowed), "Keychain could not save the credential (-4).");
  daemon.kill();

  daemon.startUnlocked();
  EXPECT_EQ(save(keychain, u"1"_s, account), "done");
  daemon.kill();
  EXPECT_EQ(endOf(keychain.read(account)), none);
  daemon.start();
  EXPECT_EQ(endOf(keychain.read(account)), "Keychain access unavailable (-2).");
  daemon.kill();
  daemon.startUnlocked();
  EXPECT_EQ(endOf(keychain.read(account)), "1");
  daemon.hang();
  const test::Told interrupted = test::begin(keychain.read(account));
  daemon.kill();
  EXPECT_EQ(endOf(interrupted), none);
  daemon.startUnlocked();
  daemon.hang();
  const auto hasty = std::make_shared<SecretServiceStore>(bus.connection(), std::chrono::milliseconds(50));
  EXPECT_EQ(endOf(Keychain(hasty, folder.path()).read(account)), "Keychain access unavailable (-3).");

  bus.stop();
  EXPECT_EQ(endOf(keychain.read(account)), none);
}

}  // namespace
}  // namespace tarnwick
