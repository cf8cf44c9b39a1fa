#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <type_traits>

#include "OpenPanel.h"
#include "views/controls/MonthGrid.h"
#include "views/controls/Rows.h"
#include "views/families/calendar/AgendaRow.h"
#include "views/panels/WeatherRow.h"
#include "widgets/ZoneSearch.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

using test::shown;

void press(QWidget& widget, Qt::Key key) {
  QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(&widget, &event);
}

QAbstractButton* buttonNamed(QWidget& panel, const QString& name) {
  QCoreApplication::processEvents();  // Layouts show what was just added.
  for (QAbstractButton* button : panel.findChildren<QAbstractButton*>())
    if (button->isVisible() && (button->accessibleName() == name || button->text() == name)) return button;
  return nullptr;
}

QString optionOf(const PanelContext& context, const QString& key) {
  for (const DockProfile& profile : context.store.config().profiles)
    for (const DockWidget& widget : profile.widgets)
      if (widget.id == context.widget) return widget.options.value(key);
  return {};
}

TEST(ZoneSearchTest, FindsByCityCountryAndName) {
  for (const auto& [text, zone] :
       std::initializer_list<std::pair<QString, QString>>{{u"tokyo"_s, u"Asia/Tokyo"_s},
                                                          {u"  new YORK "_s, u"America/New_York"_s},
                                                          {u"Asia/Kolkata"_s, u"Asia/Kolkata"_s},
                                                          {u"são paulo"_s, u"America/Sao_Paulo"_s},
                                                          {u"new zealand"_s, u"Pacific/Auckland"_s},
                                                          {u"san franc"_s, u"America/Los_Angeles"_s},
                                                          {u"US/Pacific"_s, u"US/Pacific"_s}}) {
    const QList<ZoneMatch> found = ZoneSearch::find(text, 5);
    ASSERT_FALSE(found.isEmpty()) << text.toStdString();
    EXPECT_EQ(found.first().zone, zone) << text.toStdString();
  }
  EXPECT_TRUE(ZoneSearch::find(u" "_s, 5).isEmpty());
  for (const QString& none : {u"Mars/Base"_s, u"Qwertz"_s}) EXPECT_TRUE(ZoneSearch::find(none, 5).isEmpty());
  EXPECT_EQ(ZoneSearch::find(u"a"_s, 5).size(), 5);
}

