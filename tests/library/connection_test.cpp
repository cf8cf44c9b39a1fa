#include <QFileDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QPointer>
#include <QPushButton>

#include "base/DomainError.h"
#include "library/EditorTest.h"
#include "services/Keychain.h"
#include "support/FileTest.h"
#include "support/Wait.h"
#include "views/controls/Buttons.h"
#include "views/controls/Segments.h"
#include "views/library/AnswerModel.h"
#include "views/library/AnswerTree.h"
#include "views/window/Cards.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kKept = "A credential is stored in the keyring. Entering a new one replaces it."_L1;
constexpr auto kUsual = "Kept in the keyring, never in the settings."_L1;

class ConnectionFormTest : public EditorTest {
 protected:
  FakeConnections& services() { return fixture_.connections; }
  DockWidget connected(const QString& address = u"https://one.example/v1"_s, const QString& field = {}) {
    return fixture_.add(u"revenueLemonSqueezy"_s, {{option::endpoint, address}, {option::field, field}});
  }
  void keep(const DockWidget& widget, const QString& credential) {
    services().kept.insert(Keychain::account(widget), credential);
  }
  static QPushButton* button(QWidget& window, const QString& words) {
    for (auto* each : window.findChildren<QPushButton*>())
      if (each->isVisible() && (each->text() == words || each->accessibleName() == words)) return each;
    return nullptr;
  }
  static bool comesToSay(QWidget& window, const QString& sentence) {
    return waitFor([&] { return says(window, sentence); });
  }
  static void press(QWidget& window, const QString& words) {
    auto* found = button(window, words);
    ASSERT_TRUE(found) << words.toStdString();
    QTest::keyClick(found, Qt::Key_Return);
  }
};

TEST_F(ConnectionFormTest, ACredentialIsKeptWithTheFormAndNeverShownAgain) {
  const DockWidget widget = connected();
  {
    const auto window = fixture_.editor(widget.id);
    EXPECT_TRUE(says(*window, kUsual));
    write(*window, u"Credential"_s, u"secret"_s);
    EXPECT_EQ(named<QLineEdit>(*window, u"Credential"_s)->echoMode(), QLineEdit::Password);
    write(*window, u"Title"_s, u"Mine"_s);
    // A keyring that refuses stores nothing at all.
    services().failure = u"The keyring could not save the credential (-4)."_s;
    EXPECT_FALSE(window->save());
    EXPECT_TRUE(says(*window, services().failure));
    EXPECT_EQ(fixture_.find(widget.id)->title, QString());
    services().failure.clear();
    EXPECT_TRUE(window->save());
    EXPECT_EQ(services().kept.value(Keychain::account(widget)), u"secret"_s);
    EXPECT_EQ(fixture_.find(widget.id)->title, u"Mine"_s);
    EXPECT_FALSE(fixture_.find(widget.id)->options.values().contains(u"secret"_s));
  }
  {
    const auto window = fixture_.editor(widget.id);
    EXPECT_TRUE(says(*window, kKept));
    EXPECT_EQ(named<QLineEdit>(*window, u"Credential"_s)->text(), QString());
    EXPECT_TRUE(window->save());
    EXPECT_EQ(services().kept.size(), 1) << "what was not touched stays";
  }
  for (const bool byButton : {true, false}) {
    SCOPED_TRACE(byButton);
    keep(widget, u"secret"_s);
    const auto window = fixture_.editor(widget.id);
    if (byButton) {
      press(*window, u"Remove the Credential"_s);
      press(*window, u"Keep the Credential"_s);
      press(*window, u"Remove the Credential"_s);
    } else {
      write(*window, u"Credential"_s, u"x"_s);
      write(*window, u"Credential"_s, QString());
    }
    EXPECT_TRUE(says(*window, u"The stored credential is removed when you save."_s));
    EXPECT_EQ(services().kept.size(), 1) << "not before";
    EXPECT_TRUE(window->save());
    EXPECT_TRUE(services().kept.isEmpty());
  }
}

