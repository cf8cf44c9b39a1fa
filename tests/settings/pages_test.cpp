#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "config/CalendarFolders.h"
#include "settings/SettingsFixture.h"
#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"
#include "views/controls/Slider.h"
#include "views/controls/Switch.h"
#include "views/settings/OrderList.h"
#include "views/settings/TimeField.h"
#include "views/window/Credits.h"
#include "views/window/DropDown.h"
#include "views/window/LayoutCard.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class SettingsPagesTest : public testing::Test, public SettingsFixture {
 protected:
  void click(const char* label) {
    for (QPushButton* button : window().findChildren<QPushButton*>())
      if (button->isVisible() && button->accessibleName() + button->text() == QString::fromUtf8(label))
        return button->click();
    ADD_FAILURE() << "no button " << label;
  }
};

TEST_F(SettingsPagesTest, ALayoutShowsTheRowsThatItUses) {
  struct Case {
    DockLayout layout;
    bool delays, trigger, edge, alignment, reserve;
  };
  const Case cases[] = {
      {DockLayout::Swap, false, true, false, true, false},
      {DockLayout::RevealBottom, true, true, false, true, false},
      {DockLayout::Fixed, false, false, true, true, true},
      {DockLayout::RevealTop, true, true, false, true, false},
      {DockLayout::Replace, false, false, false, true, true},
      {DockLayout::ReplaceAutoHide, true, true, false, true, false},
      {DockLayout::Floating, false, false, false, false, false},
  };
  turnTo("layout");
  for (const Case& each : cases) {
    SCOPED_TRACE(qPrintable(label(each.layout)));
    for (LayoutCard* card : window().findChildren<LayoutCard*>())
      if (card->layout() == each.layout) card->click();
    QCoreApplication::processEvents();
    EXPECT_EQ(config().layout, each.layout);
    EXPECT_EQ(sees("Show delay"), each.delays);
    EXPECT_EQ(sees("Hide delay"), each.delays);
    EXPECT_EQ(sees("Hide only when a window would be covered"), each.delays);
    EXPECT_EQ(sees("Show the dock when something needs you"), each.delays);
    EXPECT_EQ(sees("Trigger area"), each.trigger);
    EXPECT_EQ(sees("Screen edge"), each.edge);
    EXPECT_EQ(sees("Alignment"), each.alignment);
    EXPECT_EQ(sees("Distance from the edge"), each.alignment);
    EXPECT_EQ(sees("Reserve Dock Space"), each.reserve);
    EXPECT_TRUE(sees("When widgets don't fit"));
  }
}

TEST_F(SettingsPagesTest, TheTriggerAreaSaysWhereItIsOnePixelWhateverIsSet) {
  abilities.feelsOnePixelOnly = true;
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::RevealBottom; });
  turnTo("layout");
  const auto* slider = control<Slider>("Trigger area");
  ASSERT_TRUE(slider);
  EXPECT_EQ(slider->accessibleDescription(), u"On this desktop the pointer must reach the last pixel of the screen."_s);
}

TEST_F(SettingsPagesTest, TheRowOfTheAppsKeysSaysWhereTheirNumbersAreNotShown) {
  abilities.appNumbers = Capability::no(u"They show no numbers."_s);
  turnTo("shortcuts");
  const auto* row = control<Switch>("Apps by number");
  ASSERT_TRUE(row);
  EXPECT_TRUE(row->isEnabled()) << "the keys work all the same";
  EXPECT_TRUE(row->accessibleDescription().endsWith(u" They show no numbers."));
}

TEST_F(SettingsPagesTest, SlidersGoOverTheirWholeRangeAndStoreAtOnce) {
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::RevealBottom; });
  struct Case {
    const char* section;
    const char* name;
    double least, most;
    std::function<double()> stored;
  };
  const Case cases[] = {
      {"appearance", "Dock scale", 0.5, 1.6, [this] { return config().scale; }},
      {"appearance", "Widget spacing", 0, 24, [this] { return config().spacing; }},
      {"layout", "Distance from the edge", 0, 180, [this] { return config().edgeGap; }},
      {"layout", "Show delay", 0, 3, [this] { return options().revealShowDelay; }},
      {"layout", "Hide delay", 0, 5, [this] { return options().revealHideDelay; }},
      {"layout", "Trigger area", 1, 30, [this] { return options().triggerSize; }},
  };
  for (const Case& each : cases) {
    turnTo(each.section);
    auto* slider = control<Slider>(each.name);
    ASSERT_TRUE(slider);
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_NEAR(each.stored(), each.most, 1e-9) << each.name;
    QTest::keyClick(slider, Qt::Key_Home);
    EXPECT_NEAR(each.stored(), each.least, 1e-9) << each.name;
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_GT(each.stored(), each.least) << each.name;
    DockConfiguration copy = config();
    EXPECT_NO_THROW(copy.validate());
  }
}

