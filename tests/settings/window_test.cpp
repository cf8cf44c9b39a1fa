#include <QAccessible>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "settings/SettingsFixture.h"
#include "support/Wait.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/controls/Segments.h"
#include "views/controls/Slider.h"
#include "views/controls/Switch.h"
#include "views/settings/OrderList.h"
#include "views/settings/StyleCard.h"
#include "views/window/DropDown.h"
#include "views/window/LayoutCard.h"
#include "views/window/SideList.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class SettingsWindowTest : public testing::Test, public SettingsFixture {
 protected:
  SideList& side() { return *window().findChild<SideList*>(); }
  QStringList titles() {
    QStringList found;
    for (int row = 0; row < side().model()->rowCount(); ++row) found << side().model()->index(row, 0).data().toString();
    return found;
  }
  void search(const QString& words) {
    window().findChild<SearchField*>()->setText(words);
    QCoreApplication::processEvents();
  }
};

/// What is in the tab order and says nothing to a screen reader.
QStringList namelessControls(const QWidget& window) {
  QStringList nameless;
  for (QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible() || each->focusPolicy() == Qt::NoFocus || each->focusProxy()) continue;
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(each);
    if (!accessible || accessible->text(QAccessible::Name).isEmpty() || accessible->role() == QAccessible::NoRole)
      nameless << QString::fromLatin1(each->metaObject()->className());
  }
  return nameless;
}

/// What a person cannot read to its end.
QStringList cutWords(const QWidget& window) {
  QStringList cut;
  for (QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible()) continue;
    const auto* label = qobject_cast<const TextLabel*>(each);
    const bool isLine = label && !label->wordWrap();
    if (!isLine && !qobject_cast<const QAbstractButton*>(each) && !qobject_cast<const QComboBox*>(each)) continue;
    if (each->width() < each->sizeHint().width()) cut << each->accessibleName() + (label ? label->text() : QString());
  }
  for (const DockLayout layout : kDockLayouts)
    if (TextLine(label(layout), TextStyle::ListRowStrong).width() > LayoutCard::smallWidth() - 2) cut << label(layout);
  return cut;
}

TEST_F(SettingsWindowTest, EverySectionHasAHeadingAndNamesEveryControl) {
  EXPECT_LE(window().minimumWidth(), 508) << "half of the smallest display, within a frame";
  // With and without the words of its side bar.
  for (const int width : {720, window().minimumWidth()}) {
    SCOPED_TRACE(width);
    window().resize(width, window().minimumHeight());
    QCoreApplication::processEvents();
    EXPECT_TRUE(window().findChild<SearchField*>()->isVisible());
    EXPECT_EQ(side().showsSymbolsOnly(), width < 720);
    for (const QString& section : SettingsWindow::sections()) {
      turnTo(qPrintable(section));
      EXPECT_EQ(window().section(), section);
      EXPECT_EQ(namelessControls(window()), QStringList()) << qPrintable(section);
      EXPECT_EQ(cutWords(window()), QStringList()) << qPrintable(section);
      for (const QScrollArea* area : window().findChildren<QScrollArea*>())
        if (area->isVisible()) {
          EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << qPrintable(section) << " is wider than its window";
        }
    }
  }
}

TEST_F(SettingsWindowTest, WhereNobodyTellsWhereWindowsAreTheRowSaysSoAlsoAfterASearch) {
  abilities.frames = Capability::no(u"Nobody tells."_s);
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Fixed; });
  turnTo("layout");
  search(u"dodge"_s);
  const auto says = [this] { return control<DropDown>("Hide only when a window would be covered"); };
  ASSERT_TRUE(says());
  EXPECT_TRUE(says()->accessibleDescription().startsWith(u"Only for "_s));
  search({});
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::RevealBottom; });
  ASSERT_TRUE(says());
  EXPECT_EQ(says()->accessibleDescription(), u"Nobody tells."_s);
  EXPECT_FALSE(says()->isEnabled());
}