TEST_F(ConnectionFormTest, WhileTheKeyringAsksNothingIsStoredAndTheFormCanBeLeft) {
  const DockWidget widget = connected();
  services().asksUser = true;
  const auto begin = [&] {
    auto window = fixture_.editor(widget.id);
    write(*window, u"Credential"_s, u"secret"_s);
    write(*window, u"Title"_s, u"Mine"_s);
    EXPECT_FALSE(window->save());
    EXPECT_FALSE(window->save()) << "it is under way";
    EXPECT_EQ(fixture_.find(widget.id)->title, QString());
    return window;
  };
  {
    const auto window = begin();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    services().keyring.answer({});
    EXPECT_EQ(fixture_.find(widget.id)->title, QString());
  }
  begin().reset();
  services().keyring.answer({});
  EXPECT_EQ(fixture_.find(widget.id)->title, QString()) << "the form is gone";
  {
    const auto window = begin();
    fixture_.store().set(widget.id, u"suffix"_s, u"%"_s);  // The widget goes on meanwhile.
    services().keyring.answer({});
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(fixture_.find(widget.id)->title, u"Mine"_s);
    EXPECT_EQ(fixture_.find(widget.id)->options.value(option::suffix), u"%"_s);
  }
  EXPECT_EQ(services().keyring.asked.size(), 3) << "each was asked for once";
}

TEST_F(ConnectionFormTest, ALockedKeyringIsUnlockedByThePressThatSaves) {
  const DockWidget widget = connected();
  for (const bool isUnlocked : {true, false}) {
    SCOPED_TRACE(isUnlocked);
    services().failure = u"Keychain access unavailable (-2)."_s;
    const auto window = fixture_.editor(widget.id);
    EXPECT_TRUE(says(*window, services().failure));
    EXPECT_EQ(services().keyring.asked.size(), isUnlocked ? 0 : 1) << "nobody pressed anything";
    write(*window, u"Title"_s, isUnlocked ? u"One"_s : u"Two"_s);
    EXPECT_FALSE(window->save());
    ASSERT_EQ(services().keyring.asked.size(), isUnlocked ? 1 : 2);
    services().keyring.answer(isUnlocked);
    EXPECT_FALSE(window->isVisible()) << "the rest needs no keyring";
    EXPECT_EQ(fixture_.find(widget.id)->title, isUnlocked ? u"One"_s : u"Two"_s);
  }
}

TEST_F(ConnectionFormTest, WithoutAKeyringItSaysWhatToInstallAndKeepsWhatIsTyped) {
  const DockWidget widget = connected();
  services().keeps = Capability::no(u"No keyring runs on this desktop."_s);
  const auto window = fixture_.editor(widget.id);
  EXPECT_TRUE(says(*window, services().keeps.reason));
  write(*window, u"Credential"_s, u"secret"_s);
  EXPECT_FALSE(window->save());
  EXPECT_EQ(named<QLineEdit>(*window, u"Credential"_s)->text(), u"secret"_s);
  EXPECT_TRUE(services().kept.isEmpty());
  press(*window, u"Try It"_s);
  EXPECT_EQ(services().sent, QStringList{u"secret"_s}) << "trying needs no keyring";
  services().service.answer(QJsonObject());
  services().keeps = Capability::yes();
  EXPECT_TRUE(window->save());
  EXPECT_EQ(services().kept.value(Keychain::account(widget)), u"secret"_s);
}

TEST_F(ConnectionFormTest, ACredentialGoesToNoOtherHostThanItWasEnteredFor) {
  const QString other = u"https://two.example/v1"_s;
  const QString notStored = u"A credential for two.example is not stored."_s;
  struct Case {
    const char* what;
    bool isKept;
    QString typedBefore, typedAfter, sent;
    bool isRefusedFirst;
  };
  for (const Case& one : {Case{"one that is kept", true, {}, {}, u"none"_s, false},
                          Case{"one that was typed for the first", false, u"first"_s, {}, u"none"_s, true},
                          Case{"a new one", true, {}, u"second"_s, u"second"_s, false},
                          Case{"one after the other", false, u"first"_s, u"second"_s, u"second"_s, false}}) {
    SCOPED_TRACE(one.what);
    services().kept.clear();
    services().sent.clear();
    const DockWidget widget = connected();
    if (one.isKept) keep(widget, u"kept"_s);
    const auto window = fixture_.editor(widget.id);
    if (!one.typedBefore.isEmpty()) write(*window, u"Credential"_s, one.typedBefore);
    write(*window, u"Address"_s, other);
    EXPECT_TRUE(comesToSay(*window, notStored));
    if (!one.typedAfter.isEmpty()) write(*window, u"Credential"_s, one.typedAfter);
    press(*window, u"Try It"_s);
    EXPECT_EQ(services().sent.isEmpty(), one.isRefusedFirst);
    if (one.isRefusedFirst) press(*window, u"Try It"_s);
    EXPECT_EQ(services().sent, QStringList{one.sent});
    services().service.answer(QJsonObject{{u"a"_s, 1}});
    write(*window, u"Address"_s, u"https://one.example/v2"_s);
    EXPECT_TRUE(waitFor([&] {
      return says(*window, one.isKept && one.typedAfter.isEmpty() ? kKept : kUsual) ||
             says(*window, u"A credential for one.example is not stored."_s);
    }));
    window->close();
    fixture_.store().remove(widget.id);
  }
}

