#include <QLabel>
#include <QTest>

#include "desktop/VirtualKeys.h"
#include "settings/SettingsFixture.h"
#include "views/controls/Switch.h"
#include "views/settings/ShortcutField.h"
#include "views/settings/ShortcutRow.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class ShortcutsTest : public testing::Test, public SettingsFixture {
 protected:
  void SetUp() override { turnTo("shortcuts"); }
  /// Records as a user types: the modifiers go down first.
  void record(const char* name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    const bool isBar = qstrcmp(name, "bar") == 0;
    turnTo(isBar ? "commandBar" : "shortcuts");
    QList<ShortcutField*> seen = window().findChildren<ShortcutField*>();
    seen.removeIf([](const ShortcutField* each) { return !each->isVisible(); });
    auto* field = field_ = seen.value(qstrcmp(name, "profiles") == 0 ? 1 : 0);
    ASSERT_TRUE(field);
    field->setFocus();
    field->click();
    ASSERT_TRUE(field->isRecording());
    if (modifiers) QTest::keyPress(field, Qt::Key_Control, Qt::ControlModifier);
    QTest::keyClick(field, key, modifiers);
  }

  QString note(const std::optional<QString>& working) {
    abilities.commandBarKey = working;
    return commandBarKeyNote(options(), services);
  }

  ShortcutField* field_ = nullptr;
};