TEST_F(SettingsPagesTest, WithoutATrayTheIconIsSaidToHaveNoPlace) {
  abilities.tray = Capability::no(u"There is none."_s);
  turnTo("general");
  auto* icon = control<Switch>("Show menu bar icon");
  EXPECT_FALSE(icon->isEnabled());
  EXPECT_EQ(icon->accessibleDescription(), u"There is none."_s);
  EXPECT_FALSE(sees("Classic menu"));
  abilities.tray = Capability::yes();
  store().edit([](DockConfiguration& config) { config.scale = 1.1; });
  EXPECT_TRUE(icon->isEnabled());
  EXPECT_TRUE(sees("Classic menu"));
}

TEST_F(SettingsPagesTest, APictureBringsItsRowsAndGoesWithThem) {
  turnTo("appearance");
  EXPECT_FALSE(sees("Picture blur"));
  store().edit([](DockConfiguration& config) { config.desktop.backgroundImage = u"kept"_s; });
  EXPECT_TRUE(sees("Picture blur"));
  EXPECT_TRUE(sees("Picture dimming"));
  click("Remove");
  EXPECT_TRUE(options().backgroundImage.isEmpty());
  EXPECT_FALSE(sees("Picture dimming"));
}

TEST_F(SettingsPagesTest, AControlShowsWhatElseChangesTheSettings) {
  turnTo("appearance");
  auto* fills = control<Switch>("Widget tile fills");
  auto* scale = control<Slider>("Dock scale");
  ASSERT_TRUE(fills && scale);
  const int before = scale->value();
  turnTo("about");  // Also while its page is not seen.
  store().edit([](DockConfiguration& config) {
    config.tiles = false;
    config.scale = 1.4;
  });
  turnTo("appearance");
  EXPECT_FALSE(fills->isChecked());
  EXPECT_NE(scale->value(), before);
  EXPECT_EQ(config().scale, 1.4);  // Showing is no change.
}

TEST_F(SettingsPagesTest, TheStyleMayFollowLightAndDark) {
  turnTo("appearance");
  auto* follows = control<Switch>("Follow light and dark");
  ASSERT_TRUE(follows);
  EXPECT_FALSE(follows->isChecked() || sees("Light style"));
  follows->click();
  ASSERT_TRUE(sees("Light style") && sees("Dark style"));
  auto* light = control<DropDown>("Light style");
  EXPECT_EQ(light->chosenValue(), u"lightGlass"_s);
  Q_EMIT light->valueChosen(u"white"_s);
  EXPECT_EQ(config().desk().lightStyle, u"white"_s);
  EXPECT_EQ(config().style, DockConfiguration().style) << "the style that was chosen stays";
  follows->click();
  EXPECT_FALSE(config().desk().styleFollows || sees("Dark style"));
}

