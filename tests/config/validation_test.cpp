#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>

#include "base/FileTestSupport.h"
#include "config/DockConfiguration.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

DockWidget widget(const QString& kind = u"cpu"_s, const QMap<QString, QString>& options = {}) {
  return {QUuid::createUuid(), kind, {}, options};
}

DockProfile profile(const QString& name, qsizetype widgets = 0) {
  DockProfile made{QUuid::createUuid(), name, {}};
  for (qsizetype i = 0; i < widgets; ++i) made.widgets.append(widget());
  return made;
}

QList<DockProfile> profiles(qsizetype count) {
  QList<DockProfile> made;
  for (qsizetype i = 0; i < count; ++i) made.append(profile(u"p"_s));
  return made;
}

using Change = std::function<void(DockConfiguration&)>;

Change option(const QString& key, const QString& value) {
  return [=](DockConfiguration& c) { c.profiles[0].widgets[0].options.insert(key, value); };
}

Change position(const QList<double>& value) {
  return [=](DockConfiguration& c) { c.floatingPositions.insert(u"d"_s, value); };
}

Change timing(double DesktopOptions::*member, double value) {
  return [=](DockConfiguration& c) { c.desktop.emplace().*member = value; };
}

TEST(Validation, StopsAtTheFirstFault) {
  const char* const kCount = "Unsupported configuration or invalid profile count.";
  const char* const kName = "Invalid profile name or too many widgets.";
  const char* const kSecret = "Credentials belong in Keychain, not configuration.";
  const char* const kSize = "Invalid display dimensions.";
  const char* const kTiming = "Invalid edge reveal timing.";
  const char* const kPosition = "Invalid saved dock position.";
  const struct {
    Change change;
    const char* message;
  } cases[] = {
      {[](auto&) {}, ""},
      {[](auto& c) { c.schema = 2; }, kCount},
      {[](auto& c) { c.profiles.clear(); }, kCount},
      {[](auto& c) { c.profiles = profiles(20); }, ""},
      {[](auto& c) {
         c.profiles = profiles(21);
         c.profiles[0].name.clear();
         c.scale = kNaN;
       },
       kCount},
      {[](auto& c) {
         c.profiles.append(c.profiles[0]);
         c.profiles[0].name.clear();
       },
       "Duplicate profile identities."},
      {[](auto& c) { c.profiles[0].name = u" \n\u00A0"_s; }, kName},
      {[](auto& c) { c.profiles = {profile(u"p"_s, 150)}; }, ""},
      {[](auto& c) { c.profiles = {profile(u"p"_s, 151)}; }, kName},
      {[](auto& c) {
         c.profiles.append(profile(u"q"_s));
         c.profiles[1].widgets = {c.profiles[0].widgets[0]};
         c.profiles[1].widgets[0].kind = u"ram"_s;
       },
       "Invalid widget identity or type: ram"},
      {[](auto& c) { c.profiles[0].widgets[1].kind = u"Cpu"_s; }, "Invalid widget identity or type: Cpu"},
      {option(u"token"_s, {}), kSecret},
      {option(u"apiKey"_s, u"x"_s), kSecret},
      {option(u"password"_s, u"x"_s), kSecret},
      {option(u"secret"_s, u"x"_s), kSecret},
      {option(u"Token"_s, u"x"_s), ""},
      {option(u"minutes"_s, {}), ""},
      {option(u"minutes"_s, u"999999999999"_s), ""},
      {option(u"deadline"_s, u"1.5e3"_s), ""},
      {option(u"minutes"_s, u"abc"_s), "Invalid numeric value for minutes."},
      {option(u"glasses"_s, u"-1"_s), "Invalid numeric value for glasses."},
      {option(u"standingMinutes"_s, u"1e12"_s), "Invalid numeric value for standingMinutes."},
      {option(u"goal"_s, u"inf"_s), "Invalid numeric value for goal."},
      {option(u"interval"_s, u"nan"_s), "Invalid numeric value for interval."},
      {option(u"interval"_s, u" 5"_s), "Invalid numeric value for interval."},
      {option(u"volume"_s, u"loud"_s), ""},
      // The faults of one widget come in a fixed order, before those of the next.
      {[](auto& c) {
         c.profiles[0].widgets[0].options = {
             {u"elapsed"_s, u"x"_s}, {u"minutes"_s, u"x"_s}, {u"cycleLength"_s, u"x"_s}};
         c.profiles[0].widgets[1].kind = u"?"_s;
       },
       "Invalid numeric value for minutes."},
      {[](auto& c) {
         c.profiles[0].widgets[0].options = {{u"goal"_s, u"x"_s}, {u"token"_s, u"x"_s}};
       },
       kSecret},
      {[](auto& c) { c.scale = kInfinity; }, kSize},
      {[](auto& c) { c.spacing = kNaN; }, kSize},
      {[](auto& c) {
         c.edgeGap = -kInfinity;
         c.floatingPositions.insert(u"d"_s, {});
       },
       kSize},
      {timing(&DesktopOptions::revealShowDelay, kNaN), kTiming},
      {timing(&DesktopOptions::revealHideDelay, kInfinity), kTiming},
      {timing(&DesktopOptions::triggerSize, kNaN), kTiming},
      {position({1}), kPosition},
      {position({1, 2, 3}), kPosition},
      {position({1e7, 0}), kPosition},
      {position({0, kNaN}), kPosition},
      {position({9999999, -9999999}), ""},
  };
  int row = 0;
  for (const auto& c : cases) {
    DockConfiguration configuration;
    c.change(configuration);
    EXPECT_EQ(failureOf([&] { configuration.validate(); }), c.message) << "row " << row;
    ++row;
  }
}

