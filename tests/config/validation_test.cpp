#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>

#include "config/DockConfiguration.h"
#include "support/FileTest.h"

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
  while (made.widgets.size() < widgets) made.widgets.append(widget());
  return made;
}

using Change = std::function<void(DockConfiguration&)>;

Change profiles(qsizetype count) {
  return [=](DockConfiguration& c) {
    c.profiles.clear();
    while (c.profiles.size() < count) c.profiles.append(profile(u"p"_s));
  };
}

Change options(const QMap<QString, QString>& values) {
  return [=](DockConfiguration& c) { c.profiles[0].widgets[0].options = values; };
}

Change position(const QList<double>& value) {
  return [=](DockConfiguration& c) { c.floatingPositions.insert(u"d"_s, value); };
}

Change size(double DockConfiguration::*member, double value) {
  return [=](DockConfiguration& c) { c.*member = value; };
}

Change timing(double DesktopOptions::*member, double value) {
  return [=](DockConfiguration& c) { c.desktop.*member = value; };
}

Change both(const Change& first, const Change& second) {
  return [=](DockConfiguration& c) {
    first(c);
    second(c);
  };
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
      {profiles(0), kCount},
      {profiles(20), ""},
      {both(profiles(21), size(&DockConfiguration::scale, kNaN)), kCount},
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
      {options({{u"token"_s, {}}}), kSecret},
      {options({{u"apiKey"_s, u"x"_s}}), kSecret},
      {options({{u"password"_s, u"x"_s}}), kSecret},
      {options({{u"secret"_s, u"x"_s}}), kSecret},
      {options({{u"Token"_s, u"x"_s}, {u"volume"_s, u"loud"_s}}), ""},
      {options({{u"minutes"_s, {}}, {u"goal"_s, u"999999999999"_s}, {u"deadline"_s, u"1.5e3"_s}}), ""},
      {options({{u"minutes"_s, u"abc"_s}}), "Invalid numeric value for minutes."},
      {options({{u"glasses"_s, u"-1"_s}}), "Invalid numeric value for glasses."},
      {options({{u"standingMinutes"_s, u"1e12"_s}}), "Invalid numeric value for standingMinutes."},
      {options({{u"interval"_s, u"nan"_s}}), "Invalid numeric value for interval."},
      // The faults of one widget come in a fixed order, before those of the next.
      {both(options({{u"elapsed"_s, u"x"_s}, {u"minutes"_s, u"x"_s}, {u"cycleLength"_s, u"x"_s}}),
            [](auto& c) { c.profiles[0].widgets[1].kind = u"?"_s; }),
       "Invalid numeric value for minutes."},
      {options({{u"goal"_s, u"x"_s}, {u"token"_s, u"x"_s}}), kSecret},
      {size(&DockConfiguration::scale, kInfinity), kSize},
      {size(&DockConfiguration::spacing, kNaN), kSize},
      {both(size(&DockConfiguration::edgeGap, -kInfinity), position({})), kSize},
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

TEST(Validation, EveryNumberIsCheckedAndTheirFaultsComeInOrder) {
  const QStringList keys{u"minutes"_s,         u"goal"_s,      u"deadline"_s,     u"remaining"_s,
                         u"elapsed"_s,         u"started"_s,   u"glasses"_s,      u"shortBreak"_s,
                         u"longBreak"_s,       u"sessions"_s,  u"cycleLength"_s,  u"interval"_s,
                         u"lastReminder"_s,    u"wallpaperInterval"_s, u"lastWallpaperChange"_s,
                         u"standingMinutes"_s};
  QMap<QString, QString> faults;
  for (qsizetype i = keys.size() - 1; i >= 0; --i) {
    faults.insert(keys[i], u"x"_s);
    DockConfiguration configuration;
    options(faults)(configuration);
    const QString message = u"Invalid numeric value for "_s + keys[i] + u'.';
    EXPECT_EQ(failureOf([&] { configuration.validate(); }), message.toStdString());
  }
}

TEST(Validation, RepairsWhatItCan) {
  DockConfiguration c;
  c.profiles = {profile(u" a "_s), profile(u"b"_s)};
  c.profiles[1].widgets = {widget(u"notesLatest"_s, {{u"text"_s, u"mine"_s}}),
                           widget(u"notesLatest"_s, {{u"text"_s, {}}})};
  c.activeProfileID = QUuid::createUuid();
  EXPECT_EQ(c.activeIndex(), 0);
  std::tie(c.scale, c.spacing, c.edgeGap) = std::tuple(9, -1, 181);
  c.clipboard = QStringList(30, u"kept"_s) << u"cut"_s;
  c.shelf = QStringList(500, u"kept"_s) << u"cut"_s;
  c.todos.resize(1000);
  DockConfiguration repaired = c;
  repaired.profiles[1].widgets[0].kind = u"scratchNote"_s;
  repaired.activeProfileID = c.profiles[0].id;
  std::tie(repaired.scale, repaired.spacing, repaired.edgeGap) = std::tuple(1.6, 0, 180);
  repaired.clipboard.removeLast();
  repaired.shelf.removeLast();
  c.validate();
  EXPECT_TRUE(c == repaired);

  c.activeProfileID = c.profiles[1].id;
  EXPECT_EQ(c.activeIndex(), 1);
  c.desktop.backgroundBlur = 500;
  std::tie(c.desktop.revealShowDelay, c.desktop.revealHideDelay, c.desktop.triggerSize) = std::tuple(-1, 6, 0);
  repaired = c;
  std::tie(repaired.desktop.revealShowDelay, repaired.desktop.revealHideDelay, repaired.desktop.triggerSize) =
      std::tuple(0, 5, 1);
  c.validate();
  EXPECT_TRUE(c == repaired);

  DeskOptions desk;
  desk.setupPage = 999;
  desk.neverRecord = {u"b"_s, {}, u"a"_s, u"b"_s, QString(256, u'x')};
  for (int i = 0; i < 100; ++i) desk.neverRecord << u"id %1"_s.arg(i);
  c.setDesk(desk);
  c.validate();
  EXPECT_EQ(c.desk().setupPage, 20);
  EXPECT_EQ(c.desk().neverRecord.size(), 100);
  EXPECT_EQ(c.desk().neverRecord.first(3), (QStringList{u"b"_s, u"a"_s, u"id 0"_s}));
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
