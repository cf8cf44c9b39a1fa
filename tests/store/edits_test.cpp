#include <gtest/gtest.h>

#include "facilities/ActiveSets.h"
#include "store/DocumentChange.h"
#include "store/DocumentEdits.h"
#include "store/SettingsChange.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

DockWidget widgetOf(const QString& kind) {
  DockWidget widget;
  widget.id = QUuid::createUuid();
  widget.kind = kind;
  return widget;
}

QStringList kindsOf(const DockProfile& profile) {
  QStringList kinds;
  for (const DockWidget& widget : profile.widgets) kinds << widget.kind;
  return kinds;
}

DockConfiguration twoProfiles() {
  DockConfiguration config;
  config.profiles[0].widgets = {widgetOf(u"cpu"_s), widgetOf(u"pinnedWindow"_s), widgetOf(u"ram"_s),
                                widgetOf(u"timer"_s)};
  DocumentEdits::newProfile(config, u"Work"_s, false);
  config.activeProfileID = config.profiles[0].id;
  return config;
}

TEST(Edits, ProfilesStayWithinTheirLimits) {
  DockConfiguration config;
  ASSERT_TRUE(DocumentEdits::newProfile(config, u"  "_s, true));
  EXPECT_EQ(config.profiles[1].name, u"New Profile"_s);
  EXPECT_EQ(config.activeProfileID, config.profiles[1].id);
  EXPECT_EQ(kindsOf(config.profiles[1]), kindsOf(config.profiles[0]));
  for (qsizetype i = 0; i < 7; ++i) EXPECT_NE(config.profiles[0].widgets[i].id, config.profiles[1].widgets[i].id);

  while (config.profiles.size() < 20) ASSERT_TRUE(DocumentEdits::newProfile(config, u"P"_s, false));
  const DockConfiguration full = config;
  EXPECT_FALSE(DocumentEdits::newProfile(config, u"one more"_s, false));
  EXPECT_EQ(config, full);
}

TEST(Edits, DeletingAProfileTakesItsRulesAndPins) {
  DockConfiguration config = twoProfiles();
  DocumentEdits::newProfile(config, u"Studio"_s, false);
  const QUuid work = config.profiles[1].id;
  const QUuid studio = config.profiles[2].id;
  DocumentEdits::pin(config, u"L"_s, work);
  DocumentEdits::pin(config, u"R"_s, studio);
  ProfileRule rule;
  rule.profileID = work;
  config.desktop.profileRules = {rule};
  EXPECT_EQ(DocumentEdits::profileIndex(config, u"L"_s), 1);
  EXPECT_TRUE(DocumentEdits::isPinned(config, u"L"_s));

  // The active profile gives way to the one that takes its index, and at the end to the last.
  config.activeProfileID = work;
  ASSERT_TRUE(DocumentEdits::deleteProfile(config, work));
  EXPECT_EQ(config.activeProfileID, studio);
  EXPECT_TRUE(config.desktop.profileRules.isEmpty());
  EXPECT_FALSE(DocumentEdits::isPinned(config, u"L"_s));
  EXPECT_EQ(DocumentEdits::profileIndex(config, u"R"_s), 1);
  ASSERT_TRUE(DocumentEdits::deleteProfile(config, studio));
  EXPECT_EQ(config.activeProfileID, config.profiles[0].id);
  EXPECT_FALSE(DocumentEdits::deleteProfile(config, config.profiles[0].id));
}

TEST(Edits, APinToAProfileThatIsGoneFollowsTheActiveOne) {
  DockConfiguration config = twoProfiles();
  DesktopOptions options = config.desktopOptions();
  options.displayProfiles = {{u"L"_s, QUuid::createUuid().toString()}, {u"R"_s, u"not an identity"_s}};
  config.desktop = options;
  EXPECT_EQ(DocumentEdits::profileIndex(config, u"L"_s), 0);
  EXPECT_FALSE(DocumentEdits::isPinned(config, u"R"_s));
}

TEST(Edits, HiddenWidgetsFollowTheirNeighbourThroughAReorder) {
  DockConfiguration config = twoProfiles();
  const auto widgets = config.profiles[0].widgets;
  ASSERT_TRUE(DocumentEdits::arrange(config, 0, {widgets[3].id, widgets[2].id, widgets[0].id}));
  EXPECT_EQ(kindsOf(config.profiles[0]), (QStringList{u"timer"_s, u"ram"_s, u"cpu"_s, u"pinnedWindow"_s}));
  // An order that does not name what is there loses nothing.
  ASSERT_FALSE(DocumentEdits::arrange(config, 0, {widgets[0].id, QUuid::createUuid(), widgets[0].id}));
  EXPECT_EQ(config.profiles[0].widgets.size(), 4);
}