TEST_F(ConnectionFormTest, TryingSaysWhatIsToBeDoneFirst) {
  for (const auto& [kind, step] :
       QList<QPair<QString, QString>>{{u"analyticsClaudeCodeStatus"_s, u"Install the activity hooks first."_s},
                                      {u"geminiAPIUsage"_s, u"Choose the history to read first."_s},
                                      {u"revenueLemonSqueezy"_s, u"Enter an address first."_s}}) {
    const auto window = fixture_.editor(fixture_.add(kind).id);
    press(*window, u"Try It"_s);
    EXPECT_TRUE(says(*window, step)) << kind.toStdString();
    EXPECT_TRUE(services().service.asked.isEmpty());
  }
}

TEST_F(ConnectionFormTest, TryingSaysWhatCameAndFollowsTheForm) {
  const DockWidget widget = connected({}, u"stats.today"_s);
  const auto window = fixture_.editor(widget.id);
  ScriptedSession& service = services().service;
  write(*window, u"Address"_s, u"http://one.example"_s);
  press(*window, u"Try It"_s);
  EXPECT_TRUE(says(*window, u"Use a valid HTTPS endpoint without credentials in its URL."_s));
  EXPECT_TRUE(service.asked.isEmpty());
  write(*window, u"Address"_s, u"https://one.example"_s);
  press(*window, u"Try It"_s);
  press(*window, u"Try It"_s);
  EXPECT_EQ(service.asked.size(), 1);
  EXPECT_TRUE(says(*window, u"Asking one.example…"_s));
  press(*window, u"Stop Asking"_s);
  EXPECT_TRUE(service.asked.constLast()->isOver) << "the question is dropped";
  EXPECT_FALSE(says(*window, u"Asking one.example…"_s));

  press(*window, u"Try It"_s);
  service.fail(DomainError::invalid(u"The service did not respond within 20 seconds."_s));
  EXPECT_TRUE(says(*window, u"The service did not respond within 20 seconds."_s));
  press(*window, u"Try It"_s);
  service.answer(QJsonObject{{u"stats"_s, QJsonObject{{u"today"_s, 3184}, {u"unit"_s, u"a\u202Eb"_s}}}});
  EXPECT_TRUE(says(*window, u"The tile shows “3184” once you save."_s));
  write(*window, u"Suffix"_s, u"!"_s);
  EXPECT_TRUE(says(*window, u"The tile shows “3184!” once you save."_s));
  write(*window, u"Field"_s, u"stats.gone"_s);
  EXPECT_TRUE(says(*window, u"Metric field 'stats.gone' was not returned."_s));
  EXPECT_EQ(service.asked.size(), 3) << "without another question";
  // By keyboard: down to the last field, which becomes the one to show.
  auto* tree = window->findChild<AnswerTree*>();
  ASSERT_TRUE(tree && tree->isVisible());
  tree->setFocus(Qt::TabFocusReason);
  QTest::keyClick(tree, Qt::Key_End);
  QTest::keyClick(tree, Qt::Key_Return);
  EXPECT_EQ(named<QLineEdit>(*window, u"Field"_s)->text(), u"stats.unit"_s);
  EXPECT_TRUE(says(*window, u"The tile shows “ab!” once you save."_s));
  EXPECT_TRUE(window->isVisible()) << "this Return was for the tree";
  write(*window, u"Address"_s, u"https://two.example"_s);
  EXPECT_FALSE(tree->isVisible()) << "the answer of another";

  // What comes when the form is gone is for nobody.
  press(*window, u"Try It"_s);
  const auto gone = fixture_.editor(connected().id);
  service.isDeaf = true;
  press(*gone, u"Try It"_s);
  gone->close();
  service.answer(QJsonObject{{u"a"_s, 1}});
  EXPECT_FALSE(says(*gone, u"Select a numeric or text field to display."_s));
  const auto question = service.asked.at(service.asked.size() - 2);
  question->end();
}

