#include "views/settings/ShortcutRow.h"

#include <QHBoxLayout>
#include <QPointer>
#include <array>

#include "desktop/VirtualKeys.h"
#include "store/AppStore.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Switch.h"
#include "views/settings/SettingsWords.h"
#include "views/settings/ShortcutField.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct Words {
  SettingText text;
  bool DesktopOptions::*enabled;
  quint32 DesktopOptions::*key;  ///< Null for a prefix.
  quint32 DesktopOptions::*modifiers;
  const char* command;  ///< What does the same where no app can have keys.
};

constexpr std::array<Shortcut, 3> kAll{Shortcut::Dock, Shortcut::CommandBar, Shortcut::Profiles};

Words wordsOf(Shortcut shortcut) {
  switch (shortcut) {
    case Shortcut::Dock:
      return {{QT_TRANSLATE_NOOP("Settings", "Hide and Show Dock"),
               QT_TRANSLATE_NOOP("Settings", "With Shift added, it moves the keyboard focus to the dock."),
               QT_TRANSLATE_NOOP("Settings", "shortcuts hot key focus")},
              &DesktopOptions::dockShortcutEnabled,
              &DesktopOptions::shortcutKey,
              &DesktopOptions::shortcutModifiers,
              QT_TRANSLATE_NOOP("Settings",
                                "“tarnwick --toggle” hides and shows the dock, “tarnwick --focus” moves the keyboard "
                                "focus to it.")};
    case Shortcut::CommandBar:
      return {
          {QT_TRANSLATE_NOOP("Settings", "Command Bar"), "", QT_TRANSLATE_NOOP("Settings", "shortcuts hot key search")},
          &DesktopOptions::commandBarEnabled,
          &DesktopOptions::commandBarKey,
          &DesktopOptions::commandBarModifiers,
          QT_TRANSLATE_NOOP("Settings",
                            "Apps cannot register shortcuts on this desktop. In its settings, add one for "
                            "“tarnwick --command-bar”.")};
    case Shortcut::Profiles:
      return {{QT_TRANSLATE_NOOP("Settings", "Switch Profile"),
               QT_TRANSLATE_NOOP("Settings", "Use the prefix with 0–9 in profile order."),
               QT_TRANSLATE_NOOP("Settings", "shortcuts hot key digits")},
              &DesktopOptions::profileShortcutEnabled,
              nullptr,
              &DesktopOptions::profileModifiers,
              QT_TRANSLATE_NOOP("Settings", "“tarnwick --profile 0” switches to the first profile.")};
  }
  return {};
}

HotKeyRequest keyOf(const DesktopOptions& options, const Words& words) {
  return {words.key ? options.*words.key : 0, options.*words.modifiers};
}

ShortcutField::Kind kindOf(const Words& words) {
  return words.key ? ShortcutField::Kind::Key : ShortcutField::Kind::Prefix;
}

quint32 digitCode(int digit) { return VirtualKeys::keyCode(static_cast<quint32>('0' + digit)).value_or(0); }

bool isDigit(quint32 code) {
  for (int digit = 0; digit < 10; ++digit)
    if (digitCode(digit) == code) return true;
  return false;
}

/// Whether two of the program's own keys would be one.
bool clash(const Words& first, const HotKeyRequest& request, const Words& second, const HotKeyRequest& other) {
  if (request.modifiers != other.modifiers) return false;
  if (first.key && second.key) return request.keyCode == other.keyCode;
  return isDigit(first.key ? request.keyCode : other.keyCode);
}

QString said(const HotKeyRequest& request, const Words& words) { return ShortcutField::text(request, kindOf(words)); }

QString whoElseHasIt(const DesktopOptions& options, Shortcut shortcut, const HotKeyRequest& request) {
  const Words words = wordsOf(shortcut);
  for (const Shortcut each : kAll) {
    const Words other = wordsOf(each);
    if (each == shortcut || !(options.*other.enabled) || !clash(words, request, other, keyOf(options, other))) continue;
    return SettingsWords::tr("“%1” is already used for “%2”. Choose a different shortcut.")
        .arg(said(request, words), settingsText(other.text.label));
  }
  return {};
}

/// All keys that a request stands for.
QList<HotKeyRequest> keysOf(const HotKeyRequest& request, const Words& words) {
  if (words.key) return {request};
  QList<HotKeyRequest> all;
  for (int digit = 0; digit < 10; ++digit) all.append({digitCode(digit), request.modifiers});
  return all;
}

QString takenSentence(const HotKeyRequest& request) {
  return SettingsWords::tr("“%1” is used by another app. Choose a different shortcut.")
      .arg(VirtualKeys::text(request.keyCode, request.modifiers));
}