TEST(ClockPanelTest, AddsAndRemovesZones) {
  SnapshotStore fixture;
  test::ChangingCommands commands(fixture.store());
  const PanelContext list = fixture.contextOf(u"worldClockList"_s, commands);
  const auto panel = shown(list);
  auto* field = panel->findChild<QLineEdit*>();
  field->setText(u"Mumbai"_s);
  EXPECT_FALSE(panel->findChild<MonthGrid*>()->isVisible());
  EXPECT_TRUE(buttonNamed(*panel, u"Mumbai"_s)) << "what was found is seen";
  press(*field, Qt::Key_Return);
  EXPECT_EQ(optionOf(list, u"zones"_s), u"America/New_York,Europe/London,Asia/Tokyo,Asia/Kolkata"_s);
  EXPECT_TRUE(field->text().isEmpty());
  for (const QString& city : {u"London"_s, u"Tokyo"_s, u"Kolkata"_s}) {
    QAbstractButton* remove = buttonNamed(*panel, u"Remove "_s + city);
    ASSERT_TRUE(remove) << city.toStdString();
    remove->click();
  }
  EXPECT_EQ(optionOf(list, u"zones"_s), u"America/New_York"_s);
  EXPECT_FALSE(buttonNamed(*panel, u"Remove New York"_s)) << "the last one stays";

  const PanelContext clock = fixture.contextOf(u"flipClock"_s, commands);
  const auto other = shown(clock);
  other->findChild<QLineEdit*>()->setText(u"san francisco"_s);
  press(*other->findChild<QLineEdit*>(), Qt::Key_Return);
  EXPECT_EQ(optionOf(clock, u"timezone"_s), u"America/Los_Angeles"_s);
  EXPECT_EQ(optionOf(clock, u"zoneLabel"_s), u"San Francisco"_s);
  // The name of a place goes with it, one that the user gave stays.
  for (const QString& own : {QString(), u"Mum"_s}) {
    if (!own.isEmpty()) fixture.store().set(clock.widget, u"zoneLabel"_s, own);
    other->findChild<QLineEdit*>()->setText(own.isEmpty() ? u"kolkata"_s : u"tokyo"_s);
    press(*other->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_EQ(optionOf(clock, u"zoneLabel"_s), own.isEmpty() ? u"Kolkata"_s : own);
  }
  EXPECT_EQ(optionOf(clock, u"timezone"_s), u"Asia/Tokyo"_s);
  buttonNamed(*other, u"Use local time"_s)->click();
  EXPECT_TRUE(optionOf(clock, u"timezone"_s).isEmpty());
  EXPECT_TRUE(optionOf(clock, u"zoneLabel"_s).isEmpty());
  EXPECT_EQ(commands.announced, (QStringList{u"“London” was removed."_s, u"“Tokyo” was removed."_s,
                                             u"“Kolkata” was removed."_s, u"The clock shows local time."_s}));
  EXPECT_EQ(commands.changed.size(), 8) << "all of it can be taken back";
}

TEST(CalendarPanelTest, ShowsTheChosenDayAndJoins) {
  SnapshotStore fixture;
  test::RecordingCommands commands;
  const auto panel = shown(fixture.contextOf(u"calendar"_s, commands));
  auto* month = panel->findChild<MonthGrid*>();
  EXPECT_EQ(month->chosen(), SnapshotFixture::moment().date());
  QAbstractButton* join = buttonNamed(*panel, u"Join Design review"_s);
  ASSERT_TRUE(join);
  EXPECT_FALSE(buttonNamed(*panel, u"Join Stand-up"_s)) << "it is over";
  join->click();
  EXPECT_EQ(commands.asked, QStringList{u"https://meet.example.org/0"_s});

  for (const auto& [key, day] : std::initializer_list<std::pair<Qt::Key, QDate>>{{Qt::Key_Right, {2026, 11, 25}},
                                                                                 {Qt::Key_Down, {2026, 12, 2}},
                                                                                 {Qt::Key_PageDown, {2027, 1, 2}},
                                                                                 {Qt::Key_Left, {2027, 1, 1}},
                                                                                 {Qt::Key_Home, {2026, 11, 24}},
                                                                                 {Qt::Key_PageUp, {2026, 10, 24}}}) {
    press(*month, key);
    EXPECT_EQ(month->chosen(), day);
    EXPECT_EQ(month->month(), QDate(day.year(), day.month(), 1));
  }
  EXPECT_FALSE(buttonNamed(*panel, u"Join Design review"_s)) << "another day is shown";
  EXPECT_TRUE(month->accessibleDescription().contains(u"24 October 2026"_s));
}

TEST(CalendarPanelTest, LeadsToACalendarWhereThereIsNone) {
  SnapshotStore fixture;
  auto digest = std::make_shared<CalendarDigest>();
  digest->calendarMessage = digest->reminderMessage = u"Enable access."_s;
  for (const QString& kind : {u"calendarWeek"_s, u"remindersNext"_s, u"todayOverview"_s}) {
    test::RecordingCommands commands;
    PanelContext context = fixture.contextOf(kind, commands);
    context.sources = [&digest] {
      return KeptSources::given([&digest] {
        TileSources sources = SnapshotFixture::sources();
        sources.calendar = digest;
        return sources;
      });
    };
    const auto panel = shown(context);
    QAbstractButton* add = buttonNamed(*panel, u"Add Calendar Folder…"_s);
    ASSERT_TRUE(add) << kind.toStdString();
    add->click();
    EXPECT_EQ(commands.asked, QStringList{u"calendar folder"_s});
  }
}

TEST(RemindersPanelTest, TicksOff) {
  SnapshotStore fixture;
  test::RecordingCommands commands;
  const auto panel = shown(fixture.contextOf(u"remindersToday"_s, commands));
  const QList<CheckRow*> rows = panel->findChildren<CheckRow*>();
  ASSERT_EQ(rows.size(), 6);
  rows.first()->click();
  EXPECT_EQ(commands.asked, QStringList{u"done Call the dentist"_s});
  rows.last()->click();
  EXPECT_EQ(commands.asked.last(), u"open Buy stamps"_s);
}

TEST(ClockPanelTest, LeadsToTheWeatherOrToAPlaceForIt) {
  SnapshotStore fixture;
  for (const bool hasPlace : {true, false}) {
    test::RecordingCommands commands;
    PanelContext context = fixture.contextOf(u"todayClock"_s, commands);
    fixture.store().set(context.widget, option::city, hasPlace ? std::optional(u"Kendal"_s) : std::nullopt);
    TileSources sources = SnapshotFixture::sources();
    if (!hasPlace) sources.weather = {};
    context.sources = [&] { return KeptSources::given([&sources] { return sources; }); };
    const auto panel = shown(context);
    auto* weather = panel->findChild<WeatherRow*>();
    ASSERT_TRUE(weather);
    auto* row = weather->findChild<ListRow*>();
    EXPECT_EQ(row->text(), hasPlace ? u"Partly cloudy"_s : u"Weather"_s);
    row->click();
    EXPECT_EQ(commands.asked, QStringList{u"weather %1 %2"_s.arg(context.display, context.widget.toString())});

    // All of it is another panel of the same widget.
    context.as = kind::weatherCurrent.toString();
    const auto whole = shown(context);
    EXPECT_TRUE(buttonNamed(*whole, u"Use Current Location"_s));
    EXPECT_EQ(buttonNamed(*whole, u"Refresh"_s) != nullptr, hasPlace);
  }
  const auto alone = shown(fixture.contextOf(u"digitalClock"_s));
  EXPECT_FALSE(alone->findChild<WeatherRow*>());
}

TEST(OverviewPanelTest, ShowsTheDayAndIsWorkedThrough) {
  SnapshotStore fixture;
  test::RecordingCommands commands;
  PanelContext context = fixture.contextOf(u"todayOverview"_s, commands);
  TileSources sources = SnapshotFixture::sources();
  KeptSources* kept = nullptr;
  context.sources = [&] {
    auto given = KeptSources::given([&sources] { return sources; });
    kept = given.get();
    return given;
  };
  const auto panel = shown(context);
  const auto titles = [&panel](auto* kind) {
    QStringList found;
    for (const auto* row : panel->findChildren<std::remove_pointer_t<decltype(kind)>*>())
      if (row->isVisible()) found << row->text();
    return found.join(u'|');
  };
  CheckRow* const check = nullptr;
  ListRow* const plain = nullptr;
  EXPECT_EQ(panel->findChildren<AgendaRow*>().size(), 4);
  EXPECT_TRUE(buttonNamed(*panel, u"Join Design review"_s));
  EXPECT_EQ(titles(plain), u"Partly cloudy"_s);
  EXPECT_EQ(
      titles(check),
      u"Call the dentist|Send invoice|Fix clipboard icon at 0.5 scale|Reply to Sam about the theme|Book train for Friday"_s);

  buttonNamed(*panel, u"Reply to Sam about the theme"_s)->setFocus();
  buttonNamed(*panel, u"Reply to Sam about the theme"_s)->click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(titles(check), u"Call the dentist|Send invoice|Fix clipboard icon at 0.5 scale|Book train for Friday"_s);
  EXPECT_EQ(panel->focusWidget(), buttonNamed(*panel, u"Book train for Friday"_s)) << "the keyboard goes on from there";
  buttonNamed(*panel, u"Send invoice"_s)->click();
  EXPECT_EQ(commands.asked, QStringList{u"done Send invoice"_s});

  // Behind its row is all of the weather.
  panel->findChild<WeatherRow*>()->findChild<ListRow*>()->click();
  EXPECT_EQ(commands.asked.last(), u"weather %1 %2"_s.arg(context.display, context.widget.toString()));

  // A day of which nothing is known is shown as such.
  sources.weather = {};
  auto digest = std::make_shared<CalendarDigest>();
  digest->problem = u"A file is torn."_s;
  sources.calendar = digest;
  kept->takeAll();
  fixture.store().edit([](DockConfiguration& config) { config.todos.clear(); });
  QCoreApplication::processEvents();
  EXPECT_EQ(titles(plain) + titles(check), u""_s);
  QStringList sentences;
  for (const TextLabel* label : panel->findChildren<TextLabel*>())
    if (label->isVisible()) sentences << label->text();
  EXPECT_EQ(sentences.join(u'|'), u"A file is torn.|No events|Nothing is due.|Nothing to do"_s);
}

}  // namespace
}  // namespace tarnwick