TEST_F(ConnectionFormTest, AServiceAsksForWhatItNeedsAndGoesToItsOwnAddress) {
  const DockWidget widget = fixture_.add(u"analyticsPlausible"_s, {});
  const auto window = fixture_.editor(widget.id);
  EXPECT_TRUE(says(*window, u"Unique visitors of a site in the last seven days."_s));
  EXPECT_FALSE(named<QLineEdit>(*window, u"Address"_s)->isVisible()) << "what is connected to nothing begins there";
  press(*window, u"Open plausible.io"_s);
  EXPECT_TRUE(fixture_.commands.asked.contains(u"https://plausible.io/settings/api-keys"_s));
  write(*window, u"Credential"_s, u"secret"_s);
  EXPECT_FALSE(window->save());
  EXPECT_TRUE(says(*window, u"Enter your Plausible site domain."_s));
  write(*window, u"Site domain"_s, u"example.com"_s);
  // What was written about an address is not there any more, and is not stored.
  EXPECT_TRUE(window->save() || waitFor([&] { return !window->isVisible(); }));
  const QMap<QString, QString> stored = fixture_.find(widget.id)->options;
  EXPECT_EQ(stored.value(option::connectionMode), value::native);
  EXPECT_EQ(stored.value(option::endpoint), u"https://plausible.io"_s);
  EXPECT_EQ(stored.value(option::site), u"example.com"_s);
  EXPECT_EQ(services().kept.value(Keychain::account(*fixture_.find(widget.id))), u"secret"_s);

  // One with an address of its own keeps that.
  const auto own =
      fixture_.editor(fixture_.add(u"analyticsPlausible"_s, {{option::endpoint, u"https://one.example"_s}}).id);
  EXPECT_TRUE(named<QLineEdit>(*own, u"Address"_s)->isVisible());
  EXPECT_FALSE(named<QLineEdit>(*own, u"Site domain"_s)->isVisible());
}

TEST_F(ConnectionFormTest, ThePageOfTheTokenIsThatOfTheServerInTheForm) {
  const auto window = fixture_.editor(fixture_.add(u"homeAssistant"_s, {{option::connectionMode, value::native}}).id);
  const auto offered = [&window] {
    QStringList pages;
    for (const auto* button : window->findChildren<Button*>())
      if (button->isVisible() && button->text().startsWith(u"Open "_s)) pages << button->text();
    return pages.join(u'|');
  };
  EXPECT_EQ(offered(), QString()) << "no server is known";
  write(*window, u"Server address"_s, u"https://home.example:8123/"_s);
  EXPECT_EQ(offered(), u"Open home.example"_s);
  press(*window, u"Open home.example"_s);
  EXPECT_TRUE(fixture_.commands.asked.contains(u"https://home.example:8123/profile/security"_s))
      << fixture_.commands.asked.join(u'|').toStdString();
  write(*window, u"Server address"_s, u"http://home.example"_s);
  EXPECT_EQ(offered(), QString());
}

TEST_F(ConnectionFormTest, WhatAServiceRefusesIsSaidUnderItsLine) {
  const struct {
    const char16_t* kind;
    QMap<QString, QString> options;
    const char16_t* label;
    const char16_t* entered;
    const char16_t* sentence;
  } cases[] = {
      {u"homeAssistant", {}, u"Server address", u"http://home", u"Enter a valid HTTPS service address."},
      {u"homeAssistant",
       {{option::server, u"https://home.example"_s}},
       u"Entity ID",
       u"light",
       u"Enter an entity ID such as sensor.temperature."},
      {u"analyticsGitHub",
       {{option::field, u"forks"_s}},
       u"Repository",
       u"one",
       u"Enter a repository as owner/repository."},
      {u"revenuePolar", {}, u"Currency", u"euro", u"Enter a three-letter currency code."},
      {u"shopifyRevenue",
       {},
       u"Store domain",
       u"a.example",
       u"Enter the store’s exact Shopify domain, such as your-store.myshopify.com."},
      {u"cursorPersonalUsage", {}, u"Credential", u"a;b", u"Enter only the Cursor session token value."},
      {u"grokUsage", {}, u"Credential", u"a b", u"Add a valid Grok CLI access token in Connection Settings."},
  };
  for (const auto& each : cases) {
    QMap<QString, QString> options = each.options;
    options.insert(option::connectionMode, value::native);
    const auto window = fixture_.editor(fixture_.add(QString::fromUtf16(each.kind), options).id);
    const QString label = QString::fromUtf16(each.label);
    write(*window, label, QString::fromUtf16(each.entered));
    EXPECT_FALSE(window->save());
    QString fault;
    for (const FormRow* row : window->findChildren<FormRow*>())
      if (row->isVisible() && row->label() == label) fault = row->fault();
    EXPECT_EQ(fault, QString::fromUtf16(each.sentence));
  }
  EXPECT_TRUE(services().kept.isEmpty());
}

