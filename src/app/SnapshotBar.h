#pragma once

#include <QList>

#include "commandbar/SettingsPlaces.h"
#include "views/snapshot/Snapshot.h"

namespace tarnwick {

/// The command bar as `--snapshot` pictures it: empty, with all the rows that it can have, with a sum, while files are
/// still looked for, and with rows of each kind, in fixed data. `settings` must outlive the panes.
struct SnapshotBar {
  static QList<SnapshotPane> list(SettingsPlaces& settings);
};

}  // namespace tarnwick
