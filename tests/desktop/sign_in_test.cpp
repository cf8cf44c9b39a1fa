// Widgets are connected to services of the net, by a pasted token and by a sign-in in the browser, through their forms
// and by the keyboard alone.
#include <QClipboard>
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
using test::TestReply;
using test::TestRequest;
using test::TestServer;

/// A keyring, and services that stand behind a proxy.
class ServiceScenario : public ConnectionScenario {
 protected:
  ServiceScenario() { keyring.startUnlocked(); }
  ~ServiceScenario() override {
    end();
    for (const auto& [name, value] : before_.asKeyValueRange()) qputenv(name.constData(), value);
    for (const QByteArray& name : added_) qunsetenv(name.constData());
  }
  void setVariable(const char* name, const QString& value) {
    if (qEnvironmentVariableIsSet(name))
      before_.insert(name, qgetenv(name));
    else
      added_ << name;
    qputenv(name, value.toUtf8());
  }
  void goThrough(quint16 proxy) {
    setVariable("https_proxy", u"http://127.0.0.1:%1"_s.arg(proxy));
    setVariable("no_proxy", {});
  }
  /// That a secret is in the keyring, once, and nowhere in the settings.
  void expectKept(const QString& secret) {
    EXPECT_EQ(keyring.itemsOf(Keychain::account(store().widgets().first())).size(), 1);
    QFile settings(file());
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    EXPECT_FALSE(settings.readAll().contains(secret.toUtf8()));
  }

  test::KeyringDaemon keyring{QDBusConnection::sessionBus()};

 private:
  QMap<QByteArray, QByteArray> before_;
  QByteArrayList added_;
};

TEST_F(ServiceScenario, AnAccountIsConnectedByATokenThatIsPastedByKeys) {
  const QString token = u"ghp_secret1"_s;
  const TestServer server(
      TestCertificates::all().services,
      [](const TestRequest& request) {
        const bool isAsked = request.path == "/notifications?all=false&page=1&per_page=100" &&
                             request.lines.contains("Authorization: Bearer ghp_secret1");
        return isAsked ? TestReply::of(200, R"([{"id": "1", "subject": {"title": "One"}}, {"id": "2"}])")
                       : TestReply::of(401, "{}");
      },
      TestServer::As::Proxy);
  goThrough(server.port());
  DockConfiguration config;
  config.profiles[0].widgets = {{QUuid::createUuid(), u"analyticsGitHub"_s, {}, {}}};
  startShown(config);
  QGuiApplication::clipboard()->setText(token);
  ASSERT_NO_FATAL_FAILURE(openForm());
  ASSERT_TRUE(tabTo<QLineEdit>(u"Credential"_s));
  desk.type({KEY_V}, {KEY_LEFTCTRL});
  ASSERT_TRUE(tabTo<QPushButton>(u"Try It"_s));
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(comes([&] { return QString::fromStdString(said()).contains(u"“2”"_s); })) << said();
  ASSERT_TRUE(tabTo<QPushButton>(u"Save"_s));
  desk.tap(KEY_ENTER);
  ASSERT_TRUE(comes([&] { return !form(); })) << said();
  EXPECT_TRUE(comes([&] { return reading().value.value == u"2"_s && !reading().isLoading; }))
      << reading().value.subtitle.toStdString();
  EXPECT_EQ(store().widgets().first().options.value(option::endpoint), u"https://api.github.com"_s);
  expectKept(token);
}

/// A browser of the desktop that writes down which page it is to open.
class SignInScenario : public ServiceScenario {
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
    goThrough(service.port());
    browser.proxy = service.port();
  }
  void write(const QString& name, const QByteArray& content) const {
    QFile created(folder.filePath(name));
    ASSERT_TRUE(created.open(QIODevice::WriteOnly) && created.write(content) == content.size());
  }
  using ConnectionScenario::write;
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

  AuthorizationServer service{TestCertificates::all().services, TestServer::As::Proxy};
  TestBrowser browser;
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
  expectKept(AuthorizationServer::kSecret);

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