TEST_F(ConnectionFormTest, SigningInStoresTheFormAndLeavesItOpen) {
  const DockWidget widget = fixture_.add(u"dropbox"_s, {});
  const auto window = fixture_.editor(widget.id);
  EXPECT_TRUE(says(*window, u"What a folder of your Dropbox holds."_s));
  EXPECT_EQ(named<QLineEdit>(*window, u"Redirect address"_s)->text(), u"http://127.0.0.1:43879/callback"_s);
  press(*window, u"Copy the Redirect Address"_s);
  EXPECT_TRUE(fixture_.commands.asked.contains(u"copy http://127.0.0.1:43879/callback"_s))
      << fixture_.commands.asked.join(u'|').toStdString();
  press(*window, u"Sign In"_s);
  EXPECT_TRUE(says(*window, u"Enter the client ID of your app."_s));
  write(*window, u"Client ID"_s, u" mine "_s);
  EXPECT_EQ(named<QLineEdit>(*window, u"Client secret"_s)->echoMode(), QLineEdit::Password);
  write(*window, u"Folder"_s, u"Projects"_s);
  press(*window, u"Sign In"_s);
  EXPECT_TRUE(says(*window, u"A Dropbox folder path starts with /, or is empty for root."_s));
  EXPECT_TRUE(services().signIns.isEmpty());
  write(*window, u"Folder"_s, u"/Projects"_s);

  // By Return in what is entered. What comes is said, whatever it is.
  auto* client = named<QLineEdit>(*window, u"Client ID"_s);
  const auto begin = [&] {
    QTest::keyClick(client, Qt::Key_Return);
    EXPECT_TRUE(says(*window, u"Complete sign-in in your browser."_s));
    EXPECT_FALSE(button(*window, u"Sign In"_s));
    EXPECT_FALSE(client->isEnabled());
  };
  begin();
  press(*window, u"Cancel Sign-In"_s);
  EXPECT_TRUE(says(*window, u"Sign-in cancelled."_s));
  EXPECT_TRUE(services().browser.asked.constLast()->isOver);
  begin();
  services().browser.fail(DomainError::invalid(u"Sign-in was declined or cancelled."_s));
  EXPECT_TRUE(says(*window, u"Sign-in was declined or cancelled."_s));
  EXPECT_EQ(fixture_.find(widget.id)->options, widget.options) << "nothing is stored before";
  begin();
  for (const QLabel* label : window->findChildren<QLabel*>()) EXPECT_FALSE(label->text().contains(u"hidden"_s));
  services().browser.answer({});
  EXPECT_TRUE(says(*window, u"Connected. Offline access is saved in Keychain."_s));
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(services().signIns.constLast(), u"mine "_s);
  QMap<QString, QString> stored = fixture_.find(widget.id)->options;
  EXPECT_EQ(stored.value(option::connectionMode), value::native);
  EXPECT_EQ(stored.value(option::endpoint), u"https://api.dropboxapi.com"_s);
  EXPECT_EQ(stored.value(option::dropboxPath), u"/Projects"_s);
  EXPECT_TRUE(says(*window, kKept));

  // The next time the client is known, and its secret too.
  const auto again = fixture_.editor(widget.id);
  EXPECT_EQ(named<QLineEdit>(*again, u"Client ID"_s)->text(), u"mine"_s);
  press(*again, u"Sign In Again"_s);
  EXPECT_EQ(services().signIns.constLast(), u"mine kept"_s);
  services().browser.answer(u"The keyring could not save the credential (-2)."_s);
  EXPECT_TRUE(says(*again, u"The keyring could not save the credential (-2)."_s));
  services().failure = u"The keyring is not available (-2)."_s;
  press(*again, u"Sign Out"_s);
  EXPECT_TRUE(says(*again, services().failure));
  services().failure.clear();
  press(*again, u"Sign Out"_s);
  EXPECT_TRUE(says(*again, u"Signed out."_s));
  EXPECT_TRUE(services().kept.isEmpty());
  EXPECT_FALSE(button(*again, u"Sign Out"_s));

  // What comes when the form is gone is for nobody.
  services().browser.isDeaf = true;
  press(*again, u"Sign In"_s);
  again->close();
  services().browser.answer({});
  EXPECT_FALSE(says(*again, u"Connected. Offline access is saved in Keychain."_s));
}

