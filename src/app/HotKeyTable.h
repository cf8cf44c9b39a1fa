#pragma once

#include <QList>
#include <QString>

#include "config/DesktopOptions.h"
#include "desktop/HotKeys.h"

namespace tarnwick {

/// Which keys the settings ask for. Pure.
struct HotKeyTable {
  static constexpr quint32 kToggle = 1;
  static constexpr quint32 kCommandBar = 2;
  static constexpr quint32 kFocus = 3;  ///< The dock's key with Shift added.
  static constexpr quint32 kTrial = 4;  ///< One that is only tried.
  static constexpr quint32 kFirstProfile = 10;
  static constexpr int kProfileKeys = 10;
  static constexpr quint32 kFirstApp = 31;  ///< Of the first app in the dock; those of the others follow.
  static constexpr int kAppKeys = 9;

  struct Row {
    quint32 identifier = 0;
    HotKeyRequest request;

    bool operator==(const Row&) const = default;
  };

  /// What a key does.
  static HotKeyAction action(quint32 identifier);
  /// A text that changes exactly when a key must be taken anew.
  static QString signature(const DesktopOptions& options);
  /// The enabled keys, in the order in which they are taken.
  static QList<Row> rows(const DesktopOptions& options);
  /// Super+1 to Super+9, for the first apps of the dock. Taken last, and only where no other program has them.
  static QList<Row> appRows(const DesktopOptions& options);
  /// What is tried in turn where another program owns the command bar's key; empty once the user has chosen one.
  static QList<HotKeyRequest> commandBarFallbacks(const DesktopOptions& options);
};

}  // namespace tarnwick