TEST_F(SettingsWindowTest, WhereNobodyTellsWhoAsksForAttentionTheDockStillComesForTimers) {
  abilities.attention = Capability::no(u"Nobody tells."_s);
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::RevealBottom; });
  turnTo("layout");
  const auto* peep = control<Switch>("Show the dock when something needs you");
  ASSERT_TRUE(peep);
  EXPECT_TRUE(peep->isEnabled());
  EXPECT_TRUE(peep->accessibleDescription().startsWith(u"Nobody tells. Timers"_s));
}

TEST_F(SettingsWindowTest, ARowThatIsAskedForIsSeenAlsoWhereItDoesNotApply) {
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Fixed; });
  window().showSection(u"layout"_s, u"Hide delay"_s);
  ASSERT_TRUE(waitFor([&] { return sees("Hide delay"); }));
  EXPECT_FALSE(control<Slider>("Hide delay")->isEnabled());
  window().showSection(u"appearance"_s, u"Widget spacing"_s);
  EXPECT_TRUE(waitFor([&] { return sees("Widget spacing") && control<Slider>("Widget spacing")->hasFocus(); }));
}

TEST_F(SettingsWindowTest, ASearchLeavesWhatMatchesAndTellsWhereItIs) {
  turnTo("privacy");
  search(u"dock scále"_s);  // Accents and case don't matter.
  EXPECT_EQ(titles(), QStringList{u"Appearance"_s});
  EXPECT_TRUE(sees("Dock scale"));
  EXPECT_FALSE(sees("Widget spacing"));

  search(u"layout and displays"_s);
  EXPECT_EQ(titles(), QStringList{u"Layout & Displays"_s});
  EXPECT_TRUE(sees("Alignment"));
  search(u"profiles and rules"_s);  // The section is named in part.
  EXPECT_EQ(titles(), QStringList{u"Profiles"_s});
  EXPECT_FALSE(sees("Drag to switch profiles"));

  search(u"window previews"_s);
  EXPECT_EQ(titles(), QStringList{u"Running Apps"_s});
  search(u"background"_s);
  EXPECT_EQ(titles(), QStringList{u"Appearance"_s});
  EXPECT_TRUE(sees("Dock picture"));

  search(u"fullscreen"_s);
  EXPECT_EQ(titles(), QStringList{u"Layout & Displays"_s});
  EXPECT_TRUE(sees("Hide During Fullscreen"));

  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Floating; });
  search(u"screen edge"_s);  // What another layout has is mentioned.
  EXPECT_EQ(titles(), QStringList{u"Layout & Displays"_s});
  auto* edge = control<Segments>("Screen edge");
  ASSERT_TRUE(edge);
  EXPECT_FALSE(edge->isEnabled());
  EXPECT_EQ(edge->accessibleDescription(), u"Only for Fixed."_s);
  store().edit([](DockConfiguration& config) { config.layout = DockLayout::Fixed; });
  EXPECT_TRUE(edge->isEnabled());

  search(u"clipboard"_s);  // A section's own name shows all of it.
  EXPECT_TRUE(titles().contains(u"Clipboard"_s));
  EXPECT_TRUE(sees("Clipboard history"));

  auto* field = window().findChild<SearchField*>();
  field->setFocus();
  search(u"dock scale"_s);
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(window().focusWidget(), control<Slider>("Dock scale"));
  field->setFocus();
  search(u"no such thing"_s);
  EXPECT_EQ(titles(), QStringList());
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(window().focusWidget(), field);

  search({});
  EXPECT_EQ(titles().size(), SettingsWindow::sections().size());
  EXPECT_EQ(window().section(), u"privacy"_s);
  turnTo("appearance");
  EXPECT_TRUE(sees("Widget spacing"));
}

