#pragma once

#include <QStringList>

#include "views/snapshot/Snapshot.h"

namespace tarnwick {

/// The options of `--snapshot`, read. Pure but for the default folder, which is a new one below the temporary folder.
/// Throws DomainError for an unknown name or an invalid number.
SnapshotOptions snapshotOptions(const QStringList& arguments);

/// The whole mode: makes an application without a display, writes the pictures and prints where. `arguments` is the
/// command line without the program's name; no application object may exist. Returns the status of the process.
/// Throws DomainError.
int runSnapshot(const QStringList& arguments);

}  // namespace tarnwick
