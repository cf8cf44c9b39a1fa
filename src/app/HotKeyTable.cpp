#include "app/HotKeyTable.h"

#include <QCoreApplication>
#include <QStringList>
#include <array>

#include "desktop/VirtualKeys.h"

namespace tarnwick {
namespace {

struct HotKeyTableWords {
  Q_DECLARE_TR_FUNCTIONS(HotKeyTable)
};

// The keys of the digits 0 to 9.
constexpr std::array<quint32, HotKeyTable::kProfileKeys> kDigits = {29, 18, 19, 20, 21, 23, 22, 26, 28, 25};

constexpr quint32 kSpace = 49;

QString word(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

}  // namespace

HotKeyAction HotKeyTable::action(quint32 identifier) {
  switch (identifier) {
    case kToggle:
      return {QStringLiteral("--toggle"), HotKeyTableWords::tr("Show or hide the dock")};
    case kCommandBar:
      return {QStringLiteral("--command-bar"), HotKeyTableWords::tr("Open the command bar")};
    case kFocus:
      return {QStringLiteral("--focus"), HotKeyTableWords::tr("Move the keyboard focus to the dock")};
    default: {
      if (identifier >= kFirstApp) {
        const QString place = QString::number(identifier - kFirstApp + 1);
        return {QStringLiteral("--app ") + place, HotKeyTableWords::tr("Open app %1 of the dock").arg(place)};
      }
      const QString number = QString::number(identifier - kFirstProfile);
      return {QStringLiteral("--profile ") + number, HotKeyTableWords::tr("Switch to profile %1").arg(number)};
    }
  }
}

QString HotKeyTable::signature(const DesktopOptions& options) {
  return QStringList{word(options.dockShortcutEnabled),         word(options.profileShortcutEnabled),
                     QString::number(options.shortcutKey),      QString::number(options.shortcutModifiers),
                     QString::number(options.profileModifiers), word(options.commandBarEnabled),
                     QString::number(options.commandBarKey),    QString::number(options.commandBarModifiers)}
      .join(QLatin1Char(':'));
}

QList<HotKeyTable::Row> HotKeyTable::rows(const DesktopOptions& options) {
  QList<Row> rows;
  if (options.dockShortcutEnabled) rows.append(Row{kToggle, {options.shortcutKey, options.shortcutModifiers}});
  if (options.commandBarEnabled) rows.append(Row{kCommandBar, {options.commandBarKey, options.commandBarModifiers}});
  if (options.profileShortcutEnabled) {
    for (quint32 digit = 0; digit < kDigits.size(); ++digit) {
      rows.append(Row{kFirstProfile + digit, {kDigits[digit], options.profileModifiers}});
    }
  }
  // Last, so that a key that the user set is never refused for the sake of one that follows from another.
  const bool canAddShift = (options.shortcutModifiers & VirtualKeys::kShift) == 0;
  if (options.dockShortcutEnabled && canAddShift) {
    rows.append(Row{kFocus, {options.shortcutKey, options.shortcutModifiers | VirtualKeys::kShift}});
  }
  return rows;
}

QList<HotKeyTable::Row> HotKeyTable::appRows(const DesktopOptions& options) {
  QList<Row> rows;
  if (!options.dockShortcutEnabled || !options.deskOptions().appKeys) return rows;
  for (quint32 place = 0; place < kAppKeys; ++place)
    rows.append(Row{kFirstApp + place, {kDigits[place + 1], VirtualKeys::kCommand}});
  return rows;
}

QList<HotKeyRequest> HotKeyTable::commandBarFallbacks(const DesktopOptions& options) {
  const DesktopOptions untouched;
  const bool chosen =
      options.commandBarKey != untouched.commandBarKey || options.commandBarModifiers != untouched.commandBarModifiers;
  if (chosen) return {};
  return {{kSpace, VirtualKeys::kCommand}, {kSpace, VirtualKeys::kControl | VirtualKeys::kOption}};
}

}  // namespace tarnwick
