// A widget is connected by a sign-in in the browser, through its form and by the keyboard alone.
#include <QDBusConnection>
#include <QFile>
#include <QPushButton>
#include <QUrlQuery>

#include "desktop/ConnectionScenario.h"
#include "platform_net/AuthorizationServer.h"
#include "secret/KeyringDaemon.h"
#include "services/Keychain.h"
#include "services/oauth/OAuthRecord.h"
#include "views/controls/Fields.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;
using test::AuthorizationServer;
using test::TestBrowser;
using test::TestCertificates;
using test::TestServer;

/// A browser of the desktop that writes down which page it is to open, and a service that stands behind a proxy.
class SignInScenario : public ConnectionScenario {
 protected:
  SignInScenario() {
    QDir(folder.path()).mkpath(u"applications"_s);
    write(u"open-page"_s, "#!/bin/sh\nprintf %s \"$1\" > \"$0.part\" && mv \"$0.part\" \"$0.url\"\n");
    QFile::setPermissions(folder.filePath(u"open-page"_s), QFile::ReadOwner | QFile::ExeOwner);
    write(u"applications/browser.desktop"_s,
          "[Desktop Entry]\nType=Application\nName=Browser\nExec=" + folder.filePath(u"open-page"_s).toLocal8Bit() +
              " %u\nMimeType=x-scheme-handler/https;\n");
    write(u"applications/mimeapps.list"_s, "[Default Applications]\nx-scheme-handler/https=browser.desktop\n");
    setVariable("XDG_DATA_HOME", folder.path());
    setVariable("XDG_CONFIG_HOME", folder.path());
    setVariable("https_proxy", u"http://127.0.0.1:%1"_s.arg(service.port()));
    setVariable("no_proxy", {});
    browser.proxy = service.port();
    keyring.startUnlocked();
  }
  ~SignInScenario() override {
    end();
    for (const auto& [name, value] : before_.asKeyValueRange()) qputenv(name.constData(), value);
    for (const QByteArray& name : added_) qunsetenv(name.constData());
  }
  void write(const QString& name, const QByteArray& content) const {
    QFile created(folder.filePath(name));
    ASSERT_TRUE(created.open(QIODevice::WriteOnly) && created.write(content) == content.size());
  }
  using ConnectionScenario::write;
  void setVariable(const char* name, const QString& value) {
    if (qEnvironmentVariableIsSet(name))
      before_.insert(name, qgetenv(name));
    else
      added_ << name;
    qputenv(name, value.toUtf8());
  }
  /// The page that the browser was told to open, once.
  QUrl page() {
    QFile told(folder.filePath(u"open-page.url"_s));
    EXPECT_TRUE(comesTrue([&] { return told.exists(); })) << said();
    EXPECT_TRUE(told.open(QIODevice::ReadOnly));
    const QUrl page = QUrl::fromEncoded(told.readAll());
    told.remove();
    return page;
  }
  bool says(const QString& sentence) {
    return comes([&] { return form() && QString::fromStdString(said()).split(u'|').contains(sentence); });
  }

 private:
  QMap<QByteArray, QByteArray> before_;
  QByteArrayList added_;

 protected:
  AuthorizationServer service{TestCertificates::all().dropbox, TestServer::As::Proxy};
  TestBrowser browser;
  test::KeyringDaemon keyring{QDBusConnection::sessionBus()};
};

TEST_F(SignInScenario, AFolderIsConnectedThroughTheBrowserByKeys) {
  DockConfiguration config;
  config.profiles[0].widgets = {{QUuid::createUuid(), u"dropbox"_s, {}, {}}};
  startShown(config);
  ASSERT_NO_FATAL_FAILURE(openForm());
  ASSERT_TRUE(tabTo<QLineEdit>(u"Client ID"_s));
  ASSERT_TRUE(write(AuthorizationServer::kClient));
  ASSERT_TRUE(tabTo<QLineEdit>(u"Client secret"_s));
  ASSERT_TRUE(write(AuthorizationServer::kSecret));
  ASSERT_TRUE(tabTo<QPushButton>(u"Sign In"_s));

  // The first time the user says no, in the form and in the browser.
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(says(u"Complete sign-in in your browser."_s));
  page();
  EXPECT_TRUE(comesTrue([&] {
    const auto* at = qobject_cast<const QPushButton*>(QApplication::focusWidget());
    return at && at->text() == u"Cancel Sign-In"_s;
  }));
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(says(u"Sign-in cancelled."_s)) << said();
  service.decline(true);
  desk.tap(KEY_ENTER);
  browser.open(page());
  EXPECT_TRUE(says(u"Sign-in was declined or cancelled."_s)) << said();
  service.decline(false);

  ASSERT_TRUE(tabTo<QPushButton>(u"Sign In"_s));
  desk.tap(KEY_ENTER);
  const QUrl page = this->page();
  EXPECT_EQ(page.host(), u"www.dropbox.com"_s);
  const QString state = QUrlQuery(page).queryItemValue(u"state"_s);
  EXPECT_FALSE(state.isEmpty() || said().find(state.toStdString()) != std::string::npos);
  browser.open(page);
  EXPECT_TRUE(says(u"Connected. Offline access is saved in Keychain."_s)) << said();
  EXPECT_TRUE(comes([&] { return browser.shown.endsWith("return to Tarnwick."); }));
  EXPECT_TRUE(comes([&] { return reading().value.value == u"2"_s && !reading().isLoading; }))
      << reading().value.subtitle.toStdString();
  EXPECT_GE(service.reads(), 1);
  const DockWidget widget = store().widgets().first();
  EXPECT_EQ(widget.options.value(option::endpoint), u"https://api.dropboxapi.com"_s);
  EXPECT_EQ(keyring.itemsOf(Keychain::account(widget)).size(), 1);
  QFile settings(file());
  ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
  EXPECT_FALSE(settings.readAll().contains(AuthorizationServer::kSecret.toUtf8()));

  ASSERT_TRUE(tabTo<QPushButton>(u"Sign Out"_s));
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(says(u"Signed out."_s)) << said();
  EXPECT_TRUE(keyring.itemsOf(Keychain::account(widget)).isEmpty());
  EXPECT_TRUE(comes([&] { return reading().value.failed; }));
  EXPECT_EQ(reading().value.subtitle, u"Add your provider credential in Connection Settings."_s);
  desk.tap(KEY_ESC);
  EXPECT_TRUE(comesTrue([&] { return !form(); }));
}

}  // namespace
}  // namespace tarnwick::testing
