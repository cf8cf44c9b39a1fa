// Claude Code's hooks are installed through the form by keys, run as Claude Code runs them, and shown.
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QPushButton>

#include "desktop/ConnectionScenario.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

/// A person whose home is the test's own.
class HooksScenario : public ConnectionScenario {
 protected:
  HooksScenario() : home_(qgetenv("HOME")) {
    qputenv("HOME", QFile::encodeName(folder.path()));
    QDir(folder.path()).mkpath(u".claude"_s);
    QFile settings(settingsFile());
    EXPECT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(R"({"hooks":{"Stop":[{"hooks":[{"type":"command","command":"say done"}]}]},"model":"own"})");
  }
  ~HooksScenario() override {
    end();
    qputenv("HOME", home_);
  }
  QString settingsFile() const { return folder.filePath(u".claude/settings.json"_s); }
  QJsonObject settings() const {
    QFile file(settingsFile());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
  }
  /// What Claude Code runs at an event.
  QString commandAt(const QString& event) const {
    const QJsonArray groups = settings()["hooks"_L1][event].toArray();
    return groups.last()["hooks"_L1][0]["command"_L1].toString();
  }
  static void runHook(const QString& command, const QByteArray& event) {
    QProcess shell;
    shell.start(u"/bin/sh"_s, {u"-c"_s, command});
    ASSERT_TRUE(shell.waitForStarted());
    shell.write(event);
    shell.closeWriteChannel();
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
  }
  /// Lets the clock run for two seconds at most.
  bool comesInTwoSeconds(const std::function<bool()>& predicate) {
    const double end = time.reference() + 2;
    return comesTrue([&] {
      time.advance(time.reference() < end - 0.02 ? 0.02 : 0);
      return predicate();
    });
  }
  bool says(const QString& sentence) {
    return comes([&] { return form() && QString::fromStdString(said()).split(u'|').contains(sentence); });
  }

 private:
  QByteArray home_;
};

TEST_F(HooksScenario, TheHooksAreInstalledByKeysAndTheTileFollowsThem) {
  // The hook goes by the computer's own clock, and what has not happened yet is not shown.
  time.jump(static_cast<double>(time.now().secsTo(QDateTime::currentDateTime().addSecs(60))));
  DockConfiguration config;
  config.profiles[0].widgets = {{QUuid::createUuid(), u"analyticsClaudeCodeStatus"_s, {}, {}}};
  startShown(config);
  const QJsonObject before = settings();
  ASSERT_NO_FATAL_FAILURE(openForm());
  ASSERT_TRUE(tabTo<QPushButton>(u"Install Activity Hooks…"_s)) << said();
  desk.tap(KEY_ENTER);
  const auto dialog = [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); };
  ASSERT_TRUE(comesTrue([&] { return dialog() && dialog()->isActiveWindow() && QApplication::focusWidget(); }));
  EXPECT_EQ(dialog()->directory().path(), folder.filePath(u".claude"_s));
  desk.tap(KEY_ENTER);
  ASSERT_TRUE(says(u"Hooks installed. Start a new Claude Code session."_s)) << said();
  const DockWidget widget = store().widgets().first();
  EXPECT_EQ(widget.options.value(option::claudeSettings), settingsFile());
  EXPECT_EQ(settings()["hooks"_L1]["Stop"_L1][0], before["hooks"_L1]["Stop"_L1][0]);
  EXPECT_TRUE(comes([&] { return reading().value.value == u"No activity yet"_s; }));

  const QString command = commandAt(u"PreToolUse"_s);
  EXPECT_TRUE(command.contains(u"tarnwick-claude-hook' --claude-hook '"_s)) << command.toStdString();
  desk.tap(KEY_ESC);
  ASSERT_TRUE(comesTrue([&] { return !form(); }));
  time.advance(2);  // The beat finds the folder that it has to watch.
  desk.settle();
  runHook(command, R"({"hook_event_name":"PreToolUse","session_id":"s","tool_name":"Bash","tool_input":{}})");
  EXPECT_TRUE(comesInTwoSeconds([&] { return reading().value.value == u"Bash"_s; }))
      << reading().value.value.value_or(QString()).toStdString();

  desk.settle();
  dock().leaveKeyboard();
  dock().focus();
  ASSERT_TRUE(
      inTime([&] { return view().hasFocus() && view().window()->isActiveWindow() && view().focusedItem() == 0; }));
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(inTime([&] {
    const QWidgetList all = QApplication::allWidgets();
    return std::ranges::any_of(all, [](const QWidget* part) {
      const QString name =
          part->accessibleName().isEmpty() ? part->property("text").toString() : part->accessibleName();
      return part->isVisible() && name == u"Bash"_s && part->accessibleDescription().contains(u"Bash · "_s);
    });
  })) << "the panel lists the session";
  desk.tap(KEY_ESC);

  ASSERT_NO_FATAL_FAILURE(openForm());
  ASSERT_TRUE(tabTo<QPushButton>(u"Remove Tarnwick Hooks"_s)) << said();
  desk.tap(KEY_ENTER);
  EXPECT_TRUE(says(u"Tarnwick’s hooks were removed. Other hooks were preserved."_s)) << said();
  EXPECT_EQ(settings(), before);
  EXPECT_FALSE(store().widgets().first().options.contains(option::historyDirectory));
}

}  // namespace
}  // namespace tarnwick::testing