TEST(Edits, OptionsMovesAndTodos) {
  DockConfiguration config = twoProfiles();
  const QUuid timer = config.profiles[0].widgets[3].id;
  EXPECT_TRUE(DocumentEdits::setOption(config, timer, u"minutes"_s, u"5"_s));
  EXPECT_FALSE(DocumentEdits::setOption(config, timer, u"minutes"_s, u"5"_s));
  EXPECT_EQ(DocumentEdits::find(config, timer)->options.value(u"minutes"_s), u"5"_s);
  EXPECT_TRUE(DocumentEdits::setOption(config, timer, u"minutes"_s, std::nullopt));
  EXPECT_FALSE(DocumentEdits::setOption(config, QUuid::createUuid(), u"minutes"_s, u"5"_s));

  EXPECT_TRUE(DocumentEdits::move(config, timer, -2));
  EXPECT_EQ(kindsOf(config.profiles[0]), (QStringList{u"cpu"_s, u"timer"_s, u"pinnedWindow"_s, u"ram"_s}));
  EXPECT_TRUE(DocumentEdits::move(config, timer, -9));
  EXPECT_FALSE(DocumentEdits::move(config, timer, -1));

  EXPECT_FALSE(DocumentEdits::addTodo(config, u" \n"_s));
  ASSERT_TRUE(DocumentEdits::addTodo(config, u" Reply to Sam\n"_s));
  EXPECT_EQ(config.todos.first().text, u"Reply to Sam"_s);
  EXPECT_TRUE(DocumentEdits::toggleTodo(config, config.todos.first().id));
  EXPECT_TRUE(config.todos.first().completed);
}

TEST(SettingsChange, TakesBackItsOwnFieldsAndNothingOfOthers) {
  using Config = DockConfiguration;
  using Edit = void (*)(Config&);
  const Config start = twoProfiles();
  struct Case {
    const char* name;
    Edit change;
    Edit others;  ///< What happens after it.
    Edit left;    ///< What the start then differs by.
  };
  static constexpr auto nothing = [](Config&) {};
  const Case cases[] = {
      {"two plain fields",
       [](Config& c) {
         c.layout = DockLayout::Floating;
         c.tileBorders = false;
       },
       [](Config& c) { c.scale = 1.5; }, [](Config& c) { c.scale = 1.5; }},
      {"a field that another changed since", [](Config& c) { c.layout = DockLayout::Floating; },
       [](Config& c) { c.layout = DockLayout::Swap; }, [](Config& c) { c.layout = DockLayout::Swap; }},
      {"one of the later options", [](Config& c) { c.desktop.triggerSize = 9; },
       [](Config& c) { c.desktop.displayNames[u"L"_s] = u"Left"_s; },
       [](Config& c) { c.desktop.displayNames[u"L"_s] = u"Left"_s; }},
      {"one key of a map", [](Config& c) { DocumentEdits::pin(c, u"L"_s, c.profiles[1].id); },
       [](Config& c) { DocumentEdits::pin(c, u"R"_s, c.profiles[1].id); },
       [](Config& c) { DocumentEdits::pin(c, u"R"_s, c.profiles[1].id); }},
      {"a name, while tiles go on", [](Config& c) { c.profiles[0].name = u"Home"_s; },
       [](Config& c) { c.profiles[0].widgets.removeLast(); }, [](Config& c) { c.profiles[0].widgets.removeLast(); }},
      {"an order", [](Config& c) { c.profiles.swapItemsAt(0, 1); }, nothing, nothing},
      {"a new profile", [](Config& c) { DocumentEdits::newProfile(c, u"Third"_s, true); }, nothing, nothing},
      {"a deleted one", [](Config& c) { DocumentEdits::deleteProfile(c, c.profiles[0].id); }, nothing, nothing},
      {"the last one that is left", [](Config& c) { DocumentEdits::newProfile(c, {}, false); },
       [](Config& c) { c.profiles = {c.profiles[2]}; }, [](Config& c) { c.profiles.clear(); }},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Config config = start;
    each.change(config);
    const SettingsChange made(start, config);
    each.others(config);
    const QList<DockProfile> there = config.profiles;
    made.takeBack(config);
    Config wanted = start;
    each.left(wanted);
    if (wanted.profiles.isEmpty()) wanted.profiles = there;
    EXPECT_EQ(config, wanted);
  }
  Config tiles = start;
  tiles.profiles[0].widgets.clear();
  EXPECT_TRUE(SettingsChange(start, tiles).isEmpty());
}

