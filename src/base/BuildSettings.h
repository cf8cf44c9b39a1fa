#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>

namespace tarnwick {

/// What a package of the program may set without building it: a small JSON object in `tarnwick-keys.json` beside
/// the executable. Known keys: `TarnwickDataDirectoryName`, `TarnwickPhaseDataDirectory`.
class BuildSettings {
 public:
  /// No keys at all.
  BuildSettings() = default;
  /// Read once. A file that is missing or broken holds no keys.
  explicit BuildSettings(const QString& path);
  /// Those of the running program.
  static BuildSettings besideProgram();

  /// Absent unless the key holds a text.
  std::optional<QString> string(const QString& key) const;

 private:
  QJsonObject keys_;
};

}  // namespace tarnwick
