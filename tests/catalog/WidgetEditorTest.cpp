#include "store/WidgetEditor.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Options = QMap<QString, QString>;

constexpr auto kCodex = "Choose your installed Codex executable.";
constexpr auto kDuration = "Enter a duration between 0 and 1440 minutes.";
constexpr auto kGoal = "Enter a goal between 1 and 100 glasses.";
constexpr auto kEndpoint = "Use a valid HTTPS endpoint without credentials in its URL.";
constexpr auto kProvider = "Enter a GitHub username.";

DockWidget widgetOf(const QString& kind, const Options& options = {}) {
  static const QUuid id = QUuid::createUuid();
  return {.id = id, .kind = kind, .title = QString(), .options = options};
}

/// A machine with one program, and a provider that wants a user name and sets its own address.
struct Machine final : WidgetEditor::Hooks {
  explicit Machine(const QString& codex = u"/opt/codex"_s) : defaultCodex(codex) {}
  bool isExecutable(const QString& path) const override { return path == u"/opt/codex" || path == u"/home/u/codex"; }
  QString defaultCodexExecutable() const override { return defaultCodex; }
  DockWidget configured(const DockWidget& widget) const override {
    if (widget.options.value(u"username"_s).isEmpty()) throw DomainError::invalid(QString::fromLatin1(kProvider));
    DockWidget stored = widget;
    stored.options.insert(u"endpoint"_s, u"https://api.example.com/"_s);
    return stored;
  }
  QString defaultCodex;
};

std::string failureOfSaving(const DockWidget& edited, const WidgetEditor::Hooks& hooks = Machine()) {
  return failureOf([&] { WidgetEditor::save(edited, widgetOf(edited.kind), false, hooks); });
}

TEST(WidgetEditor, AsksTheDiskAndTheServicesUnlessToldOtherwise) {
  const WidgetEditor::Hooks hooks;
  const QTemporaryDir folder;
  const QString program = folder.filePath(u"codex"_s);
  EXPECT_FALSE(hooks.isExecutable(program)) << "is not there";
  QFile file(program);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  EXPECT_FALSE(hooks.isExecutable(program)) << "may not be run";
  file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_TRUE(hooks.isExecutable(program));
  EXPECT_FALSE(hooks.isExecutable(folder.path())) << "is a folder";
  const DockWidget clock = widgetOf(u"digitalClock"_s, {{u"endpoint"_s, u"kept"_s}});
  EXPECT_EQ(hooks.configured(clock), clock) << "no service has it";
}

TEST(WidgetEditor, RefusesWhatItsRulesForbid) {
  const auto codex = [](const QString& text) {
    return Options{{u"connectionMode"_s, u"codexLocal"_s}, {u"codexExecutable"_s, text}};
  };
  const auto native = [](const QString& endpoint) {
    return Options{{u"connectionMode"_s, u"native"_s}, {u"endpoint"_s, endpoint}};
  };
  // One option and what its values come to, kind by kind.
  const struct {
    QString kind;
    QString key;
    QStringList good;
    QStringList bad;
    const char* failure;
  } options[] = {
      // clang-format off
      {u"timer"_s, u"minutes"_s, {{}, u"1440"_s, u"0.5"_s},
       {u"1440.5"_s, u"0"_s, u"-1"_s, u"abc"_s, u"25 min"_s, u"inf"_s, u"nan"_s, u" "_s}, kDuration},
      {u"pomodoro"_s, u"minutes"_s, {u"25"_s}, {u"0"_s}, kDuration},
      {u"posture"_s, u"minutes"_s, {}, {u"0"_s}, kDuration},
      {u"exercise"_s, u"minutes"_s, {}, {u"0"_s}, kDuration},
      {u"stopwatch"_s, u"minutes"_s, {u"0"_s, u"5000"_s}, {}, ""},
      {u"drinkWater"_s, u"goal"_s, {{}, u"1"_s, u"100"_s}, {u"101"_s, u"0"_s, u"8.0"_s, u" 8"_s, u"99999999999"_s}, kGoal},
      {u"habitTracker"_s, u"goal"_s, {u"0"_s}, {}, ""},
      {u"homeAssistant"_s, u"endpoint"_s, {{}, u"https://home.example:8123/api?x=1"_s},
       {u"http://home.example/"_s, u"home.example"_s, u"https:///api"_s, u"https://user@home.example/"_s,
        u"https://:secret@home.example/"_s, u"https://@home.example/"_s, u"https://home.example:99999/"_s}, kEndpoint},
      {u"xStudio"_s, u"endpoint"_s, {}, {u"http://x.example/"_s}, kEndpoint},
      {u"kindOfANewerVersion"_s, u"endpoint"_s, {}, {u"http://x.example/"_s}, kEndpoint},
      {u"bookmarks"_s, u"endpoint"_s, {u"http://x.example/"_s}, {}, ""},
      {u"codexUsage"_s, u"codexExecutable"_s, {u"/home/u/notes.txt"_s}, {}, ""},
      // What no form's rule names but the settings document would refuse.
      {u"pomodoro"_s, u"shortBreak"_s, {{}, u"5"_s}, {u"five"_s}, "Invalid numeric value for shortBreak."},
      {u"bookmarks"_s, u"token"_s, {}, {u"x"_s}, "Credentials belong in Keychain, not configuration."},
      // clang-format on
  };
  for (const auto& c : options) {
    for (const QString& value : c.good + c.bad) {
      EXPECT_EQ(failureOfSaving(widgetOf(c.kind, {{c.key, value}})), c.bad.contains(value) ? c.failure : "")
          << c.kind.toStdString() << ' ' << value.toStdString();
    }
  }
  EXPECT_EQ(failureOfSaving(widgetOf(u"codexUsage"_s, codex(u"/home/u/codex"_s))), "");
  EXPECT_EQ(failureOfSaving(widgetOf(u"codexUsageGauge"_s, codex(u"/home/u/notes.txt"_s))), kCodex);
  EXPECT_EQ(failureOfSaving(widgetOf(u"claudePlanUsage"_s, codex(u"/home/u/notes.txt"_s))), "");
  EXPECT_EQ(failureOfSaving(widgetOf(u"codexUsage"_s, codex({})), Machine(u"/nowhere/codex"_s)), kCodex);
  // The provider speaks before the address is looked at.
  EXPECT_EQ(failureOfSaving(widgetOf(u"analyticsGitHub"_s, native(u"ftp://x"_s))), kProvider);
}

