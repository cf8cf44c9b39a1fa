#include <gtest/gtest.h>

#include <QImage>
#include <QListView>
#include <QTest>
#include <algorithm>
#include <functional>
#include <vector>

#include "OpenPanel.h"
#include "base/DomainError.h"
#include "commandbar/EmojiTable.h"
#include "services/CurrencyRates.h"
#include "support/AccessibleWalk.h"
#include "support/ScriptedSession.h"
#include "views/controls/Charts.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/controls/Meters.h"
#include "views/controls/Rows.h"
#include "views/controls/Slider.h"
#include "views/controls/Switch.h"
#include "views/families/calendar/AgendaRow.h"
#include "views/families/utilities/UtilitiesRoom.h"
#include "views/panels/BigText.h"
#include "widgets/QuickNotes.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A panel whose to-dos are those of its store.
struct DailyPanel : test::OpenPanel<test::ChangingCommands> {
  explicit DailyPanel(const QString& kind, CurrencyRates* rates = nullptr) : OpenPanel(kind) {
    context.readings.rates = rates;
    context.sources = [this] {
      return KeptSources::given([this] {
        TileSources sources = SnapshotFixture::sources();
        sources.todos = store().config().todos;
        return sources;
      });
    };
    panel = test::shown(context);
  }

  void write(const QString& text) {
    auto* field = panel->findChild<TextField*>();
    field->selectAll();
    field->insert(text);
    Q_EMIT field->textEdited(text);
  }
  void press(Qt::Key key) { QTest::keyClick(panel->findChild<TextField*>(), key); }
};