TEST(DocumentChange, IsTakenBackAsLongAsNothingThatItBroughtWasChanged) {
  using Config = DockConfiguration;
  using Edit = void (*)(Config&);
  Config start = twoProfiles();
  start.validate();
  start.profiles[0].widgets[3].options = {{u"minutes"_s, u"5"_s}, {u"text"_s, u"old"_s}};
  DocumentEdits::addTodo(start, u"Old"_s);
  static constexpr auto nothing = [](Config&) {};
  struct Case {
    const char* name;
    Edit brought;
    Edit since;
    bool stands;
  };
  const Case cases[] = {
      {"nothing since", [](Config& c) { c.scale = 1.5; }, nothing, true},
      {"another setting", [](Config& c) { c.scale = 1.5; }, [](Config& c) { c.spacing = 9; }, true},
      {"the same setting", [](Config& c) { c.scale = 1.5; }, [](Config& c) { c.scale = 1.2; }, false},
      {"a note in a tile that both have", [](Config& c) { c.profiles[0].widgets[0].title = u"A"_s; },
       [](Config& c) { c.profiles[0].widgets[3].options[u"text"_s] = u"new"_s; }, true},
      {"another option of a tile that it changed",
       [](Config& c) { c.profiles[0].widgets[3].options.remove(u"minutes"_s); },
       [](Config& c) { c.profiles[0].widgets[3].options[u"text"_s] = u"new"_s; }, true},
      {"the same option", [](Config& c) { c.profiles[0].widgets[3].options[u"minutes"_s] = u"7"_s; },
       [](Config& c) { c.profiles[0].widgets[3].options[u"minutes"_s] = u"8"_s; }, false},
      {"a new to-do, beside some that it took away", [](Config& c) { c.todos.clear(); },
       [](Config& c) { DocumentEdits::addTodo(c, u"New"_s); }, true},
      {"a to-do that it brought is done", [](Config& c) { DocumentEdits::addTodo(c, u"Brought"_s); },
       [](Config& c) { c.todos.last().completed = true; }, false},
      {"a new tile", [](Config& c) { c.profiles[0].widgets.removeFirst(); },
       [](Config& c) { c.profiles[0].widgets.append(widgetOf(u"ram"_s)); }, true},
      {"a tile that it brought is gone", [](Config& c) { c.profiles[0].widgets.prepend(widgetOf(u"ram"_s)); },
       [](Config& c) { c.profiles[0].widgets.removeFirst(); }, false},
      {"tiles moved, as they did not with it", [](Config& c) { c.scale = 1.5; },
       [](Config& c) { c.profiles[0].widgets.move(0, 2); }, true},
      {"tiles moved, as they did with it", [](Config& c) { c.profiles[0].widgets.move(3, 0); },
       [](Config& c) { c.profiles[0].widgets.move(0, 2); }, false},
      {"profiles of another computer", [](Config& c) { c.profiles = twoProfiles().profiles; }, nothing, true},
      {"a profile since", [](Config& c) { c.profiles = twoProfiles().profiles; },
       [](Config& c) {
         c.profiles.append({QUuid::createUuid(), u"Mine"_s, {}});
       },
       true},
      {"a note in a profile of another computer", [](Config& c) { c.profiles = twoProfiles().profiles; },
       [](Config& c) { c.profiles[0].widgets[0].options[u"text"_s] = u"new"_s; }, false},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    Config brought = start;
    each.brought(brought);
    brought.validate();
    const DocumentChange change(start, brought);
    Config now = brought;
    each.since(now);
    EXPECT_EQ(change.stands(now), each.stands);
    const auto back = change.takenBack(now);
    ASSERT_EQ(back.has_value(), each.stands);
    if (!back) continue;
    // What was done since is all that differs from the start, and made again it is all that differs from the file.
    EXPECT_EQ(DocumentChange(brought, start).takenBack(*back), now);
    EXPECT_EQ(*back == start, now == brought);
  }
}