TEST_F(SettingsPagesTest, WidgetsAreMovedEditedAndRemovedByKeys) {
  turnTo("widgets");
  auto* list = control<OrderList>("Widgets");
  ASSERT_TRUE(list);
  const QList<DockWidget> before = config().profiles[0].widgets;
  list->choose(before[1].id.toString());
  QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(config().profiles[0].widgets[2], before[1]);
  EXPECT_EQ(list->chosen(), before[1].id.toString());
  QTest::keyClick(list, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(config().profiles[0].widgets, before);
  QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(commands.asked.last(), u"edit "_s + before[1].id.toString());
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(config().profiles[0].widgets.size(), before.size() - 1);
  // A row that is dropped between two others.
  list->model()->moveRow({}, 0, {}, 3);
  QCoreApplication::processEvents();
  EXPECT_EQ(config().profiles[0].widgets[2], before[0]);
}

TEST_F(SettingsPagesTest, ALongListFadesWhereItGoesOn) {
  turnTo("widgets");
  auto* list = control<OrderList>("Widgets");
  ASSERT_TRUE(list);
  // What lies at an edge of the list that fades is its ground, whatever row is cut there.
  const auto fades = [list](bool atTop) {
    list->ensurePolished();
    const QImage picture = list->viewport()->grab().toImage();
    const int y = atTop ? 0 : picture.height() - 1;
    const QColor ground = lookOf(*list).palette.panel.bodyTop;
    const auto isNear = [](int a, int b) { return std::abs(a - b) <= 10; };
    for (int x = 0; x < picture.width(); ++x) {
      const QColor seen = picture.pixelColor(x, y);
      if (!isNear(seen.red(), ground.red()) || !isNear(seen.green(), ground.green()) ||
          !isNear(seen.blue(), ground.blue()))
        return false;
    }
    return true;
  };
  const int usual = list->height();
  store().edit([](DockConfiguration& config) {
    for (int i = 0; i < 12; ++i) config.profiles[0].widgets.append({QUuid::createUuid(), u"dayNumber"_s, {}, {}});
  });
  QCoreApplication::processEvents();
  EXPECT_GT(list->height(), usual);
  EXPECT_NE(list->height() % list->sizeHintForRow(0), 0) << "half a row says that more follow";
  list->choose(list->items().first().id);
  list->verticalScrollBar()->setValue(0);
  EXPECT_TRUE(fades(false));
  list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() / 2);
  EXPECT_TRUE(fades(true) && fades(false));
  list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());
  EXPECT_TRUE(fades(true));
  EXPECT_EQ(list->items()[1].caption, Catalog::sectionOf(Catalog::find(config().profiles[0].widgets[1].kind)));
}

