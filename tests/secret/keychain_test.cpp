#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "base/UuidText.h"
#include "secret/FakeSecretStore.h"
#include "secret/Told.h"
#include "services/Keychain.h"
#include "services/StoreIdentity.h"
#include "services/WidgetCredentials.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::endOf;

constexpr auto kId = "0A1B2C3D-0000-4000-8000-00000000000F"_L1;
constexpr auto kOtherId = "0A1B2C3D-0000-4000-8000-0000000000AA"_L1;

DockWidget widgetAt(const std::optional<QString>& endpoint) {
  DockWidget widget{*UuidText::read(QString(kId)), u"jsonMetric"_s, {}, {}};
  if (endpoint) widget.options.insert(u"endpoint"_s, *endpoint);
  return widget;
}

TEST(Keychain, AnAccountIsOneWidgetAtOneHost) {
  const struct {
    std::optional<QString> endpoint;
    const char* host;
  } cases[] = {
      {std::nullopt, ""},
      {u""_s, ""},
      {u"no address"_s, ""},
      {u"https://"_s, ""},
      {u"https://API.Example.com/v1?q=host.test"_s, "api.example.com"},
      {u"https://api.example.com:8443/"_s, "api.example.com"},
      {u"https://me@api.example.com"_s, "api.example.com"},
      {u"https://evil.test/@api.example.com"_s, "evil.test"},
      {u"https://bücher.example/"_s, "xn--bcher-kva.example"},
      {u"http://[::1]:80/"_s, "::1"},
  };
  for (const auto& each : cases) {
    const DockWidget widget = widgetAt(each.endpoint);
    const QString account = Keychain::account(widget);
    EXPECT_EQ(account.toStdString(), QString(kId).toStdString() + ":" + each.host);
    EXPECT_EQ(Keychain::widgetIdentity(account), widget.id);
  }
}

TEST(Keychain, TheWidgetOfAnAccountIsWhatStandsBeforeTheColon) {
  const struct {
    QString account;
    bool isWidget;
  } cases[] = {
      {QString(kId), true},     {kId + ":"_L1, true},  {QString(kId).toLower() + ":h"_L1, true},
      {kId + ":a:b"_L1, true},  {u""_s, false},        {u":h"_s, false},
      {u"somebody:h"_s, false}, {" "_L1 + kId, false}, {u"{"_s + kId + u'}', false},
      {u"h:"_s + kId, false},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Keychain::widgetIdentity(each.account).has_value(), each.isWidget) << each.account.toStdString();
}

class KeychainTest : public testing::Test {
 protected:
  QStringList kept() const {
    QStringList list;
    for (const auto& item : secrets->items) list << item.which.account + u'=' + QString::fromUtf8(item.value);
    return list;
  }
  void save(const QString& value, const QString& account) {
    EXPECT_EQ(endOf(keychain.save(value, account, u"Harbour"_s, SecretStore::Asking::Never)), "done");
  }

  QTemporaryDir folder;
  std::shared_ptr<test::FakeSecretStore> secrets = std::make_shared<test::FakeSecretStore>();
  Keychain keychain{secrets, folder.path()};
  const QString a = kId + ":a.test"_L1;
  const QString b = kId + ":b.test"_L1;
  const QString other = kOtherId + ":a.test"_L1;
};

TEST_F(KeychainTest, KeepsOneValueAnAccount) {
  save({}, a);
  EXPECT_EQ(endOf(keychain.read(a)), "nothing");
  save(u"first"_s, a);
  save(u"schlüssel\U0001F511"_s, a);
  save(u"x"_s, other);
  EXPECT_EQ(endOf(keychain.read(a)), "schlüssel\U0001F511");
  EXPECT_EQ(endOf(keychain.read(b)), "nothing");
  EXPECT_EQ(secrets->items.first().label, u"Tarnwick · Harbour"_s);
  EXPECT_EQ(secrets->items.first().which,
            (SecretAttributes{u"com.brindlemoor.Tarnwick.secrets"_s, a, StoreIdentity::read(folder.path())}));
  save({}, a);
  EXPECT_EQ(kept(), QStringList{other + "=x"_L1});

  for (const QByteArray& noText : {QByteArray("\xff"), QByteArray("ab\xc3")}) {
    secrets->items.first().value = noText;
    EXPECT_EQ(endOf(keychain.read(other)), "nothing");
  }
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(endOf(keychain.read(other, stop.get_token())), "cancelled");
}

TEST_F(KeychainTest, WhoeverCanDoWithoutFailsOnlyWhereACredentialIsKnownToBeThere) {
  save(u"x"_s, a);
  EXPECT_EQ(endOf(keychain.readIfAny(a)), "x/");
  EXPECT_EQ(endOf(keychain.readIfAny(b)), "/");
  secrets->failure = SecretFailure::Locked;
  EXPECT_EQ(endOf(keychain.readIfAny(a)), "/Keychain access unavailable (-2).");
  secrets->isKept = true;
  EXPECT_EQ(endOf(keychain.readIfAny(a)), "Keychain access unavailable (-2).");
  secrets->isKept = false;
  secrets->failure = SecretFailure::NoService;
  EXPECT_EQ(endOf(keychain.readIfAny(a)), "/Keychain access unavailable (-1)./no keyring");
}

