#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <stop_token>

#include "apps/AppEnvironment.h"
#include "apps/AppIndex.h"

namespace tarnwick {

/// One reading of everything that says which applications are installed. Blocks, and touches nothing but files: it is
/// made to run on a thread of its own.
struct AppScan {
  AppIndex index;
  /// What to watch for changes: existing folders and files, with the time of their last change when they were read.
  QHash<QString, qint64> watched;
  /// Folders and files that do not exist yet, by the existing folder in which the next part of their path would appear.
  QHash<QString, QSet<QString>> awaited;

  /// `others`: paths of desktop entries outside the folders that are wanted too.
  /// The result of a stopped scan is incomplete and must be thrown away.
  static AppScan run(const AppEnvironment& environment, const QSet<QString>& others, const std::stop_token& stop);

  /// The time of the last change in milliseconds; 0 for what does not exist.
  static qint64 changeOf(const QString& path);
};

}  // namespace tarnwick
