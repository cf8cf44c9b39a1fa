// What a screen reader finds in controls and in panels, and that it does there what a mouse does.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "store/DocumentEdits.h"
#include "support/AccessibleWalk.h"
#include "support/RecordingCommands.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/MonthGrid.h"
#include "views/controls/Segments.h"
#include "views/controls/Slider.h"
#include "views/controls/Stepper.h"
#include "views/families/Rooms.h"
#include "views/panels/ChipGrid.h"
#include "views/panels/TilePanel.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

QAccessibleInterface* accessibleOf(QObject* object) { return QAccessible::queryAccessibleInterface(object); }
const QString& increase() { return QAccessibleActionInterface::increaseAction(); }
const QString& decrease() { return QAccessibleActionInterface::decreaseAction(); }

TEST(ControlAccessible, AStepperIsANumberThatGoesByItsSteps) {
  Stepper stepper(u"Remind me every"_s);
  stepper.setRange(0, 100);
  stepper.setStep(15);
  stepper.setFormat([](int value) { return value == 0 ? u"Off"_s : u"%1 min"_s.arg(value); });
  stepper.setAccessibleDescription(u"While you work."_s);
  stepper.show();
  QSignalSpy changed(&stepper, &Stepper::valueChanged);
  QAccessibleInterface* accessible = accessibleOf(&stepper);
  EXPECT_EQ(accessible->role(), QAccessible::SpinBox);
  EXPECT_EQ(accessible->text(QAccessible::Name), u"Remind me every"_s);
  EXPECT_EQ(accessible->text(QAccessible::Value), u"Off"_s);
  EXPECT_EQ(accessible->text(QAccessible::Description), u"Off, While you work."_s);
  EXPECT_EQ(accessible->childCount(), 2);
  EXPECT_EQ(outOfReach(stepper), "");
  QAccessibleValueInterface* value = accessible->valueInterface();
  ASSERT_TRUE(value);
  EXPECT_EQ(value->minimumValue().toInt(), 0);
  EXPECT_EQ(value->maximumValue().toInt(), 100);
  EXPECT_EQ(value->minimumStepSize().toInt(), 15);

  struct Case {
    int requested;
    int result;
  };
  for (const auto& [requested, result] :
       std::initializer_list<Case>{{44, 45}, {50, 45}, {5000, 100}, {90, 85}, {-3, 0}}) {
    value->setCurrentValue(requested);
    EXPECT_EQ(stepper.value(), result) << requested;
    EXPECT_EQ(value->currentValue().toInt(), result);
  }
  EXPECT_EQ(changed.count(), 4) << "the user's change is told, and only what is one";
  EXPECT_TRUE(doAction(accessible, increase()));
  EXPECT_EQ(stepper.value(), 15);
  EXPECT_TRUE(doAction(accessible, decrease()));
  EXPECT_TRUE(doAction(accessible, decrease()));
  EXPECT_EQ(stepper.value(), 0);
  EXPECT_EQ(changed.count(), 6);

  stepper.setEnabled(false);
  EXPECT_TRUE(accessible->state().disabled);
  EXPECT_FALSE(doAction(accessible, increase()));
  value->setCurrentValue(60);
  EXPECT_EQ(stepper.value(), 0);
}

