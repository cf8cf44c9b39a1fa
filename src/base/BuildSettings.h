#pragma once

#include <QJsonObject>
#include <QString>
#include <optional>

namespace tarnwick {

/// What is settled for this build of the program rather than by its user: a small JSON object in `tarnwick-keys.json`
/// beside the executable, which a package may replace. Known names: `TarnwickDataDirectoryName`,
/// `TarnwickPhaseDataDirectory`.
class BuildSettings {
 public:
  /// Nothing is set.
  BuildSettings() = default;
  /// Read once. A file that is missing or broken sets nothing.
  explicit BuildSettings(const QString& path);
  /// Those of the running program.
  static BuildSettings besideProgram();

  /// Absent unless a text is set under that name.
  std::optional<QString> string(const QString& name) const;

 private:
  QJsonObject values_;
};

}  // namespace tarnwick
