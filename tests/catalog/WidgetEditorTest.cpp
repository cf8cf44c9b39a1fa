#include "store/WidgetEditor.h"

#include <gtest/gtest.h>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Options = QMap<QString, QString>;

const auto kCodex = u"Choose your installed Codex executable."_s;
const auto kDuration = u"Enter a duration between 0 and 1440 minutes."_s;
const auto kGoal = u"Enter a goal between 1 and 100 glasses."_s;
const auto kEndpoint = u"Use a valid HTTPS endpoint without credentials in its URL."_s;
const auto kProvider = u"Enter a GitHub username."_s;

DockWidget widgetOf(const QString& kind, const Options& options = {}) {
  static const QUuid id = QUuid::createUuid();
  return {.id = id, .kind = kind, .title = QString(), .options = options};
}

/// A machine with one program, and a provider that wants a user name and sets its own address.
WidgetEditor::Hooks hooksOf(const QString& defaultCodex = u"/opt/codex"_s) {
  return {.isExecutable = [](const QString& path) { return path == u"/opt/codex" || path == u"/home/u/codex"; },
          .defaultCodexExecutable = defaultCodex,
          .configured =
              [](DockWidget widget) {
                if (widget.options.value(u"username"_s).isEmpty()) throw DomainError::invalid(kProvider);
                widget.options.insert(u"endpoint"_s, u"https://api.example.com/"_s);
                return widget;
              }};
}

/// The sentence that saving fails with; empty when it succeeds.
QString failureOf(const DockWidget& edited, const WidgetEditor::Hooks& hooks = hooksOf()) {
  try {
    WidgetEditor::save(edited, widgetOf(edited.kind), false, hooks);
    return {};
  } catch (const DomainError& error) {
    return error.message();
  }
}

TEST(WidgetEditor, RefusesWhatItsRulesForbid) {
  struct Case {
    QString kind;
    Options options;
    QString failure;
  };
  const auto minutes = [](const QString& text) { return Options{{u"minutes"_s, text}}; };
  const auto goal = [](const QString& text) { return Options{{u"goal"_s, text}}; };
  const auto endpoint = [](const QString& text) { return Options{{u"endpoint"_s, text}}; };
  const auto codex = [](const QString& text) {
    return Options{{u"connectionMode"_s, u"codexLocal"_s}, {u"codexExecutable"_s, text}};
  };
  const Case cases[] = {
      {u"timer"_s, {}, {}},
      {u"timer"_s, minutes({}), {}},
      {u"timer"_s, minutes(u"1440"_s), {}},
      {u"timer"_s, minutes(u"0.5"_s), {}},
      {u"timer"_s, minutes(u"1440.5"_s), kDuration},
      {u"timer"_s, minutes(u"0"_s), kDuration},
      {u"pomodoro"_s, minutes(u"-1"_s), kDuration},
      {u"posture"_s, minutes(u"abc"_s), kDuration},
      {u"exercise"_s, minutes(u"25 min"_s), kDuration},
      {u"timer"_s, minutes(u"inf"_s), kDuration},
      {u"timer"_s, minutes(u"nan"_s), kDuration},
      {u"timer"_s, minutes(u" "_s), kDuration},
      {u"stopwatch"_s, minutes(u"abc"_s), {}},
      {u"digitalClock"_s, minutes(u"abc"_s), {}},
      {u"drinkWater"_s, {}, {}},
      {u"drinkWater"_s, goal({}), {}},
      {u"drinkWater"_s, goal(u"1"_s), {}},
      {u"drinkWater"_s, goal(u"100"_s), {}},
      {u"drinkWater"_s, goal(u"101"_s), kGoal},
      {u"drinkWater"_s, goal(u"0"_s), kGoal},
      {u"drinkWater"_s, goal(u"8.0"_s), kGoal},
      {u"drinkWater"_s, goal(u" 8"_s), kGoal},
      {u"drinkWater"_s, goal(u"99999999999"_s), kGoal},
      {u"habitTracker"_s, goal(u"0"_s), {}},
      {u"homeAssistant"_s, endpoint({}), {}},
      {u"homeAssistant"_s, endpoint(u"https://home.example:8123/api?x=1"_s), {}},
      {u"homeAssistant"_s, endpoint(u"http://home.example/"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"home.example"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"https:///api"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"https://user@home.example/"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"https://:secret@home.example/"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"https://@home.example/"_s), kEndpoint},
      {u"homeAssistant"_s, endpoint(u"https://home.example:99999/"_s), kEndpoint},
      {u"xStudio"_s, endpoint(u"http://x.example/"_s), kEndpoint},
      {u"kindOfANewerVersion"_s, endpoint(u"http://x.example/"_s), kEndpoint},
      {u"bookmarks"_s, endpoint(u"http://x.example/"_s), {}},
      {u"codexUsage"_s, codex({}), {}},
      {u"codexUsage"_s, codex(u"/home/u/codex"_s), {}},
      {u"codexUsageGauge"_s, codex(u"/home/u/notes.txt"_s), kCodex},
      {u"claudePlanUsage"_s, codex(u"/home/u/notes.txt"_s), {}},
      {u"codexUsage"_s, {{u"codexExecutable"_s, u"/home/u/notes.txt"_s}}, {}},
      {u"analyticsGitHub"_s, {{u"connectionMode"_s, u"native"_s}}, kProvider},
      {u"analyticsGitHub"_s, {{u"connectionMode"_s, u"custom"_s}}, {}},
      // The provider speaks before the address is looked at.
      {u"analyticsGitHub"_s, {{u"connectionMode"_s, u"native"_s}, {u"endpoint"_s, u"ftp://x"_s}}, kProvider},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.kind.toStdString() + ' ' + one.options.values().join(u' ').toStdString());
    EXPECT_EQ(failureOf(widgetOf(one.kind, one.options)), one.failure);
  }
  EXPECT_EQ(failureOf(widgetOf(u"codexUsage"_s, codex({})), hooksOf(u"/nowhere/codex"_s)), kCodex);
}

