#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <optional>

#include "platform/docks/DockBackend.h"

namespace tarnwick {

/// What the user has behind one preference, of every dock that is about to be hidden, as it is in the recovery
/// file.
struct DockRecord {
  struct Entry {
    DockSetting setting;
    QList<DockValue> ours;  ///< What layouts of ours may have put in its place; empty where that was not noted.

    bool operator==(const Entry&) const = default;
  };
  struct Dock {
    QString id;  ///< Of its kind ("plank").
    QList<Entry> entries;

    bool operator==(const Dock&) const = default;
  };
  QList<Dock> docks;

  /// With a checksum that holds for this key only.
  QVariant toValue(const QString& key) const;
  /// Absent for anything that `toValue` does not give, a wrong checksum included. A record without a checksum, and with
  /// nothing of `ours`, is of an older version.
  static std::optional<DockRecord> fromValue(const QString& key, const QVariant& value);

  bool operator==(const DockRecord&) const = default;
};

}  // namespace tarnwick