TEST(DocumentChange, WhatGoesOnByItselfIsNoChangeOfWhatItBrought) {
  using Options = QMap<QString, QString>;
  struct Case {
    const char* name;
    Options start, brought, now;
    Options back;
  };
  const Case cases[] = {
      {"as it was brought",
       {{u"deadline"_s, u"10"_s}},
       {{u"deadline"_s, u"20"_s}},
       {{u"deadline"_s, u"20"_s}},
       {{u"deadline"_s, u"10"_s}}},
      {"a timer ran out",
       {{u"remaining"_s, u"90"_s}},
       {{u"deadline"_s, u"20"_s}},
       {{u"remaining"_s, u"0"_s}},
       {{u"remaining"_s, u"0"_s}}},
      {"a phase came to its end",
       {},
       {{u"deadline"_s, u"20"_s}, {u"phase"_s, u"seated"_s}},
       {{u"deadline"_s, u"30"_s}, {u"phase"_s, u"standing"_s}},
       {{u"deadline"_s, u"30"_s}, {u"phase"_s, u"standing"_s}}},
      {"a run of a duration that goes",
       {{u"minutes"_s, u"5"_s}},
       {{u"minutes"_s, u"7"_s}},
       {{u"minutes"_s, u"7"_s}, {u"deadline"_s, u"30"_s}},
       {{u"minutes"_s, u"5"_s}}},
      {"a reminder, and nothing drunk",
       {{u"glasses"_s, u"5"_s}, {u"day"_s, u"2026-11-24"_s}},
       {{u"lastReminder"_s, u"1"_s}},
       {{u"lastReminder"_s, u"2"_s}},
       {{u"glasses"_s, u"5"_s}, {u"day"_s, u"2026-11-24"_s}, {u"lastReminder"_s, u"2"_s}}},
      {"glasses",
       {{u"glasses"_s, u"5"_s}},
       {{u"glasses"_s, u"1"_s}},
       {{u"glasses"_s, u"2"_s}},
       {{u"glasses"_s, u"2"_s}}},
      {"days ticked and not",
       {{u"history"_s, u"a,b,c"_s}},
       {{u"history"_s, u"c,d"_s}},
       {{u"history"_s, u"d,e"_s}},
       {{u"history"_s, u"a,b,e"_s}}},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const auto with = [config = twoProfiles()](const Options& options) {
      DockConfiguration changed = config;
      changed.profiles[0].widgets[3].options = options;
      changed.validate();
      return changed;
    };
    const DocumentChange change(with(each.start), with(each.brought));
    EXPECT_TRUE(change.stands(with(each.now)));
    const auto back = change.takenBack(with(each.now));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, with(each.back));
    EXPECT_TRUE(change.reversed().takenBack(*back)) << "it can be made again";
  }
}

TEST(DocumentChange, AProfileThatARuleLedToIsNoChangeAndOneThatTheUserChoseIs) {
  DockConfiguration start = twoProfiles();
  DocumentEdits::newProfile(start, u"Studio"_s, false);
  start.activeProfileID = start.profiles[0].id;
  ProfileRule rule;
  rule.id = QUuid::createUuid();
  rule.profileID = start.profiles[2].id;
  for (const bool enabled : {true, false}) {
    rule.enabled = enabled;
    DockConfiguration brought = start;
    brought.activeProfileID = start.profiles[1].id;
    brought.desktop.profileRules = {rule};
    const DocumentChange change(start, brought);
    DockConfiguration now = brought;
    now.activeProfileID = start.profiles[2].id;
    EXPECT_EQ(change.stands(now), enabled);
    const auto back = change.takenBack(now);
    ASSERT_EQ(back.has_value(), enabled);
    if (!back) continue;
    EXPECT_TRUE(back->desktop.profileRules.isEmpty());
    EXPECT_EQ(back->activeProfileID, start.profiles[2].id);
    EXPECT_EQ(change.reversed().takenBack(*back), now);
  }
  // It goes with what it was brought by.
  DockConfiguration brought = start;
  brought.profiles.append({QUuid::createUuid(), u"Away"_s, {}});
  rule.profileID = brought.profiles.last().id;
  rule.enabled = true;
  brought.desktop.profileRules = {rule};
  DockConfiguration now = brought;
  now.activeProfileID = rule.profileID;
  EXPECT_EQ(DocumentChange(start, brought).takenBack(now), start);
}

TEST(ActiveSets, NameWhatTheWidgetsNeed) {
  DockWidget claude = widgetOf(u"analyticsClaudeCodeStatus"_s);
  claude.options.insert(u"connectionMode"_s, u"claudeActivity"_s);
  DockWidget studio = widgetOf(u"youtubeStudio"_s);
  studio.options.insert(u"connectionMode"_s, u"native"_s);
  DockWidget clock = widgetOf(u"digitalClock"_s);
  clock.options.insert(u"connectionMode"_s, u"ignored"_s);
  const ActiveSets sets = ActiveSets::of({claude, studio, clock, widgetOf(u"temperatureChart"_s)});
  EXPECT_EQ(sets.kinds.size(), 4);
  EXPECT_EQ(sets.families, (QSet<QString>{u"integration"_s, u"studio"_s, u"clock"_s, u"temperature"_s}));
  EXPECT_EQ(sets.connectionModes, (QSet<QString>{u"claudeActivity"_s, u"native"_s}));
}

}  // namespace
}  // namespace tarnwick
