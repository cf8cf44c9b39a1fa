#pragma once

#include <QString>
#include <QUuid>
#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// What the user can do to the settings document, as pure changes of a value. Each returns whether it changed anything;
/// one that refuses leaves the document as it was.
struct DocumentEdits {
  /// The widget of that identity in any profile, or null. Valid until the document changes.
  static DockWidget* find(DockConfiguration& config, const QUuid& id);
  static const DockWidget* find(const DockConfiguration& config, const QUuid& id);

  /// Sets one option, or removes it when `value` is absent.
  static bool setOption(DockConfiguration& config, const QUuid& id, const QString& key,
                        const std::optional<QString>& value);
  /// Replaces the stored widget of the same identity.
  static bool update(DockConfiguration& config, const DockWidget& widget);
  /// Removes from whichever profile holds it.
  static bool remove(DockConfiguration& config, const QUuid& id);
  /// Moves by `places` within its profile; stops at the ends.
  static bool move(DockConfiguration& config, const QUuid& id, int places);
  /// Brings the profile's widgets with the identities of `order` into that order. The others keep their place after the
  /// widget that they followed.
  static bool arrange(DockConfiguration& config, qsizetype profile, const QList<QUuid>& order);

  /// Appends a profile and makes it active. A name of blanks becomes "New Profile". `duplicate` copies the active
  /// profile's widgets under fresh identities. Refused at 20 profiles.
  static bool newProfile(DockConfiguration& config, const QString& name, bool duplicate);
  /// Removes a profile with the rules and pins that name it. When it was active, the one that takes its index becomes
  /// active, else the last. The last profile stays.
  static bool deleteProfile(DockConfiguration& config, const QUuid& id);
  /// The index of the profile that a display shows: the one it is pinned to, else the active one.
  static qsizetype profileIndex(const DockConfiguration& config, const QString& display);
  static bool isPinned(const DockConfiguration& config, const QString& display);
  /// Pins a display to a profile, or lets it follow the active one when `profile` is absent.
  static bool pin(DockConfiguration& config, const QString& display, const std::optional<QUuid>& profile);

  /// Appends a to-do of the trimmed text; an empty one is ignored.
  static bool addTodo(DockConfiguration& config, const QString& text);
  static bool toggleTodo(DockConfiguration& config, const QUuid& id);
};

}  // namespace tarnwick