TEST(WidgetEditor, StoresWhatTheRulesFilledIn) {
  const auto saved = [](const DockWidget& widget) {
    return WidgetEditor::save(widget, widgetOf(widget.kind), false, hooksOf()).widget;
  };
  const DockWidget codex = saved(widgetOf(u"codexUsage"_s, {{u"connectionMode"_s, u"codexLocal"_s}}));
  EXPECT_EQ(codex.options.value(u"codexExecutable"_s), u"/opt/codex");
  const DockWidget native = saved(widgetOf(u"analyticsGitHub"_s, {{u"connectionMode"_s, u"native"_s},
                                                                  {u"username"_s, u"someone"_s},
                                                                  {u"endpoint"_s, u"http://elsewhere.example"_s}}));
  EXPECT_EQ(native.options.value(u"endpoint"_s), u"https://api.example.com/");
  const DockWidget plain = widgetOf(u"scratchNote"_s, {{u"text"_s, u"milk"_s}});
  EXPECT_EQ(saved(plain), plain);
}

TEST(WidgetEditor, OnlyAChangedDurationStartsATimerOver) {
  struct Case {
    Options stored;
    Options edited;
    bool keepsRunning;
  };
  const auto minutes = [](const QString& text) { return Options{{u"minutes"_s, text}}; };
  const Case cases[] = {
      {minutes(u"10"_s), minutes(u"10"_s), true},
      {minutes(u"10"_s), minutes(u"10.0"_s), true},
      {{}, minutes(u"25"_s), true},
      {minutes(u"25"_s), minutes({}), true},
      {minutes(u"10"_s), minutes(u"11"_s), false},
      {minutes(u"10"_s), {}, false},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.edited.value(u"minutes"_s).toStdString());
    DockWidget stored = widgetOf(u"pomodoro"_s, one.stored);
    stored.options.insert({{u"deadline"_s, u"800"_s}, {u"remaining"_s, u"30"_s}, {u"sessions"_s, u"2"_s}});
    const DockWidget saved = WidgetEditor::save(widgetOf(u"pomodoro"_s, one.edited), stored, false, hooksOf()).widget;
    EXPECT_EQ(saved.options.contains(u"deadline"_s), one.keepsRunning);
    EXPECT_EQ(saved.options.contains(u"remaining"_s), one.keepsRunning);
    EXPECT_EQ(saved.options.value(u"sessions"_s), u"2");
    EXPECT_EQ(saved.options.value(u"minutes"_s), one.edited.value(u"minutes"_s));
  }
}

TEST(WidgetEditor, WhatATileCountedWhileTheFormWasOpenIsKept) {
  const DockWidget opened = widgetOf(u"drinkWater"_s, {{u"glasses"_s, u"3"_s}, {u"lastReminder"_s, u"5"_s}});
  DockWidget edited = opened;
  edited.options.insert(u"goal"_s, u"9"_s);
  const DockWidget stored = widgetOf(u"drinkWater"_s, {{u"glasses"_s, u"4"_s}});
  EXPECT_EQ(WidgetEditor::save(edited, stored, false, hooksOf()).widget.options,
            (Options{{u"goal"_s, u"9"_s}, {u"glasses"_s, u"4"_s}}));
}

TEST(WidgetEditor, TellsWhatIsToBeDoneAfterwards) {
  struct Case {
    QString kind;
    Options options;
    bool saveCredential;
    bool refresh;
  };
  const Case cases[] = {
      {u"homeAssistant"_s, {{u"endpoint"_s, u"https://home.example/"_s}}, true, true},
      {u"youtubeStudio"_s, {}, true, true},
      {u"weatherWind"_s, {}, false, true},
      {u"todayClock"_s, {}, false, false},
      {u"todayClock"_s, {{u"city"_s, u"Chicago"_s}}, false, true},
      {u"digitalClock"_s, {{u"city"_s, u"Chicago"_s}}, false, false},
      {u"mailLatest"_s, {}, false, false},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.kind.toStdString());
    const DockWidget widget = widgetOf(one.kind, one.options);
    const auto outcome = WidgetEditor::save(widget, widgetOf(one.kind), true, hooksOf());
    EXPECT_EQ(outcome.saveCredential, one.saveCredential);
    EXPECT_EQ(outcome.refresh, one.refresh);
    EXPECT_FALSE(WidgetEditor::save(widget, widgetOf(one.kind), false, hooksOf()).saveCredential);
  }
}

}  // namespace
}  // namespace tarnwick
