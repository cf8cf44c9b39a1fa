#pragma once

#include <QByteArray>
#include <QString>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// The settings document as bytes and as a file. Everything throws DomainError.
struct Persistence {
  /// Validates a copy and writes that as indented JSON with sorted keys, so that clamps and repairs reach the file.
  /// Refuses what would be too large to be read again.
  static QByteArray encode(const DockConfiguration& configuration);
  /// Decodes and validates.
  static DockConfiguration decode(const QByteArray& json);

  /// Reads, decodes and validates a file of the user's choice.
  static DockConfiguration read(const QString& path);
  /// Replaces the settings file as a whole, readable for its owner alone. Folders that are missing are made. On failure
  /// the old file stays.
  static void save(const DockConfiguration& configuration, const QString& path);
  /// The same of a document that is encoded.
  static void save(const QByteArray& json, const QString& path);

  /// Whether a document would be too large to be read again. Quick for all that are far from it.
  static bool isTooLarge(const DockConfiguration& configuration);
};

}  // namespace tarnwick