TEST(Validation, RepairsWhatItCan) {
  DockConfiguration c;
  c.profiles = {profile(u" a "_s), profile(u"b"_s)};
  c.profiles[1].widgets = {widget(u"notesLatest"_s, {{u"text"_s, u"mine"_s}}),
                           widget(u"notesLatest"_s, {{u"text"_s, {}}})};
  c.activeProfileID = QUuid::createUuid();
  c.scale = 9;
  c.spacing = -1;
  c.edgeGap = 181;
  for (int i = 0; i < 31; ++i) c.clipboard.append(QString::number(i));
  for (int i = 0; i < 501; ++i) c.shelf.append(QString::number(i));
  c.todos.resize(1000);
  c.validate();

  EXPECT_EQ(c.profiles[0].name, u" a "_s);
  EXPECT_EQ(c.profiles[1].widgets[0].kind, u"scratchNote"_s);
  EXPECT_EQ(c.profiles[1].widgets[0].options.value(u"text"_s), u"mine"_s);
  EXPECT_EQ(c.profiles[1].widgets[1].kind, u"notesLatest"_s);
  EXPECT_EQ(c.activeProfileID, c.profiles[0].id);
  EXPECT_EQ(c.scale, 1.6);
  EXPECT_EQ(c.spacing, 0);
  EXPECT_EQ(c.edgeGap, 180);
  EXPECT_EQ(c.desktop, DesktopOptions());
  EXPECT_EQ(c.clipboard.size(), 30);
  EXPECT_EQ(c.clipboard.last(), u"29"_s);
  EXPECT_EQ(c.shelf.size(), 500);
  EXPECT_EQ(c.todos.size(), 1000);

  c.activeProfileID = c.profiles[1].id;
  c.desktop->revealShowDelay = -1;
  c.desktop->revealHideDelay = 6;
  c.desktop->triggerSize = 0;
  c.desktop->backgroundBlur = 500;
  c.validate();
  EXPECT_EQ(c.activeIndex(), 1);
  EXPECT_EQ(c.desktop->revealShowDelay, 0);
  EXPECT_EQ(c.desktop->revealHideDelay, 5);
  EXPECT_EQ(c.desktop->triggerSize, 1);
  EXPECT_EQ(c.desktop->backgroundBlur, 500);
}

TEST(Configuration, AnswersWhatIsDerivedFromIt) {
  DockConfiguration c;
  c.profiles = profiles(3);
  EXPECT_EQ(c.activeIndex(), 0);
  c.activeProfileID = QUuid::createUuid();
  EXPECT_EQ(c.activeIndex(), 0);
  EXPECT_EQ(c.desktopOptions(), DesktopOptions());

  const DockWidget w =
      widget(u"cpu"_s, {{u"goal"_s, u"2.5"_s}, {u"bad"_s, u"2 "_s}, {u"big"_s, u"1e999"_s}, {u"none"_s, {}}});
  EXPECT_EQ(w.number(u"goal"_s, 8), 2.5);
  for (const auto& key : {u"bad"_s, u"big"_s, u"none"_s, u"absent"_s}) EXPECT_EQ(w.number(key, 8), 8);
}

TEST(Configuration, ChoosesTheScaleOfTemperatures) {
  const struct {
    std::optional<QString> unit;
    bool older;
    bool us;
    bool wanted;
  } cases[] = {
      {{}, true, false, true},          {{}, false, true, false},           {u"auto"_s, false, true, true},
      {u"auto"_s, true, false, false},  {u"celsius"_s, true, true, false},  {u"fahrenheit"_s, false, false, true},
      {u"kelvin"_s, true, false, true}, {u"Celsius"_s, false, true, false},
  };
  for (const auto& c : cases) {
    DockConfiguration configuration;
    configuration.temperatureUnit = c.unit;
    configuration.fahrenheit = c.older;
    EXPECT_EQ(configuration.weatherUsesFahrenheit(c.us ? QLocale::ImperialUSSystem : QLocale::ImperialUKSystem),
              c.wanted);
  }

  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_TRUE(DockConfiguration().fahrenheit);
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  EXPECT_FALSE(DockConfiguration().fahrenheit);
  QLocale::setDefault(before);
}

TEST(Configuration, StartsWithFreshIdentities) {
  const DockProfile first = DockProfile::initial();
  QStringList kinds;
  QSet<QUuid> identities{first.id, DockProfile::initial().id};
  for (const DockWidget& w : first.widgets) {
    kinds.append(w.kind);
    identities.insert(w.id);
    EXPECT_TRUE(w.title.isEmpty() && w.options.isEmpty());
  }
  EXPECT_EQ(kinds, (QStringList{u"applications"_s, u"digitalClock"_s, u"analogClassicLight"_s, u"weatherCurrent"_s,
                                u"cpu"_s, u"ram"_s, u"systemQuickToggles"_s}));
  EXPECT_EQ(identities.size(), 9);
}

}  // namespace
}  // namespace tarnwick