/// Why a key cannot be had; empty where it can.
QString obstacle(const DesktopOptions& options, Shortcut shortcut, const HotKeyRequest& request,
                 const SettingsServices& services) {
  const Words words = wordsOf(shortcut);
  if (const QString other = whoElseHasIt(options, shortcut, request); !other.isEmpty()) return other;
  for (const HotKeyRequest& each : keysOf(request, words))
    if (!services.keys.tryKey(each).bound) return takenSentence(each);
  return {};
}

void store(SettingsPage& page, Shortcut shortcut, const HotKeyRequest& request) {
  const Words words = wordsOf(shortcut);
  page.edit([&](DockConfiguration& config) {
    DesktopOptions& options = config.desktop;
    if (words.key) options.*words.key = request.keyCode;
    options.*words.modifiers = request.modifiers;
  });
}

}  // namespace

QString commandBarKeyNote(const DesktopOptions& options, const SettingsServices& services) {
  if (!options.commandBarEnabled) return {};
  const std::optional<QString> working = services.abilities().commandBarKey;
  const Words words = wordsOf(Shortcut::CommandBar);
  const QString wanted = said(keyOf(options, words), words);
  if (!working || *working == wanted) return {};
  if (working->isEmpty()) return takenSentence(keyOf(options, words));
  return SettingsWords::tr("Another app uses “%1”. For now, “%2” opens the command bar.").arg(wanted, *working);
}

namespace {

/// Says below the key whether it is had.
void showState(FormRow& row, const ShortcutField& field, const DesktopOptions& options, Shortcut shortcut,
               const SettingsServices& services) {
  const Words words = wordsOf(shortcut);
  if (shortcut == Shortcut::CommandBar) return row.setHelp(commandBarKeyNote(options, services));
  const bool asked = options.*words.enabled && !field.isRecording();
  QString taken;
  for (const HotKeyRequest& each : keysOf(keyOf(options, words), words))
    if (asked && taken.isEmpty() && !services.keys.holds(each)) taken = takenSentence(each);
  row.setHelp(taken.isEmpty() ? settingsText(words.text.help) : taken);
}

}  // namespace

FormRow* addShortcutRow(SettingsPage& page, Card& card, const SettingsServices& services, Shortcut shortcut) {
  const Words words = wordsOf(shortcut);
  const QString name = settingsText(words.text.label);
  auto* pair = new QWidget;
  auto* line = new QHBoxLayout(pair);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(theme::kRowGap);
  auto* field = new ShortcutField(SettingsWords::tr("%1, shortcut").arg(name), kindOf(words));
  auto* enabled = new Switch(name);
  line->addWidget(field);
  line->addWidget(enabled);
  FormRow* row = page.addControl(card, words.text, pair);

  QObject::connect(enabled, &QAbstractButton::clicked, &page, [&page, words](bool on) {
    page.edit([&](DockConfiguration& config) { config.desktop.*words.enabled = on; });
  });
  QObject::connect(field, &ShortcutField::recordingChanged, row, [row, &services](bool recording) {
    row->setFault({});
    services.keys.setRecording(recording);
  });
  QObject::connect(field, &ShortcutField::refused, row, &FormRow::setFault);
  QObject::connect(field, &ShortcutField::recorded, row,
                   [&page, row, shortcut, &services](const HotKeyRequest& request) {
                     const DesktopOptions& options = page.store().config().desktopOptions();
                     if (keyOf(options, wordsOf(shortcut)) == request) return;
                     const QString why = obstacle(options, shortcut, request, services);
                     row->setFault(why);
                     // What was tried is given back before it is asked for in earnest.
                     services.keys.setRecording(false);
                     if (why.isEmpty()) store(page, shortcut, request);
                   });
  // The desktop may take a key away at any time; the message line says so, and this row which one.
  QObject::connect(&page.store(), &AppStore::errorChanged, &page, &SettingsPage::refresh);
  page.follow([field, enabled, row, shortcut, words, &services](const DockConfiguration& config) {
    const DesktopOptions& options = config.desktopOptions();
    const DesktopAbilities abilities = services.abilities();
    const bool canHaveKeys = !abilities.keysAnswered || abilities.keys;
    row->setUnavailable(canHaveKeys ? QString() : settingsText(words.command));
    enabled->setChecked(canHaveKeys && options.*words.enabled);
    field->setKey(keyOf(options, words));
    field->setEnabled(options.*words.enabled);
    if (canHaveKeys) showState(*row, *field, options, shortcut, services);
  });
  return row;
}

}  // namespace tarnwick