TEST_F(SettingsPagesTest, AScreenReaderMovesOpensAndRemovesRows) {
  turnTo("widgets");
  auto* list = control<OrderList>("Widgets");
  ASSERT_TRUE(list);
  const QList<DockWidget> before = config().profiles[0].widgets;
  const auto act = [list](int row, const QString& action) {
    QAccessible::queryAccessibleInterface(list)->child(row)->actionInterface()->doAction(action);
    QCoreApplication::processEvents();
  };
  act(1, u"Move Down"_s);
  EXPECT_EQ(config().profiles[0].widgets[2], before[1]);
  act(2, u"Move Up"_s);
  EXPECT_EQ(config().profiles[0].widgets, before);
  act(0, u"Move Up"_s);
  EXPECT_EQ(config().profiles[0].widgets, before);
  act(1, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(commands.asked.last(), u"edit "_s + before[1].id.toString());
  act(1, u"Remove"_s);
  EXPECT_EQ(config().profiles[0].widgets.size(), before.size() - 1);
  EXPECT_FALSE(config().profiles[0].widgets.contains(before[1]));
}

TEST_F(SettingsPagesTest, TheLibraryIsOpenedForTheProfileThatIsListed) {
  turnTo("widgets");
  auto* choice = control<DropDown>("Profile");
  ASSERT_TRUE(choice);
  choice->setCurrentIndex(1);
  Q_EMIT choice->activated(1);
  click("Add Widgets…");
  EXPECT_EQ(commands.asked.last(), u"library "_s + config().profiles[1].id.toString());
}

TEST_F(SettingsPagesTest, FoldersOfCalendarsAreListedAndLeft) {
  turnTo("connections");
  EXPECT_TRUE(sees("Calendar folders"));  // The way to the first one.
  store().edit([](DockConfiguration& config) { CalendarFolders::add(config, u"/home/me/calendars"_s); });
  auto* list = control<OrderList>("Calendar folders");
  ASSERT_TRUE(list);
  ASSERT_EQ(list->items().size(), 1);
  list->choose(list->items().first().id);
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_TRUE(CalendarFolders::of(config()).isEmpty());
}

TEST_F(SettingsPagesTest, ProfilesAreMadeRenamedAndDeleted) {
  turnTo("profiles");
  auto* list = control<OrderList>("Profiles");
  ASSERT_TRUE(list);
  const QUuid work = config().profiles[1].id;
  list->model()->setData(list->model()->index(1, 0), u"Office"_s);
  QCoreApplication::processEvents();
  EXPECT_EQ(config().profiles[1].name, u"Office"_s);
  list->model()->setData(list->model()->index(1, 0), u"  "_s);  // Which no profile may be called.
  QCoreApplication::processEvents();
  EXPECT_EQ(config().profiles[1].name, u"Office"_s);

  list->choose(work.toString());
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(config().activeProfileID, work);
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(config().profiles.size(), 2);  // It asks first.
  click("Delete");
  EXPECT_EQ(config().profiles.size(), 1);
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(config().profiles.size(), 1);
  EXPECT_FALSE(store().error().isEmpty());
  click("New Profile");
  EXPECT_EQ(config().profiles.size(), 2);
}

TEST_F(SettingsPagesTest, ARuleIsMadeAndSaysWhatIsWrongWithIt) {
  turnTo("profiles");
  click("Add Rule");
  QCoreApplication::processEvents();
  ASSERT_EQ(options().profileRules.size(), 1);
  EXPECT_EQ(options().profileRules[0].days, (QList<int>{2, 3, 4, 5, 6}));
  EXPECT_EQ(faults(), QStringList());

  auto* from = control<TimeField>("From");
  auto* to = control<TimeField>("To");
  ASSERT_TRUE(from && to);
  from->setFocus();
  from->selectAll();
  QTest::keyClicks(from, u"22:30"_s);
  EXPECT_EQ(options().profileRules[0].startMinutes, 22 * 60 + 30);
  from->selectAll();
  QTest::keyClicks(from, u"25:00"_s);
  QTest::keyClick(from, Qt::Key_Tab);  // What is wrong is mended by whoever wrote it.
  store().edit([](DockConfiguration& config) { config.scale = 1.1; });
  EXPECT_EQ(from->text(), u"25:00"_s);
  EXPECT_EQ(faults().size(), 1);
  EXPECT_EQ(options().profileRules[0].startMinutes, 22 * 60 + 30);
  from->setFocus();
  QTest::keyClick(from, Qt::Key_Escape);
  EXPECT_EQ(from->text(), u"22:30"_s);
  EXPECT_EQ(faults(), QStringList());
  from->selectAll();
  QTest::keyClicks(from, u"17:00"_s);
  EXPECT_EQ(faults().size(), 1);  // It ends when it begins.
  QTest::keyClick(to, Qt::Key_PageDown);
  EXPECT_EQ(options().profileRules[0].endMinutes, 16 * 60);
  EXPECT_EQ(faults(), QStringList());

  for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday"}) control<Button>(day)->click();
  EXPECT_TRUE(options().profileRules[0].days.isEmpty());
  EXPECT_EQ(faults().size(), 1);
  control<Button>("Sunday")->click();
  EXPECT_EQ(options().profileRules[0].days, QList<int>{1});

  QTest::keyClick(control<OrderList>("Rules"), Qt::Key_Delete);
  EXPECT_TRUE(options().profileRules.isEmpty());
}

TEST_F(SettingsPagesTest, ADisplayIsPinnedAndFollowsAgain) {
  turnTo("profiles");
  auto* pin = control<DropDown>("Right Display");
  ASSERT_TRUE(pin);
  EXPECT_EQ(pin->currentText(), u"Follow active"_s);
  pin->setCurrentIndex(2);
  Q_EMIT pin->activated(2);
  EXPECT_TRUE(store().isPinned(u"two"_s));
  EXPECT_EQ(store().profileIndex(u"two"_s), 1);
  pin->setCurrentIndex(0);
  Q_EMIT pin->activated(0);
  EXPECT_FALSE(store().isPinned(u"two"_s));
}

TEST(Credits, TellTheVersionsOfWhatSaysThem) {
  const QRegularExpression version(u"^\\d+\\.\\d+\\.\\d+$"_s);
  for (const Credit& credit : allCredits()) {
    const bool tells = QStringList{u"Qt"_s, u"LZ4"_s, u"GLib"_s, u"PulseAudio"_s}.contains(credit.name);
    EXPECT_TRUE(!tells || version.match(credit.version).hasMatch()) << credit.words().toStdString();
  }
}

TEST_F(SettingsPagesTest, TheClipboardIsRecordedWhileAWidgetStandsOnADock) {
  turnTo("clipboard");
  EXPECT_TRUE(sees("Clipboard widget"));
  click("Add Clipboard Widget");
  EXPECT_EQ(commands.asked, QStringList{u"add clipboard on "_s});
  store().edit([](DockConfiguration& config) {
    config.profiles[0].widgets << DockWidget{QUuid::createUuid(), u"clipboard"_s, {}, {}};
  });
  EXPECT_FALSE(sees("Clipboard widget"));
  control<Switch>("Clipboard history")->click();
  EXPECT_TRUE(config().clipboardEnabled);
  store().edit([](DockConfiguration& config) { config.activeProfileID = config.profiles[1].id; });
  EXPECT_TRUE(sees("Clipboard widget")) << "no dock shows the profile that has one";
}

TEST_F(SettingsPagesTest, AppsAreListedOfWhichNothingIsRecorded) {
  DesktopEntry vault;
  vault.id = u"org.example.Vault"_s;
  vault.name = u"Vault"_s;
  DesktopEntry writer;
  writer.id = u"org.example.Writer"_s;
  writer.name = u"Writer"_s;
  services.apps.setFixed(std::make_shared<AppIndex>(AppEnvironment(), QList{vault, writer},
                                                    QHash<QString, DesktopEntry>(), MimeDefaults()));
  turnTo("clipboard");
  auto* offered = control<DropDown>("App");
  ASSERT_TRUE(offered);
  const auto words = [offered] {
    QStringList all;
    for (int i = 0; i < offered->count(); ++i) all << offered->itemText(i);
    return all;
  };
  EXPECT_EQ(words(), (QStringList{u"Vault"_s, u"Writer"_s}));
  QTest::keyClick(offered, Qt::Key_Down);
  QTest::keyClick(offered, Qt::Key_Up);
  EXPECT_EQ(config().desk().neverRecord, QStringList()) << "to look through them adds none";
  click("Add");
  EXPECT_EQ(config().desk().neverRecord, QStringList{vault.id});
  EXPECT_EQ(words(), QStringList{u"Writer"_s}) << "none can be listed twice";
  store().edit([](DockConfiguration& config) {
    DeskOptions desk = config.desk();
    desk.neverRecord << u"gone"_s;
    config.setDesk(desk);
  });
  auto* list = control<OrderList>("Listed apps");
  ASSERT_TRUE(list && list->items().size() == 2);
  EXPECT_EQ(list->items()[0].title, u"Vault"_s);
  EXPECT_EQ(list->items()[1].title, u"gone"_s) << "one that is not installed stays listed";
  list->runItemAction(list->model()->index(0, 0), 0);
  EXPECT_EQ(config().desk().neverRecord, QStringList{u"gone"_s});
  undo().undo();
  EXPECT_EQ(config().desk().neverRecord.size(), 2);
}

TEST_F(SettingsPagesTest, TheClipboardPageSaysWhatTheDesktopCannot) {
  const auto says = [this](const QString& sentence) {
    for (const TextLabel* label : window().findChildren<TextLabel*>())
      if (label->isVisible() && label->text().contains(sentence)) return true;
    return false;
  };
  abilities.clipboardOwners = Capability::no(u"Nobody tells who copied."_s);
  abilities.clipboardEnds = Capability::no(u"Nobody tells what ended."_s);
  turnTo("clipboard");
  EXPECT_TRUE(says(u"Nobody tells who copied."_s));
  EXPECT_TRUE(says(u"Nobody tells what ended."_s));
}

TEST_F(SettingsPagesTest, WithoutAClipboardToWatchNothingIsOffered) {
  abilities.clipboard = Capability::no(u"It cannot be watched."_s);
  turnTo("clipboard");
  EXPECT_FALSE(control<Switch>("Clipboard history")->isEnabled());
  EXPECT_FALSE(sees("Clipboard widget"));
  EXPECT_FALSE(sees("Never record from"));
}

}  // namespace
}  // namespace tarnwick::test