TEST(WidgetEditor, StoresWhatTheRulesFilledIn) {
  const auto saved = [](const DockWidget& widget) {
    return WidgetEditor::save(widget, widgetOf(widget.kind), false, Machine()).widget.options;
  };
  EXPECT_EQ(saved(widgetOf(u"codexUsage"_s, {{u"connectionMode"_s, u"codexLocal"_s}})).value(u"codexExecutable"_s),
            u"/opt/codex");
  const Options form{{u"connectionMode"_s, u"native"_s}, {u"username"_s, u"a"_s}, {u"endpoint"_s, u"http://b"_s}};
  EXPECT_EQ(saved(widgetOf(u"analyticsGitHub"_s, form)).value(u"endpoint"_s), u"https://api.example.com/");
  EXPECT_EQ(saved(widgetOf(u"scratchNote"_s, {{u"text"_s, u"milk"_s}})), (Options{{u"text"_s, u"milk"_s}}));
}

TEST(WidgetEditor, KeepsWhatATileCountedWhileTheFormWasOpen) {
  const Options running{{u"deadline"_s, u"800"_s}, {u"remaining"_s, u"30"_s}, {u"sessions"_s, u"2"_s}};
  const std::tuple<QString, QString, bool> cases[] = {
      {u"10"_s, u"10"_s, true}, {u"10"_s, u"10.0"_s, true}, {{}, u"25"_s, true},
      {u"25"_s, {}, true},      {u"10"_s, u"11"_s, false},  {u"10"_s, {}, false},
  };
  for (const auto& [before, after, keepsRunning] : cases) {
    DockWidget stored = widgetOf(u"pomodoro"_s, running);
    stored.options.insert(u"minutes"_s, before);
    const DockWidget edited = widgetOf(u"pomodoro"_s, {{u"minutes"_s, after}});
    Options expected{{u"minutes"_s, after}, {u"sessions"_s, u"2"_s}};
    if (keepsRunning) expected.insert(running);
    EXPECT_EQ(WidgetEditor::save(edited, stored, false, Machine()).widget.options, expected)
        << before.toStdString() << " to " << after.toStdString();
  }

  const Options opened{{u"glasses"_s, u"3"_s}, {u"lastReminder"_s, u"5"_s}, {u"goal"_s, u"9"_s}};
  const Options counted{{u"glasses"_s, u"4"_s}, {u"history"_s, u"2026-11-24"_s}};
  Options expected = counted;
  expected.insert(u"goal"_s, u"9"_s);
  EXPECT_EQ(WidgetEditor::save(widgetOf(u"drinkWater"_s, opened), widgetOf(u"drinkWater"_s, counted), false, Machine())
                .widget.options,
            expected);
}

TEST(WidgetEditor, TellsWhatIsToBeDoneAfterwards) {
  const struct {
    QString kind;
    Options options;
    bool saveCredential;
    bool refresh;
  } cases[] = {
      {u"homeAssistant"_s, {{u"endpoint"_s, u"https://home.example/"_s}}, true, true},
      {u"youtubeStudio"_s, {}, true, true},
      {u"weatherWind"_s, {}, false, true},
      {u"todayClock"_s, {}, false, false},
      {u"todayClock"_s, {{u"city"_s, u"Chicago"_s}}, false, true},
      {u"digitalClock"_s, {{u"city"_s, u"Chicago"_s}}, false, false},
      {u"mailLatest"_s, {}, false, false},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.kind.toStdString());
    const DockWidget widget = widgetOf(one.kind, one.options);
    const auto outcome = WidgetEditor::save(widget, widgetOf(one.kind), true, Machine());
    EXPECT_EQ(outcome.saveCredential, one.saveCredential);
    EXPECT_EQ(outcome.refresh, one.refresh);
    EXPECT_FALSE(WidgetEditor::save(widget, widgetOf(one.kind), false, Machine()).saveCredential);
  }
}

}  // namespace
}  // namespace tarnwick