TEST_F(SettingsWindowTest, TabEntersAGroupAtTheChosenOneAndTheArrowsGoOn) {
  store().edit([](DockConfiguration& config) {
    config.layout = DockLayout::Fixed;
    config.alignment = u"right"_s;
    config.style = u"black"_s;
  });
  const auto tab = [this](const char* section) {
    turnTo(section);
    auto* field = window().findChild<SearchField*>();
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Return);
    return window().focusWidget();
  };
  auto* style = qobject_cast<StyleCard*>(tab("appearance"));
  ASSERT_TRUE(style);
  EXPECT_EQ(style->style(), u"black"_s);
  auto* layout = qobject_cast<LayoutCard*>(tab("layout"));
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->layout(), DockLayout::Fixed);
  QTest::keyClick(layout, Qt::Key_Left);
  EXPECT_EQ(config().layout, DockLayout::RevealBottom);
  QStringList stops;
  for (int i = 0; i < 6; ++i) {
    QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
    if (auto* button = qobject_cast<QPushButton*>(window().focusWidget())) stops << button->text();
  }
  EXPECT_EQ(stops, QStringList{u"Right"_s});
}

TEST_F(SettingsWindowTest, UndoBringsARemovedWidgetBack) {
  turnTo("widgets");
  const QList<DockWidget> before = config().profiles[0].widgets;
  edits->remove(before[2].id);
  ASSERT_EQ(config().profiles[0].widgets.size(), before.size() - 1);
  QTest::keyClick(&window(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(config().profiles[0].widgets, before);
  QTest::keyClick(&window(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(config().profiles[0].widgets.size(), before.size() - 1);
  QTest::keyClick(&window(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(config().profiles[0].widgets, before);
}

TEST_F(SettingsWindowTest, UndoTakesSettingsBackAndADragOfASliderIsOneStep) {
  const DockConfiguration before = config();
  turnTo("layout");
  for (LayoutCard* card : window().findChildren<LayoutCard*>())
    if (card->layout() == DockLayout::Floating) card->click();
  turnTo("appearance");
  control<Switch>("Widget tile fills")->click();
  auto* scale = control<Slider>("Dock scale");
  scale->setSliderDown(true);
  scale->setValue(scale->maximum());
  scale->setValue(scale->minimum());
  scale->setSliderDown(false);
  EXPECT_EQ(config().scale, 0.5);
  EXPECT_EQ(undo().size(), 3);
  QTest::keyClick(scale, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(config().scale, before.scale);
  EXPECT_FALSE(config().tiles);
  auto* search = window().findChild<SearchField*>();
  search->setFocus();  // Nothing was written in it.
  QTest::keyClick(search, Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClicks(search, u"fill"_s);  // What is written counts as long as nothing else was changed since.
  control<Switch>("Widget tile fills")->click();
  QTest::keyClick(search, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(search->text(), u"fill"_s);
  QTest::keyClick(scale, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(config(), before);
}

TEST_F(SettingsWindowTest, AMoveIsTakenBackAmongWhatCameAndWentMeanwhile) {
  const QList<DockWidget> before = config().profiles[0].widgets;
  edits->move(before[0].id, 3);
  store().remove(before[1].id);
  store().add(u"flipClock"_s);
  undo().undo();
  QList<DockWidget> wanted = before;
  wanted.remove(1);
  ASSERT_EQ(config().profiles[0].widgets.size(), wanted.size() + 1);
  EXPECT_EQ(config().profiles[0].widgets.first(wanted.size()), wanted);
}

TEST_F(SettingsWindowTest, AltAloneOpensTheMenuBarAndAltWithAnotherKeyDoesNot) {
  auto bar = std::make_unique<QMenuBar>();
  bar->addMenu(u"Edit"_s);
  QMenuBar* shown = bar.get();
  window().setMenuBar(std::move(bar));
  turnTo("widgets");
  auto* list = control<OrderList>("Widgets");
  ASSERT_TRUE(list);
  list->choose(config().profiles[0].widgets[0].id.toString());
  const auto press = [list](QEvent::Type type) {
    QKeyEvent alt(type, Qt::Key_Alt, Qt::AltModifier);
    QCoreApplication::sendEvent(list, &alt);
  };
  press(QEvent::KeyPress);
  QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);  // The list takes it.
  press(QEvent::KeyRelease);
  EXPECT_FALSE(shown->isVisible());
  press(QEvent::KeyPress);
  press(QEvent::KeyRelease);
  EXPECT_TRUE(shown->isVisible());
}

}  // namespace
}  // namespace tarnwick::test