TEST(Panels, WhatIsSetInThemCanBeTakenBackAndWhatIsCountedHasItsOwnWays) {
  DailyPanel water(u"drinkWater"_s);
  water.click(u"Increase Daily goal"_s);
  EXPECT_EQ(water.commands.changed.size(), 1);
  water.click(u"Increase Remind me every"_s);
  EXPECT_EQ(water.commands.changed.size(), 2);
  water.store().drink(water.context.widget);
  EXPECT_EQ(water.commands.changed.size(), 2);
  QTest::keyClick(water.panel.get(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(water.panel.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(water.commands.asked, (QStringList{u"undo"_s, u"redo"_s}));

  DailyPanel pomodoro(u"pomodoro"_s);
  pomodoro.click(u"Increase Short break"_s);
  pomodoro.click(u"Increase Sessions before a long break"_s);
  EXPECT_EQ(pomodoro.commands.changed.size(), 2);
  pomodoro.click(u"Skip"_s);
  EXPECT_EQ(pomodoro.commands.changed.size(), 2);
}

TEST(TimerPanels, DoWhatTheirButtonsSay) {
  DailyPanel timer(u"timer"_s);
  EXPECT_EQ(timer.panel->focusWidget()->property("text").toString(), u"Resume"_s) << "what Return does at once";
  timer.click(u"Resume"_s);
  EXPECT_NE(timer.option(u"deadline"_s), u"absent"_s);
  timer.click(u"5 min"_s);
  EXPECT_EQ(timer.option(u"minutes"_s), u"5"_s);
  EXPECT_EQ(timer.option(u"deadline"_s), u"absent"_s) << "another duration starts over";
  EXPECT_EQ(timer.option(u"remaining"_s), u"absent"_s);

  DailyPanel pomodoro(u"pomodoro"_s);
  pomodoro.click(u"Skip"_s);
  EXPECT_EQ(pomodoro.option(u"phase"_s), u"shortBreak"_s);
  EXPECT_EQ(pomodoro.option(u"sessions"_s), u"3"_s);
  EXPECT_EQ(pomodoro.option(u"deadline"_s), u"absent"_s);
  pomodoro.click(u"Increase Short break"_s);
  EXPECT_EQ(pomodoro.option(u"shortBreak"_s), u"6"_s);
  EXPECT_EQ(pomodoro.option(u"remaining"_s), u"absent"_s) << "a phase that has not begun takes its new length";
  pomodoro.click(u"Start"_s);
  pomodoro.click(u"Reset"_s);
  EXPECT_EQ(pomodoro.option(u"phase"_s), u"absent"_s);

  DailyPanel posture(u"posture"_s);
  DockWidget standing = *DocumentEdits::find(posture.store().config(), posture.context.widget);
  standing.options = {{u"standingMinutes"_s, u"5"_s}, {u"phase"_s, u"standing"_s}, {u"remaining"_s, u"300"_s}};
  posture.store().update(standing);
  posture.click(u"Increase Standing"_s);
  EXPECT_EQ(posture.option(u"remaining"_s), u"360"_s) << "that of the phase it stands in, not of the seated one";

  DailyPanel stopwatch(u"stopwatch"_s);
  EXPECT_EQ(stopwatch.panel->findChildren<ListRow*>().size(), 2);
  stopwatch.click(u"Lap"_s);
  EXPECT_EQ(stopwatch.option(u"laps"_s), u"64.2,131.7,192.0"_s);
  stopwatch.click(u"Reset"_s);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(stopwatch.panel->findChildren<ListRow*>().size(), 0) << "laps of a run that was reset are gone";
  stopwatch.click(u"Start"_s);
  EXPECT_THROW(stopwatch.commands.undos.back()(), DomainError) << "the new run would be lost";
  stopwatch.store().resetTimer(stopwatch.context.widget);
  stopwatch.commands.undos.back()();
  EXPECT_EQ(stopwatch.option(u"laps"_s), u"64.2,131.7,192.0"_s);
  stopwatch.commands.redos.back()();
  EXPECT_EQ(stopwatch.option(u"laps"_s), u"absent"_s);
  stopwatch.commands.undos.back()();
  stopwatch.click(u"Lap"_s);
  EXPECT_THROW(stopwatch.commands.redos.back()(), DomainError) << "the new lap would be lost";
}

TEST(Rows, AreTurnedOverWherePeopleReadFromTheRight) {
  using Make = std::function<QWidget*()>;
  const std::pair<const char*, Make> makes[] = {
      {"row",
       [] {
         auto* row = new ListRow(u"A title"_s);
         row->setCaption(u"Words"_s);
         row->setSymbol(u"bell"_s);
         row->addControl(new Switch(u"On"_s));
         row->setValue(u"9"_s);
         return row;
       }},
      {"check", [] { return new CheckRow(u"A title"_s); }},
      {"agenda",
       [] {
         return new AgendaRow(
             {u"9:00"_s, u"10:00"_s, u"Review"_s, u"Room"_s, {}, false}, 34, [] {}, true);
       }},
      {"header",
       [] {
         auto* header = new PanelHeader(nullptr);
         header->setTitle(u"A title"_s);
         header->setBadge({u"T"_s, 16});
         header->addAction(new Button(u"Go"_s));
         return header;
       }},
      {"section", [] { return new SectionLabel(u"A heading"_s, u"1"_s); }},
      {"figure",
       [] {
         auto* figure = new FigureView;
         figure->setFigure(u"23"_s, u"%"_s);
         figure->setLines(u"of it"_s);
         return figure;
       }},
      {"bar",
       [] {
         auto* bar = new ProgressBar(u"Share"_s);
         bar->setShare(0.2);
         return bar;
       }},
      {"parts",
       [] {
         auto* parts = new PartedBar(u"Parts"_s);
         parts->setParts({{u"Used"_s, u"1"_s, 0.2}, {u"Left over"_s, u"2"_s, 0.8}});
         return parts;
       }},
      {"slider",
       [] {
         auto* slider = new Slider(u"Volume"_s);
         slider->setValue(20);
         return slider;
       }},
  };
  for (const auto& [name, make] : makes) {
    // How much ink is in each of ten columns.
    const auto inkOf = [&](Qt::LayoutDirection direction) {
      const std::unique_ptr<QWidget> widget(make());
      widget->setLayoutDirection(direction);
      widget->resize(300, widget->height());
      widget->show();
      QCoreApplication::processEvents();
      QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
      image.fill(Qt::transparent);
      widget->render(&image, {}, {}, QWidget::DrawChildren);
      std::vector<double> ink(10);
      for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
          ink[static_cast<std::size_t>(x * 10 / image.width())] += qAlpha(image.pixel(x, y)) / 255.0;
      return ink;
    };
    std::vector<double> left = inkOf(Qt::LeftToRight);
    const std::vector<double> right = inkOf(Qt::RightToLeft);
    const double most = *std::ranges::max_element(left);
    EXPECT_NE(left, std::vector<double>(left.rbegin(), left.rend())) << name << " has no sides to tell apart";
    std::ranges::reverse(left);
    // Words are not turned over, only the places where they are.
    for (std::size_t i = 0; i < left.size(); ++i) EXPECT_NEAR(left[i], right[i], most * 0.6) << name << " column " << i;
  }
}

TEST(TodosPanelTest, AddsTicksDeletesAndClears) {
  DailyPanel todos(u"quickTodo"_s);
  const auto texts = [&] {
    QStringList list;
    for (const TodoItem& item : todos.store().config().todos) list << item.text;
    return list;
  };
  const qsizetype before = texts().size();
  todos.write(u"  Water the plants "_s);
  todos.press(Qt::Key_Return);
  ASSERT_EQ(texts().size(), before + 1);
  EXPECT_EQ(texts().last(), u"Water the plants"_s);
  todos.press(Qt::Key_Return);
  EXPECT_EQ(texts().size(), before + 1) << "nothing is nothing to do";

  const auto rows = [&] {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return todos.panel->findChildren<CheckRow*>();
  };
  const auto field = [&] { return rows().first()->parentWidget()->findChild<TextField*>(); };
  QTest::keyClick(rows().first(), Qt::Key_F2);
  field()->setText(u"Never mind"_s);
  QTest::keyClick(field(), Qt::Key_Escape);
  EXPECT_FALSE(texts().contains(u"Never mind"_s));
  for (const QString& text : {u"  "_s, u" Fix the icon "_s}) {
    QTest::keyClick(rows().first(), Qt::Key_F2);
    field()->setText(text);
    QTest::keyClick(field(), Qt::Key_Return);
  }
  EXPECT_EQ(texts().first(), u"Fix the icon"_s);

  rows().first()->click();
  EXPECT_TRUE(todos.store().config().todos.first().completed);
  const QStringList all = texts();
  QTest::keyClick(rows().first(), Qt::Key_Delete);
  EXPECT_FALSE(texts().contains(u"Reply to Sam about the theme"_s));
  todos.click(u"Clear completed"_s);
  EXPECT_EQ(texts(), (QStringList{u"Book train for Friday"_s, u"Water the plants"_s}));
  const auto [first, second] = std::pair(todos.commands.undos[0], todos.commands.undos[1]);
  second(), first();
  EXPECT_EQ(texts(), all) << "each is back at its place";
  todos.write(u"Sleep"_s);
  todos.press(Qt::Key_Return);
  for (const auto& redo : todos.commands.redos) redo();
  EXPECT_EQ(texts(), (QStringList{u"Book train for Friday"_s, u"Water the plants"_s, u"Sleep"_s}));
}

TEST(TodosPanelTest, AScreenReaderTicksMovesEditsAndRemoves) {
  DailyPanel todos(u"quickTodo"_s);
  todos.store().edit([](DockConfiguration& config) {
    config.todos = {{QUuid::createUuid(), u"A"_s, false},
                    {QUuid::createUuid(), u"B"_s, true},
                    {QUuid::createUuid(), u"C"_s, false}};
  });
  const auto rows = [&] {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return todos.panel->findChildren<CheckRow*>();
  };
  const auto row = [&](qsizetype index) { return QAccessible::queryAccessibleInterface(rows()[index]); };
  const auto texts = [&] {
    QString all;
    for (const TodoItem& item : todos.store().config().todos) all += item.text + (item.completed ? u"+"_s : QString());
    return all;
  };
  // Those that are ticked stand below the others.
  EXPECT_EQ(row(0)->actionInterface()->actionNames().filter(u"Move"_s), QStringList{u"Move Down"_s});
  EXPECT_EQ(row(1)->actionInterface()->actionNames().filter(u"Move"_s), QStringList{u"Move Up"_s});
  EXPECT_EQ(row(2)->actionInterface()->actionNames().filter(u"Move"_s), QStringList());
  EXPECT_TRUE(test::doAction(row(0), u"Move Down"_s));
  EXPECT_EQ(texts(), u"B+CA"_s);
  EXPECT_FALSE(test::doAction(row(0), u"Move Up"_s));
  QTest::keyClick(rows()[1], Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(texts(), u"B+AC"_s);
  EXPECT_TRUE(test::doAction(row(0), QAccessibleActionInterface::toggleAction()));
  EXPECT_EQ(texts(), u"B+A+C"_s);
  EXPECT_TRUE(test::doAction(row(0), u"Delete"_s));
  EXPECT_EQ(texts(), u"B+A+"_s);
  EXPECT_EQ(todos.commands.undos.size(), 1u);
  EXPECT_TRUE(test::doAction(row(0), u"Edit"_s));
  EXPECT_TRUE(rows()[0]->isHidden());
}

TEST(NotePanels, SaveAsIsTyped) {
  DailyPanel note(u"scratchNote"_s);
  note.panel->findChild<TextArea*>()->setPlainText(u"Something else"_s);
  EXPECT_EQ(note.option(u"text"_s), u"Something else"_s);
  note.store().set(note.context.widget, u"text"_s, u"From elsewhere"_s);
  EXPECT_EQ(note.panel->findChild<TextArea*>()->toPlainText(), u"From elsewhere"_s);

  DailyPanel notes(u"notesLatest"_s);
  const QUuid first = QuickNotes::byAge(notes.store().config()).first().id;
  notes.panel->findChild<TextArea*>()->setPlainText(u"Edited"_s);
  EXPECT_EQ(DocumentEdits::find(notes.store().config(), first)->options.value(u"text"_s), u"Edited"_s);
  EXPECT_EQ(notes.option(u"text"_s), u"absent"_s);

  for (const DockWidget& each : QuickNotes::byAge(notes.store().config())) notes.store().remove(each.id);
  ASSERT_FALSE(notes.panel->findChild<TextArea*>()->isVisible());
  // Its dock shows another profile than the one that is active.
  const QUuid active = notes.store().profile().id;
  notes.store().newProfile(u"Pinned"_s, false);
  notes.store().pinDisplay(notes.context.display, notes.store().profile().id);
  notes.store().selectProfile(active);
  QTest::keyClick(notes.panel.get(), Qt::Key_B);
  EXPECT_EQ(notes.panel->findChild<TextArea*>()->toPlainText(), u"b"_s) << "the first letter is of the note already";
  EXPECT_EQ(notes.panel->focusWidget(), notes.panel->findChild<TextArea*>());
  EXPECT_EQ(notes.store().profile(notes.context.display).widgets.size(), 1);
  EXPECT_EQ(notes.commands.asked, QStringList{u"add scratchNote on "_s + notes.context.display})
      << "a step that can be taken back";
}

TEST(HabitPanelsTest, CountAndTick) {
  DailyPanel water(u"drinkWater"_s);
  water.click(u"Drink a Glass"_s);
  EXPECT_EQ(water.option(u"glasses"_s), u"6"_s);
  water.click(u"Increase Remind me every"_s);
  EXPECT_EQ(water.option(u"interval"_s), u"15"_s);
  water.click(u"Decrease Remind me every"_s);
  EXPECT_EQ(water.option(u"interval"_s), u"absent"_s);

  DailyPanel habit(u"habitTracker"_s);
  habit.click(u"Done for Today"_s);
  EXPECT_TRUE(habit.option(u"history"_s).endsWith(u"2026-11-24"_s));
  habit.click(u"Undo Today"_s);
  EXPECT_FALSE(habit.option(u"history"_s).contains(u"2026-11-24"_s));
}

TEST(CalculatorPanelTest, CalculatesOnAndKeepsWhatHadAResult) {
  DailyPanel calculator(u"calculator"_s);
  calculator.click(u"Clear History"_s);
  calculator.write(u"6 × 7"_s);
  calculator.write(u"6 × 7 +"_s);
  EXPECT_EQ(calculator.option(u"expression"_s), u"6 × 7"_s);
  calculator.write(u"6 × 7"_s);
  calculator.press(Qt::Key_Return);
  EXPECT_EQ(calculator.panel->findChild<TextField*>()->text(), u"42"_s);
  EXPECT_EQ(calculator.option(u"expression"_s), u"6 × 7"_s);
  calculator.click(u"Copy Result"_s);
  EXPECT_EQ(calculator.commands.asked.last(), u"copy 42"_s);

  // Finished calculations can be taken up again; a number alone is none.
  calculator.press(Qt::Key_Return);
  calculator.write(u"1 ÷ 4"_s);
  calculator.press(Qt::Key_Return);
  EXPECT_EQ(calculator.option(u"calculations"_s), u"1 ÷ 4 = 0.25\n6 × 7 = 42"_s);
  calculator.panel->findChildren<ListRow*>()[1]->click();
  EXPECT_EQ(calculator.panel->findChild<TextField*>()->text(), u"6 × 7"_s);
  calculator.press(Qt::Key_Return);
  EXPECT_EQ(calculator.option(u"calculations"_s), u"6 × 7 = 42\n1 ÷ 4 = 0.25"_s);
  calculator.click(u"Clear History"_s);
  EXPECT_EQ(calculator.option(u"calculations"_s), u"absent"_s);
  calculator.write(u"2 + 2"_s);
  calculator.press(Qt::Key_Return);
  calculator.commands.undos.back()();
  EXPECT_EQ(calculator.option(u"calculations"_s), u"2 + 2 = 4\n6 × 7 = 42\n1 ÷ 4 = 0.25"_s);
  calculator.commands.redos.back()();
  EXPECT_EQ(calculator.option(u"calculations"_s), u"2 + 2 = 4"_s) << "what was calculated since stays";
}

TEST(ConverterPanelTest, StaysWithinOneGroup) {
  DailyPanel converter(u"converter"_s);
  converter.click(u"Temperature"_s);
  EXPECT_EQ(converter.option(u"from"_s) + converter.option(u"to"_s), u"°C°F"_s);
  converter.click(u"°F"_s);  // The first such button is in "From": the units change places.
  EXPECT_EQ(converter.option(u"from"_s) + converter.option(u"to"_s), u"°F°C"_s);
  converter.click(u"Swap Units"_s);
  converter.write(u"100"_s);
  converter.click(u"Copy Result"_s);
  EXPECT_EQ(converter.commands.asked.last(), u"copy 212"_s);
}

TEST(ConverterPanelTest, AsksForTheRateOfTheCurrenciesThatAreChosen) {
  const auto session = std::make_shared<test::ScriptedSession>();
  CurrencyRates rates(session, QUrl(u"https://rates.example"_s));
  const auto rate = [](const QString& base, const QString& quote, double value) {
    return QJsonObject{{u"date"_s, u"2026-11-23"_s}, {u"base"_s, base}, {u"quote"_s, quote}, {u"rate"_s, value}};
  };
  const QString day = SnapshotFixture::locale().toString(QDate(2026, 11, 23), QLocale::LongFormat);
  DailyPanel converter(u"converter"_s, &rates);
  const auto shown = [&] { return converter.panel->findChild<ResultView*>()->accessibleName(); };
  const auto says = [&](const QString& text) {
    return std::ranges::any_of(converter.panel->findChildren<TextLabel*>(),
                               [&](const TextLabel* label) { return !label->isHidden() && label->text() == text; });
  };
  EXPECT_TRUE(session->asked.isEmpty()) << "lengths need no rate";
  converter.click(u"Currency"_s);
  EXPECT_EQ(converter.option(u"from"_s) + converter.option(u"to"_s), u"GBPEUR"_s) << "the user's own first";
  converter.write(u"many"_s);
  QCoreApplication::processEvents();
  EXPECT_EQ(shown(), u"Enter a number."_s);
  converter.write(u"1250"_s);
  QCoreApplication::processEvents();
  ASSERT_EQ(session->asked.size(), 1);
  EXPECT_EQ(session->asked[0]->call.url.path(), u"/v2/rate/gbp/eur"_s);
  EXPECT_EQ(shown(), u"Getting the exchange rate…"_s);
  session->answer(rate(u"GBP"_s, u"EUR"_s, 0.9234567));
  EXPECT_EQ(shown(), u"1,154.32 EUR"_s);
  EXPECT_TRUE(says(u"Rate of %1, from frankfurter.dev"_s.arg(day)));
  converter.write(u"10"_s);
  EXPECT_EQ(shown(), u"9.23 EUR"_s);
  converter.click(u"Copy Result"_s);
  EXPECT_EQ(converter.commands.asked.last(), u"copy 9.23"_s);
  EXPECT_EQ(session->asked.size(), 1) << "the rate is kept";

  converter.click(u"Swap Units"_s);
  QCoreApplication::processEvents();
  ASSERT_EQ(session->asked.size(), 2);
  session->answer(rate(u"EUR"_s, u"GBP"_s, 0));
  EXPECT_EQ(shown(), u"No exchange rate"_s);
  EXPECT_TRUE(says(u"Invalid rate response"_s));
  converter.write(u"20"_s);
  QCoreApplication::processEvents();
  EXPECT_EQ(session->asked.size(), 2) << "only the user asks again";
  converter.click(u"Try Again"_s);
  QCoreApplication::processEvents();
  ASSERT_EQ(session->asked.size(), 3);
  converter.click(u"Length"_s);
  EXPECT_EQ(shown(), u"0.02 km"_s);
  EXPECT_FALSE(says(u"Invalid rate response"_s));
  session->answer(rate(u"EUR"_s, u"GBP"_s, 1.1));
  EXPECT_EQ(shown(), u"0.02 km"_s) << "what came too late shows nothing";

  converter.click(u"Swap Units"_s);
  converter.click(u"Currency"_s);
  converter.panel.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(session->asked.size(), 3) << "nobody waits for it";
}

TEST(ConverterPanelTest, OffersNoCurrenciesWhereNobodyKnowsTheirRates) {
  DailyPanel converter(u"converter"_s);
  for (PaintedButton* button : converter.panel->findChildren<PaintedButton*>())
    EXPECT_NE(button->label(), u"Currency"_s);
}

TEST(ColorPanelTest, TakesColorsFromEverywhere) {
  DailyPanel color(u"colorPicker"_s);
  color.click(u"Pick from Screen"_s);
  ASSERT_TRUE(color.commands.picked);
  color.panel.reset();  // Picking closed it.
  color.commands.picked(u"#102030"_s);
  EXPECT_EQ(color.option(u"color"_s), u"#102030"_s);
  color.commands.picked(u"nonsense"_s);
  for (int i = 0; i < 12; ++i) takeColor(color.store(), color.context.widget, u"#00000%1"_s.arg(i % 10));
  EXPECT_EQ(color.option(u"recentColors"_s).split(u' ').size(), 8);
  EXPECT_TRUE(color.option(u"recentColors"_s).startsWith(u"#000001 #000000 #000009"_s));
}

TEST(ColorPanelTest, OfWhatTheSlidersPassOnlyTheEndIsRecent) {
  DailyPanel color(u"colorPicker"_s);
  const auto recent = [&] { return color.option(u"recentColors"_s).split(u' '); };
  const auto drag = [&](qsizetype index, std::initializer_list<int> places) {
    Slider* slider = color.panel->findChildren<Slider*>()[index];
    slider->setSliderDown(true);
    for (const int place : places) slider->setSliderPosition(place);
    slider->setSliderDown(false);
    QCoreApplication::processEvents();
  };
  const QStringList before = recent();
  drag(1, {90, 80});
  drag(2, {70, 60, 50});
  QTest::keyClick(color.panel->findChildren<Slider*>()[2], Qt::Key_Right);
  EXPECT_EQ(recent(), before);
  const QString first = color.option(u"color"_s);
  // What else is taken comes after what was mixed.
  color.write(u"#123456"_s);
  drag(0, {100, 200});
  const QString second = color.option(u"color"_s);
  color.panel->hide();
  EXPECT_EQ(color.option(u"color"_s), second);
  EXPECT_EQ(recent().mid(0, 2), (QStringList{second, first}));
  EXPECT_EQ(recent().mid(2), before.mid(0, recent().size() - 2));
  color.panel->show();
  color.panel->hide();
  EXPECT_EQ(recent().first(), second);
}

TEST(EmojiPanelTest, FindsAndCopies) {
  DailyPanel emoji(u"emojiRecents"_s);
  DockWidget fresh = *DocumentEdits::find(emoji.store().config(), emoji.context.widget);
  fresh.options.remove(u"recents"_s);
  emoji.store().update(fresh);
  QCoreApplication::processEvents();
  const auto showsRecent = [&] {
    // The other section is that of all.
    return std::ranges::count_if(emoji.panel->findChildren<SectionLabel*>(), &QWidget::isVisible) == 2;
  };
  EXPECT_FALSE(showsRecent()) << "none was used yet";
  emoji.write(u"cof"_s);
  emoji.press(Qt::Key_Return);
  EXPECT_EQ(emoji.commands.asked.last(), u"copy ☕"_s);
  EXPECT_EQ(emoji.option(u"recents"_s), u"☕"_s) << "what the user took, and nothing else";
  QCoreApplication::processEvents();
  EXPECT_TRUE(showsRecent());
  const auto keys = [&](Qt::Key key) { QTest::keyClick(emoji.panel->focusWidget(), key); };
  const auto reached = [&] {
    const auto* grid = dynamic_cast<QListView*>(emoji.panel->focusWidget());
    return grid ? grid->currentIndex().data(Qt::AccessibleTextRole).toString().toStdString() : "none";
  };
  emoji.write(u"fire"_s);
  emoji.press(Qt::Key_Down);
  EXPECT_EQ(reached(), "fire");
  keys(Qt::Key_Right);
  EXPECT_NE(reached(), "fire");
  keys(Qt::Key_Up);
  EXPECT_EQ(reached(), "none");
  EXPECT_EQ(emoji.panel->focusWidget()->accessibleName(), u"Search emoji"_s);
  emoji.press(Qt::Key_Down);
  keys(Qt::Key_Return);
  EXPECT_EQ(emoji.commands.asked.last(), u"copy 🔥"_s);
}

TEST(EmojiPanelTest, AllEmojiStandInOneGrid) {
  DailyPanel emoji(u"emojiRecents"_s);
  QListView* all = nullptr;
  for (auto* grid : emoji.panel->findChildren<QListView*>())
    if (grid->accessibleName() == u"All"_s) all = grid;
  ASSERT_TRUE(all);
  EXPECT_EQ(all->model()->rowCount(), EmojiTable::shared().size());
  const auto cell = [&](int row) { return all->visualRect(all->model()->index(row, 0)); };
  EXPECT_EQ(cell(7).top(), cell(0).top());
  EXPECT_EQ(cell(8).left(), cell(0).left());
  EXPECT_EQ(cell(all->model()->rowCount() - 1).bottom(), all->height() - 1) << "nothing scrolls within it";
  emoji.write(u"zzzz"_s);
  EXPECT_EQ(all->model()->rowCount(), 0);
}

}  // namespace
}  // namespace tarnwick