TEST_F(ShortcutsTest, AKeyThatIsPressedIsStored) {
  record("dock", Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
  EXPECT_FALSE(field_->isRecording());
  EXPECT_EQ(options().shortcutKey, VirtualKeys::keyCode('k'));
  EXPECT_EQ(options().shortcutModifiers, VirtualKeys::kControl | VirtualKeys::kOption);
  EXPECT_EQ(faults(), QStringList());
  EXPECT_EQ(keys.recordings.value(0), true);  // The program's own keys must reach the field.
  EXPECT_EQ(keys.recordings.last(), false);
}

TEST_F(ShortcutsTest, KeysThatWouldBeMissedElsewhereAreWaitedThrough) {
  const DesktopOptions before = options();
  record("dock", Qt::Key_K, Qt::NoModifier);
  EXPECT_TRUE(field_->isRecording());
  EXPECT_EQ(faults(),
            QStringList{u"“K” alone would stop working in all other apps. Hold Ctrl, Alt or Super with it."_s});
  QTest::keyClick(field_, Qt::Key_K, Qt::ShiftModifier);
  EXPECT_TRUE(field_->isRecording());
  QTest::keyClick(field_, Qt::Key_Escape);
  EXPECT_FALSE(field_->isRecording());
  EXPECT_EQ(faults(), QStringList());
  EXPECT_EQ(options(), before);
  record("dock", Qt::Key_F9, Qt::NoModifier);
  EXPECT_EQ(options().shortcutKey, VirtualKeys::keyCode(0xffc6));
  EXPECT_EQ(options().shortcutModifiers, 0u);
}

TEST_F(ShortcutsTest, ATakenKeySaysSoAtOnceAndIsNotStored) {
  const DesktopOptions before = options();
  keys.taken << HotKeyRequest{*VirtualKeys::keyCode('k'), VirtualKeys::kControl};
  record("bar", Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(faults(), QStringList{u"“Ctrl+K” is used by another app. Choose a different shortcut."_s});
  EXPECT_EQ(options(), before);
  record("bar", Qt::Key_J, Qt::ControlModifier);
  EXPECT_EQ(faults(), QStringList());
  EXPECT_EQ(options().commandBarKey, VirtualKeys::keyCode('j'));
  // One of the program's own.
  record("dock", Qt::Key_J, Qt::ControlModifier);
  EXPECT_EQ(faults(), QStringList{u"“Ctrl+J” is already used for “Command Bar”. Choose a different shortcut."_s});
  EXPECT_EQ(options().shortcutKey, before.shortcutKey);
}

TEST_F(ShortcutsTest, AWindowThatGoesGivesTheKeysBack) {
  auto* field = window().findChild<ShortcutField*>();
  field->click();
  ASSERT_EQ(keys.recordings, QList<bool>{true});
  window().close();
  EXPECT_EQ(keys.recordings, (QList<bool>{true, false}));
}

TEST_F(ShortcutsTest, APrefixTakesTheModifiersAndTriesEveryDigit) {
  record("profiles", Qt::Key_5, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(options().profileModifiers, VirtualKeys::kControl | VirtualKeys::kShift);
  EXPECT_EQ(keys.tried.size(), 10);
  const quint32 before = options().profileModifiers;
  keys.taken << HotKeyRequest{*VirtualKeys::keyCode('7'), VirtualKeys::kOption};
  record("profiles", Qt::Key_1, Qt::AltModifier);
  EXPECT_EQ(faults().size(), 1);
  EXPECT_EQ(options().profileModifiers, before);
  record("profiles", Qt::Key_1, Qt::NoModifier);
  EXPECT_EQ(faults(), QStringList{u"Hold Ctrl, Alt, Shift or Super with a digit."_s});
}

TEST_F(ShortcutsTest, ARowSaysWhetherItsKeyIsHad) {
  const HotKeyRequest dock{options().shortcutKey, options().shortcutModifiers};
  SettingsWindow window(store(), services);
  window.present();
  const auto of = [&](const char* section, const char* name) {
    window.showSection(QString::fromLatin1(section));
    for (Switch* each : window.findChildren<Switch*>())
      if (each->isVisible() && each->accessibleName() == QString::fromLatin1(name)) return each;
    return static_cast<Switch*>(nullptr);
  };
  const auto said = [](Switch* control) { return control->parentWidget()->accessibleDescription(); };
  EXPECT_EQ(said(of("shortcuts", "Hide and Show Dock")),
            u"With Shift added, it moves the keyboard focus to the dock."_s);
  keys.lost << dock;
  store().setError(u"Taken."_s);
  EXPECT_EQ(said(of("shortcuts", "Hide and Show Dock")),
            u"“Ctrl+Alt+Super+D” is used by another app. Choose a different shortcut."_s);
  keys.lost.clear();
  const auto promises = [&] {
    for (const QLabel* each : window.findChildren<QLabel*>())
      if (each->isVisible() && each->text().contains(u"Shortcuts work in every app."_s)) return true;
    return false;
  };
  window.followKeys();
  EXPECT_TRUE(promises());
  // As long as the desktop has not answered, nothing is promised and nothing is missing.
  abilities.keys = Capability::no(u"No keys."_s);
  abilities.unaskedKeys = Capability::no({});
  abilities.keysAnswered = false;
  window.followKeys();
  EXPECT_FALSE(promises());
  EXPECT_TRUE(of("shortcuts", "Hide and Show Dock")->isEnabled());
  EXPECT_EQ(said(of("shortcuts", "Hide and Show Dock")),
            u"With Shift added, it moves the keyboard focus to the dock."_s);
  abilities.keysAnswered = true;
  abilities.unaskedKeys = abilities.keys;
  window.followKeys();
  EXPECT_FALSE(promises());
  const Switch* numbers = of("shortcuts", "Apps by number");
  EXPECT_TRUE(numbers && !numbers->isEnabled() && !numbers->isChecked());
  const auto shown = [&](const QString& sentence) {
    return std::ranges::count_if(window.findChildren<QLabel*>(), [&](const QLabel* each) {
      return each->isVisible() && each->text().remove(QChar(0x2060)).contains(sentence);
    });
  };
  EXPECT_EQ(shown(u"No keys."_s), 1) << "once for all of them";
  EXPECT_EQ(shown(u"tarnwick --toggle"_s), 1);
  EXPECT_FALSE(of("commandBar", "Command Bar")->isChecked());
  EXPECT_FALSE(of("commandBar", "Command Bar")->isEnabled());
  EXPECT_EQ(shown(u"tarnwick --command-bar"_s), 1);
  abilities.keys = {};
  window.followKeys();
  EXPECT_TRUE(of("commandBar", "Command Bar")->isChecked());
  EXPECT_TRUE(of("commandBar", "Command Bar")->isEnabled());
}

TEST_F(ShortcutsTest, TheRowOfTheCommandBarTellsWhichKeyOpensIt) {
  EXPECT_EQ(note(std::nullopt), QString());
  EXPECT_EQ(note(u"Alt+Space"_s), QString());
  EXPECT_EQ(note(u"Super+Space"_s), u"Another app uses “Alt+Space”. For now, “Super+Space” opens the command bar."_s);
  EXPECT_EQ(note(u""_s), u"“Alt+Space” is used by another app. Choose a different shortcut."_s);
}

}  // namespace
}  // namespace tarnwick::test
