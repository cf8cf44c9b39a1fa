#include <QTest>

#include "settings/SettingsFixture.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/Switch.h"
#include "views/window/DropDown.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class CommandBarPageTest : public testing::Test, public SettingsFixture {
 protected:
  void SetUp() override { turnTo("commandBar"); }
  DropDown* engine() { return control<DropDown>("Search engine"); }
  void chooseEngine(const QString& value) {
    engine()->chooseValue(value);
    Q_EMIT engine()->valueChosen(value);
    QCoreApplication::processEvents();
  }
  /// Changed elsewhere.
  void setStored(const QString& choice) {
    store().edit([&](DockConfiguration& config) {
      DeskOptions desk;
      desk.webSearch = choice;
      config.setDesk(desk);
    });
    QCoreApplication::processEvents();
  }
  void enterAddress(const QString& address) {
    auto* field = control<TextField>("Address of the search");
    ASSERT_TRUE(field);
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, address);
    QTest::keyClick(field, Qt::Key_Return);
  }
};

TEST_F(CommandBarPageTest, EachSourceIsSwitchedByItself) {
  const struct {
    const char* name;
    bool DeskOptions::*option;
  } cases[] = {
      {"Apps", &DeskOptions::barApps},
      {"Open windows", &DeskOptions::barWindows},
      {"Widgets", &DeskOptions::barWidgets},
      {"Symbols", &DeskOptions::barSymbols},
      {"Emoji", &DeskOptions::barEmoji},
      {"Copied texts", &DeskOptions::barClipboard},
      {"Files", &DeskOptions::barFiles},
      {"Settings", &DeskOptions::barSettings},
      {"Web addresses and web search", &DeskOptions::barWeb},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    auto* source = control<Switch>(each.name);
    ASSERT_TRUE(source);
    EXPECT_TRUE(source->isChecked());
    source->click();
    DeskOptions expected;
    expected.*each.option = false;
    EXPECT_EQ(config().desk(), expected);
    source->click();
    EXPECT_FALSE(options().desk) << "defaults are not stored";
  }
}

TEST_F(CommandBarPageTest, WhereWindowsAreNotKnownTheirRowSaysSo) {
  abilities.windows = Capability::no(u"Nobody tells."_s);
  SettingsWindow window(store(), services);
  window.present();
  window.showSection(u"commandBar"_s);
  QStringList said;
  for (Switch* each : window.findChildren<Switch*>())
    if (each->isVisible() && each->accessibleName() == "Open windows"_L1) said << each->accessibleDescription();
  EXPECT_EQ(said, QStringList{u"Nobody tells."_s});
}

TEST_F(CommandBarPageTest, AnEngineIsStoredByItsIdAndTheDefaultNotAtAll) {
  EXPECT_EQ(engine()->chosenValue(), u"duckduckgo"_s);
  EXPECT_FALSE(sees("Address of the search"));
  chooseEngine(u"ecosia"_s);
  EXPECT_EQ(config().desk().webSearch, u"ecosia"_s);
  chooseEngine(u"duckduckgo"_s);
  EXPECT_FALSE(options().desk);
  control<Switch>("Web addresses and web search")->click();
  EXPECT_FALSE(sees("Search engine"));
}

TEST_F(CommandBarPageTest, AnAddressIsStoredOnceItCanBeUsed) {
  setStored(u"ecosia"_s);
  chooseEngine(u"own"_s);
  EXPECT_EQ(config().desk().webSearch, u"ecosia"_s) << "nothing is entered yet";
  for (const QString& bad : {u"example.org"_s, u"http://example.org/?q=%s"_s, u"https://example.org/"_s,
                             u"https://u:p@example.org/?q=%s"_s, u"https://example.org/%s/%s"_s}) {
    SCOPED_TRACE(qPrintable(bad));
    enterAddress(bad);
    EXPECT_EQ(faults().size(), 1);
    EXPECT_EQ(config().desk().webSearch, u"ecosia"_s);
  }
  enterAddress(u"https://example.org/?q=%s"_s);
  EXPECT_EQ(faults(), QStringList());
  EXPECT_EQ(config().desk().webSearch, u"https://example.org/?q=%s"_s);
  EXPECT_EQ(engine()->chosenValue(), u"own"_s);
  undo().undo();
  QCoreApplication::processEvents();
  EXPECT_EQ(config().desk().webSearch, u"ecosia"_s);
  EXPECT_EQ(engine()->chosenValue(), u"ecosia"_s);
  EXPECT_FALSE(sees("Address of the search"));
}

TEST_F(CommandBarPageTest, APageThatWasLeftShowsWhatIsUsed) {
  chooseEngine(u"own"_s);
  enterAddress(u"nothing"_s);
  turnTo("about");
  turnTo("commandBar");
  EXPECT_EQ(engine()->chosenValue(), u"duckduckgo"_s);
  EXPECT_EQ(faults(), QStringList());
  setStored(u"https://example.org/?q=%s"_s);
  EXPECT_EQ(engine()->chosenValue(), u"own"_s);
  EXPECT_EQ(control<TextField>("Address of the search")->text(), u"https://example.org/?q=%s"_s);
  setStored(u"a file may say anything"_s);
  EXPECT_EQ(engine()->chosenValue(), u"duckduckgo"_s);
}

TEST_F(CommandBarPageTest, AHistoryWithoutAWidgetSaysSoAndOffersOne) {
  const auto edit = [this](const std::function<void(DockConfiguration&)>& change) {
    store().edit(change);
    QCoreApplication::processEvents();
  };
  EXPECT_FALSE(sees("Clipboard widget")) << "the history is off";
  edit([](DockConfiguration& config) { config.clipboardEnabled = true; });
  ASSERT_TRUE(sees("Clipboard widget"));
  for (Button* button : window().findChildren<Button*>())
    if (button->isVisible() && button->label() == "Add Clipboard Widget"_L1) button->click();
  EXPECT_EQ(commands.asked, QStringList{u"add clipboard on "_s});
  edit([](DockConfiguration& config) {
    DockWidget widget;
    widget.id = QUuid::createUuid();
    widget.kind = kind::clipboard;
    config.profiles[0].widgets << widget;
  });
  EXPECT_FALSE(sees("Clipboard widget"));
}

}  // namespace
}  // namespace tarnwick::test