TEST_F(ConnectionFormTest, WhereNoAddressIsRegisteredNoneIsShown) {
  const auto window = fixture_.editor(fixture_.add(u"gmailLatest"_s, {}).id);
  EXPECT_TRUE(named<QLineEdit>(*window, u"Client ID"_s)->isVisible());
  EXPECT_FALSE(named<QLineEdit>(*window, u"Redirect address"_s));
  press(*window, u"Address"_s);
  EXPECT_FALSE(named<QLineEdit>(*window, u"Client ID"_s)->isVisible());
}

TEST(AnswerModelTest, RowsAreMadeAsTheyAreOpenedAndFewOfMany) {
  QJsonArray many;
  for (int i = 0; i < 5000; ++i) many.append(i);
  QJsonObject inner{{u"total"_s, 1.5}, {u"none"_s, QJsonValue::Null}, {u"on"_s, true}, {u"a.b"_s, 1}, {QString(), 1}};
  inner.insert(u"x\u202Ey"_s, 1);
  inner.insert(u"long"_s, QString(1'000'000, u'<'));
  AnswerModel model;
  model.setAnswer(QJsonObject{{u"list"_s, many}, {u"data"_s, QJsonArray{inner}}});
  struct Case {
    QString path, value;
    bool canShow;
  };
  for (const Case& one :
       {Case{u"list"_s, u"[ 5000 ]"_s, true}, Case{u"data"_s, u"[ 1 ]"_s, true}, Case{u"data.0"_s, u"{ 7 }"_s, false},
        Case{u"data.0.total"_s, u"1.5"_s, true}, Case{u"data.0.none"_s, u"null"_s, false},
        Case{u"data.0.on"_s, u"true"_s, false}, Case{u"list.199"_s, u"199"_s, true}}) {
    SCOPED_TRACE(one.path.toStdString());
    const QModelIndex found = model.find(one.path);
    ASSERT_TRUE(found.isValid());
    EXPECT_EQ(model.path(found), one.path);
    EXPECT_EQ(model.value(found), one.value);
    EXPECT_EQ(model.canShow(found), one.canShow);
    EXPECT_EQ(model.parent(found), model.find(one.path.section(u'.', 0, -2)));
  }
  EXPECT_FALSE(model.find(u"list.200"_s).isValid());
  const QModelIndex list = model.find(u"list"_s);
  EXPECT_EQ(model.rowCount(list), AnswerModel::kMostChildren + 1);
  EXPECT_EQ(model.name(model.index(AnswerModel::kMostChildren, 0, list)), u"and 4800 more"_s);
  const QModelIndex data = model.find(u"data.0"_s);
  int unnamed = 0;
  for (int row = 0; row < model.rowCount(data); ++row) {
    const QModelIndex at = model.index(row, 0, data);
    if (model.sort(at) == AnswerModel::Sort::Number && !model.canShow(at)) ++unnamed;
    EXPECT_LE(model.value(at).size(), 400) << "cut";
    EXPECT_FALSE(model.name(at).contains(QChar(0x202E)));
  }
  EXPECT_EQ(unnamed, 3) << "no path leads to a name with a dot, without letters or with what turns the writing";
  // What was never opened is not there.
  model.setAnswer(QJsonObject{{u"list"_s, many}});
  EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
  EXPECT_TRUE(model.canFetchMore(model.index(0, 0)));
}

/// A file or a folder was chosen in the window that the form opened for that.
void chooseIn(QWidget& window, const QString& path) {
  auto* dialog = window.findChild<QFileDialog*>();
  ASSERT_TRUE(dialog);
  Q_EMIT dialog->fileSelected(path);
  delete dialog;
}