TEST(ControlAccessible, AMonthIsATableOfDaysToChooseFrom) {
  MonthGrid month;
  month.setWords(QLocale(QLocale::English, QLocale::UnitedKingdom));
  month.setToday({2026, 11, 24});
  month.setCounts({{{2026, 11, 25}, 2}});
  month.show();
  QApplication::setActiveWindow(&month);
  month.setFocus();
  QAccessibleInterface* accessible = accessibleOf(&month);
  QAccessibleTableInterface* table = accessible->tableInterface();
  ASSERT_TRUE(table);
  EXPECT_EQ(accessible->role(), QAccessible::Table);
  EXPECT_EQ(accessible->childCount(), 42);
  EXPECT_EQ(outOfReach(month), "");
  EXPECT_EQ(table->columnDescription(2), u"Wednesday"_s);
  QAccessibleInterface* day = table->cellAt(4, 2);
  ASSERT_TRUE(day);
  EXPECT_EQ(day->role(), QAccessible::Cell);
  EXPECT_EQ(day->text(QAccessible::Name), u"Wednesday, 25 November 2026, 2 events"_s);
  EXPECT_EQ(day->tableCellInterface()->rowIndex(), 4);
  EXPECT_EQ(day->tableCellInterface()->columnIndex(), 2);
  EXPECT_EQ(accessible->childAt(day->rect().center().x(), day->rect().center().y()), day);
  EXPECT_FALSE(day->state().selected);
  QSignalSpy chosen(&month, &MonthGrid::chosenChanged);
  EXPECT_TRUE(doAction(day, QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(month.chosen(), QDate(2026, 11, 25));
  EXPECT_EQ(chosen.count(), 1);
  EXPECT_TRUE(day->state().selected);
  EXPECT_TRUE(day->state().focused);
  EXPECT_EQ(accessible->focusChild(), day);
  EXPECT_EQ(table->selectedCells(), QList{day});

  // A day of the month before brings that month, and with it other days.
  EXPECT_TRUE(doAction(table->cellAt(0, 0), QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(month.month(), QDate(2026, 10, 1));
  EXPECT_EQ(accessible->child(0)->text(QAccessible::Name), u"Monday, 28 September 2026"_s);
  EXPECT_TRUE(doAction(accessible, QAccessibleActionInterface::nextPageAction()));
  EXPECT_TRUE(doAction(accessible, QAccessibleActionInterface::nextPageAction()));
  EXPECT_TRUE(doAction(accessible, QAccessibleActionInterface::previousPageAction()));
  EXPECT_EQ(month.chosen(), QDate(2026, 11, 26));

  month.setEnabled(false);
  EXPECT_TRUE(accessible->child(3)->state().disabled);
  EXPECT_FALSE(doAction(accessible->child(3), QAccessibleActionInterface::pressAction()));
}

TEST(ControlAccessible, WordsToChooseFromAreRadioButtonsOfANamedGroup) {
  Segments segments(u"Unit"_s, {u"Day"_s, u"Week"_s});
  ChipGrid chips(u"Duration"_s, 2);
  chips.setWords({u"5 min"_s, u"10 min"_s});
  chips.setChosen(0);
  for (QWidget* group : std::initializer_list<QWidget*>{&segments, &chips}) {
    group->show();
    QAccessibleInterface* accessible = accessibleOf(group);
    EXPECT_EQ(accessible->role(), QAccessible::Grouping);
    EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty());
    EXPECT_EQ(outOfReach(*group), "");
    ASSERT_EQ(accessible->childCount(), 2);
    for (const int chosen : {0, 1, 1, 0}) {  // One that is toggled again stays chosen.
      EXPECT_TRUE(doAction(accessible->child(chosen), QAccessibleActionInterface::toggleAction()));
      for (const int each : {0, 1}) {
        EXPECT_EQ(accessible->child(each)->role(), QAccessible::RadioButton);
        EXPECT_EQ(bool(accessible->child(each)->state().checked), each == chosen);
      }
    }
  }
}

/// What became of the widget, of what its panel asked for and of the day that the panel shows.
struct Outcome {
  QMap<QString, QString> atOnce;
  QMap<QString, QString> options;
  QStringList asked;
  QDate day;
  bool operator==(const Outcome&) const = default;
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    for (const auto& [key, value] : outcome.options.asKeyValueRange())
      *out << key.toStdString() << "=" << value.toStdString() << " ";
    *out << outcome.asked.join(u'|').toStdString() << " " << outcome.day.toString(Qt::ISODate).toStdString();
  }
};

using Action = std::function<void(QWidget& panel)>;

Outcome outcome(const QString& kind, const Action& action) {
  SnapshotStore fixture;
  ChangingCommands commands(fixture.store());
  const PanelContext context = fixture.contextOf(kind, commands);
  const std::unique_ptr<TilePanel> panel = makePanel(context);
  panel->start();
  panel->resize(panel->sizeHint());
  panel->show();
  QCoreApplication::processEvents();
  action(*panel);
  QCoreApplication::processEvents();
  const auto options = [&] { return DocumentEdits::find(fixture.store().config(), context.widget)->options; };
  const QMap<QString, QString> atOnce = options();
  panel->hide();  // What has the keyboard loses it.
  const auto* month = panel->findChild<MonthGrid*>();
  return {atOnce, options(), commands.asked, month ? month->chosen() : QDate()};
}

template <class Control>
Control& named(QWidget& panel, const QString& name) {
  for (Control* each : panel.findChildren<Control*>())
    if (accessibleOf(each)->text(QAccessible::Name) == name) return *each;
  throw std::runtime_error("no control " + name.toStdString());
}

/// A field that has the keyboard.
QLineEdit& reach(QWidget& panel, const QString& name) {
  auto& field = named<QLineEdit>(panel, name);
  QApplication::setActiveWindow(&panel);
  field.setFocus();
  return field;
}

TEST(ControlAccessible, InPanelsAReaderDoesWhatMouseAndKeyboardDo) {
  const auto click = [](const QString& name, int times = 1) {
    return [name, times](QWidget& panel) {
      for (int i = 0; i < times; ++i) QTest::mouseClick(&named<QAbstractButton>(panel, name), Qt::LeftButton);
    };
  };
  const auto type = []<class Control>(Control*, const QString& name, Qt::Key key) {
    return [name, key](QWidget& panel) { QTest::keyClick(&named<Control>(panel, name), key); };
  };
  const auto toggle = [](const QString& name) {
    return [name](QWidget& panel) { EXPECT_TRUE(pressOrToggle(named<QAbstractButton>(panel, name))); };
  };
  const auto set = []<class Control>(Control*, const QString& name, int by) {
    return [name, by](QWidget& panel) {
      QAccessibleValueInterface* value = accessibleOf(&named<Control>(panel, name))->valueInterface();
      value->setCurrentValue(value->currentValue().toInt() + by);
    };
  };
  const auto write = [](const QString& name, const QString& text) {
    return [name, text](QWidget& panel) {
      QAccessibleInterface* field = accessibleOf(&reach(panel, name));
      field->editableTextInterface()->replaceText(0, field->textInterface()->characterCount(), text);
    };
  };
  const auto typeText = [](const QString& name, const QString& text) {
    return [name, text](QWidget& panel) {
      QLineEdit& field = reach(panel, name);
      field.selectAll();
      QTest::keyClicks(&field, text);
    };
  };
  const auto clickDay = [](QWidget& panel) {
    auto& month = *panel.findChild<MonthGrid*>();
    QTest::mouseClick(&month, Qt::LeftButton, Qt::NoModifier, month.cellOf(36).center().toPoint());
  };
  const auto pressDay = [](QWidget& panel) {
    auto& month = *panel.findChild<MonthGrid*>();
    EXPECT_TRUE(doAction(accessibleOf(&month)->child(36), QAccessibleActionInterface::pressAction()));
  };
  Stepper* const stepper = nullptr;
  Slider* const slider = nullptr;
  MonthGrid* const month = nullptr;
  QAbstractButton* const button = nullptr;
  struct Case {
    QString kind;
    Action byMouse;
    Action byKeyboard;
    Action byReader;
  };
  const Case cases[] = {
      {u"drinkWater"_s, click(u"Increase Daily goal"_s), type(stepper, u"Daily goal"_s, Qt::Key_Up),
       [](QWidget& panel) {
         EXPECT_TRUE(doAction(accessibleOf(&named<Stepper>(panel, u"Daily goal"_s)), increase()));
       }},
      {u"drinkWater"_s, click(u"Decrease Daily goal"_s), type(stepper, u"Daily goal"_s, Qt::Key_Down),
       set(stepper, u"Daily goal"_s, -1)},
      {u"drinkWater"_s, click(u"Drink a Glass"_s), type(button, u"Drink a Glass"_s, Qt::Key_Return),
       toggle(u"Drink a Glass"_s)},
      {u"folderLauncher"_s, click(u"Name"_s), type(button, u"Name"_s, Qt::Key_Space), toggle(u"Name"_s)},
      {u"timer"_s, click(u"15 min"_s), type(button, u"15 min"_s, Qt::Key_Space), toggle(u"15 min"_s)},
      {u"colorPicker"_s, nullptr, type(slider, u"Hue"_s, Qt::Key_PageUp), set(slider, u"Hue"_s, 10)},
      {u"colorPicker"_s, nullptr, typeText(u"Hex color"_s, u"#112233"_s), write(u"Hex color"_s, u"#112233"_s)},
      {u"habitTracker"_s, nullptr, typeText(u"Habit"_s, u"Swim"_s), write(u"Habit"_s, u"Swim"_s)},
      {u"calendar"_s, clickDay, type(month, u"Month"_s, Qt::Key_Down), pressDay},
      {u"calendar"_s, click(u"Next month"_s), type(month, u"Month"_s, Qt::Key_PageDown),
       [](QWidget& panel) {
         EXPECT_TRUE(
             doAction(accessibleOf(panel.findChild<MonthGrid*>()), QAccessibleActionInterface::nextPageAction()));
       }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(testing::Message() << each.kind.toStdString() << " " << (&each - cases));
    const Outcome accessible = outcome(each.kind, each.byReader);
    EXPECT_NE(accessible, outcome(each.kind, [](QWidget&) {})) << "it changes something";
    EXPECT_EQ(accessible, outcome(each.kind, each.byKeyboard));
    if (each.byMouse) {
      EXPECT_EQ(accessible, outcome(each.kind, each.byMouse));
    }
  }
}

}  // namespace
}  // namespace tarnwick::test