TEST_F(KeychainTest, WhatGoesIsTheFoldersOwn) {
  const QUuid widget = *UuidText::read(QString(kId));
  // A folder that kept nothing yet has nothing to look for.
  EXPECT_EQ(endOf(keychain.removeOrphans({})), "0");
  EXPECT_EQ(secrets->asked, 0);
  EXPECT_FALSE(QFile::exists(folder.filePath(u"store-id"_s)));

  QTemporaryDir elsewhere;
  const QString strange = u"no identity"_s;
  const Keychain neighbour(secrets, elsewhere.path());
  for (const QString& account : {a, b, other, strange}) save(u"1"_s, account);
  const QString theirs = kId + ":theirs.test"_L1;
  EXPECT_EQ(endOf(neighbour.save(u"1"_s, theirs, {}, SecretStore::Asking::Never)), "done");
  secrets->items.append({{Keychain::kService, kId + ":old"_L1, {}}, {}, "1"});
  const auto accounts = [](const Keychain& of) { return endOf(of.accounts()); };
  EXPECT_EQ(accounts(neighbour), theirs.toStdString());

  // What was saved in this run belongs to a widget that may be newer than the list.
  EXPECT_EQ(endOf(keychain.removeOrphans({})), "0");
  const Keychain nextStart(secrets, folder.path());
  EXPECT_EQ(endOf(nextStart.removeOrphans({widget})), "1");
  EXPECT_EQ(accounts(nextStart), QStringList({a, b, strange}).join(u' ').toStdString());
  secrets->stubborn = {Keychain::kService, a, StoreIdentity::read(folder.path())};
  EXPECT_EQ(endOf(nextStart.removeOrphans({})), "1");
  secrets->stubborn = {};
  save(u"1"_s, b);
  EXPECT_EQ(endOf(nextStart.deleteAll({widget})), "done");
  EXPECT_EQ(kept(), (QStringList{strange + "=1"_L1, theirs + "=1"_L1, kId + ":old=1"_L1}));
}

TEST_F(KeychainTest, EveryFailureIsASentence) {
  save(u"1"_s, a);
  using enum SecretFailure::Status;
  for (const auto status : {NoService, Locked, NoAnswer, Dismissed, Refused}) {
    secrets->failure = status;
    const std::string unavailable = "Keychain access unavailable (" + std::to_string(status) + ").";
    EXPECT_EQ(endOf(keychain.read(a)), unavailable);
    EXPECT_EQ(endOf(keychain.accounts()), unavailable);
    EXPECT_EQ(endOf(keychain.removeOrphans({})), unavailable);
    EXPECT_EQ(endOf(keychain.deleteAll({})), unavailable);
    EXPECT_EQ(endOf(keychain.unlock()), unavailable);
    EXPECT_EQ(endOf(keychain.save(u"2"_s, a, {}, SecretStore::Asking::Never)),
              "Keychain could not save the credential (" + std::to_string(status) + ").");
    save({}, a);
  }
  EXPECT_EQ(kept(), QStringList{a + "=1"_L1});

  // Whose identity cannot be read has items that cannot be found: nothing is done as if there were none.
  secrets->failure.reset();
  QTemporaryDir closed;
  ASSERT_TRUE(QDir(closed.path()).mkdir(u"store-id"_s));
  const Keychain strange(secrets, closed.path());
  const std::string unread = endOf(strange.accounts());
  EXPECT_NE(unread, "");
  EXPECT_EQ(endOf(strange.removeOrphans({})), unread);
  EXPECT_EQ(endOf(strange.deleteAll({})), unread);
  EXPECT_EQ(endOf(strange.save(u"1"_s, a, {}, SecretStore::Asking::Never)), unread);
  EXPECT_TRUE(QFileInfo(closed.filePath(u"store-id"_s)).isDir());

  QTemporaryDir full;
  writeFile(full.filePath(u"store-id"_s), "no identity");
  {
    const AsFullDisk disk(1);
    const Keychain unkept(secrets, full.path());
    EXPECT_NE(endOf(unkept.save(u"1"_s, a, {}, SecretStore::Asking::Never)), "done");
  }
  EXPECT_EQ(StoreIdentity::read(full.path()), QString());
  const QString made = StoreIdentity::readOrMake(full.path());
  EXPECT_TRUE(QFile::exists(full.filePath(u"store-id-damaged"_s)));
  EXPECT_EQ(StoreIdentity::readOrMake(full.path()), made);
  EXPECT_NE(made, StoreIdentity::read(folder.path()));
}

TEST_F(KeychainTest, AWidgetThatGoesTakesItsCredentialsAlong) {
  save(u"1"_s, a);
  save(u"1"_s, other);
  QStringList told;
  const auto tell = [&](const QString& message) { told << message; };
  auto credentials = std::make_unique<WidgetCredentials>(Keychain(secrets, folder.path()));
  secrets->failure = SecretFailure::Locked;
  const QList<QUuid> widgets{*UuidText::read(QString(kId))};
  credentials->remove(widgets, tell);
  EXPECT_TRUE(waitFor([&] { return told == QStringList{u"Keychain access unavailable (-2)."_s}; }));
  secrets->failure.reset();
  credentials->remove(widgets, tell);
  EXPECT_TRUE(waitFor([&] { return kept() == QStringList{other + "=1"_L1}; }));
  credentials->removeOrphans({});
  EXPECT_TRUE(waitFor([&] { return secrets->items.isEmpty(); }));

  // Once it has gone nobody is told; another that fails in the same way has ended behind it.
  secrets->failure = SecretFailure::Locked;
  Keychain slow(secrets, folder.path());
  credentials = std::make_unique<WidgetCredentials>(slow);
  credentials->remove(widgets, tell);
  credentials.reset();
  EXPECT_EQ(endOf(slow.deleteAll(widgets)), "Keychain access unavailable (-2).");
  EXPECT_EQ(told.size(), 1);
}

}  // namespace
}  // namespace tarnwick