TEST_F(ConnectionFormTest, TheHooksOfClaudeCodeComeAndGoWithTheirWidget) {
  const QTemporaryDir folder;
  const DockWidget widget = fixture_.add(u"analyticsClaudeCodeStatus"_s, {{option::city, u"kept"_s}});
  const auto window = fixture_.editor(widget.id);
  EXPECT_TRUE(says(*window,
                   u"Install local hooks to show thinking, tool use and permission requests. Tarnwick records "
                   "only a session identifier, state, tool name and time."_s));
  EXPECT_FALSE(button(*window, u"Remove Tarnwick Hooks"_s));
  EXPECT_FALSE(named<QLineEdit>(*window, u"Address"_s)->isVisible());
  writeFile(folder.filePath(u"settings.json"_s), "{\"hooks\": []}");
  press(*window, u"Install Activity Hooks…"_s);
  chooseIn(*window, folder.path());
  const auto comesToSay = [](QWidget& form, const QString& sentence) {
    return waitFor([&] { return says(form, sentence); });
  };
  EXPECT_TRUE(comesToSay(*window, u"Claude settings has an unsupported hooks value; no settings were changed."_s));
  EXPECT_EQ(fixture_.find(widget.id)->options, widget.options);

  writeFile(folder.filePath(u"settings.json"_s), "{\"model\": \"x\"}");
  press(*window, u"Install Activity Hooks…"_s);
  chooseIn(*window, folder.path());
  EXPECT_FALSE(button(*window, u"Install Activity Hooks…"_s)->isEnabled()) << "one change at a time";
  EXPECT_TRUE(comesToSay(*window, u"Hooks installed. Start a new Claude Code session."_s));
  const QMap<QString, QString> stored = fixture_.find(widget.id)->options;
  EXPECT_EQ(stored.value(option::connectionMode), value::claudeActivity);
  EXPECT_EQ(stored.value(option::claudeSettings), folder.filePath(u"settings.json"_s));
  EXPECT_TRUE(stored.value(option::claudeHookExecutable).endsWith(u"/tarnwick-claude-hook"_s));
  EXPECT_TRUE(stored.value(option::historyDirectory).endsWith(u"/ClaudeActivity"_s));
  QFile settings(folder.filePath(u"settings.json"_s));
  ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
  EXPECT_TRUE(settings.readAll().contains("--claude-hook"));
  settings.close();

  const auto again = fixture_.editor(widget.id);
  press(*again, u"Remove Tarnwick Hooks"_s);
  EXPECT_TRUE(comesToSay(*again, u"Tarnwick’s hooks were removed. Other hooks were preserved."_s));
  EXPECT_EQ(fixture_.find(widget.id)->options, widget.options);
  ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
  EXPECT_EQ(settings.readAll(), "{\n  \"model\": \"x\"\n}\n");

  // A form that is closed at once leaves no hooks that their widget does not know.
  auto brief = fixture_.editor(widget.id);
  press(*brief, u"Install Activity Hooks…"_s);
  chooseIn(*brief, folder.path());
  brief.reset();
  EXPECT_EQ(fixture_.find(widget.id)->options, stored);
}

TEST_F(ConnectionFormTest, AHistoryOnThisComputerIsChosenByItsProgram) {
  const DockWidget widget = fixture_.add(u"geminiAPIUsage"_s, {});
  const auto window = fixture_.editor(widget.id);
  auto* source = named<Segments>(*window, u"History source"_s);
  ASSERT_TRUE(source);
  EXPECT_TRUE(button(*window, u"Choose Gemini History…"_s));
  Q_EMIT source->chosenChanged(0);
  EXPECT_FALSE(window->save());
  EXPECT_TRUE(says(*window, u"Choose a local Gemini CLI chat directory."_s));
  source->setChosen(1);
  Q_EMIT source->chosenChanged(1);
  EXPECT_TRUE(says(*window,
                   u"Choose your OpenCode SQLite database. Gemini model usage is read locally; conversation bodies "
                   "are not selected."_s));
  press(*window, u"Choose Usage Database…"_s);
  chooseIn(*window, u"/srv/opencode.db"_s);
  EXPECT_TRUE(window->save());
  EXPECT_EQ(fixture_.find(widget.id)->options,
            (QMap<QString, QString>{{option::connectionMode, value::geminiHistory},
                                    {option::historySource, value::openCode},
                                    {option::historyDirectory, u"/srv/opencode.db"_s}}));
  const auto again = fixture_.editor(widget.id);
  EXPECT_EQ(named<Segments>(*again, u"History source"_s)->chosen(), 1);
  EXPECT_TRUE(again->save());
}

}  // namespace
}  // namespace tarnwick::test
