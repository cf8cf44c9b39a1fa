#pragma once

#include <QString>
#include <optional>

#include "base/BuildSettings.h"

namespace tarnwick {

/// The folder of the user's data: $XDG_DATA_HOME (or ~/.local/share) and the name that the build settings
/// give as `TarnwickDataDirectoryName`, "Tarnwick" without one. It is not created here.
QString defaultStorageDirectory(const BuildSettings& build);

/// The settings file: `storage` as it stands; else a temporary one for a run without a user's data; else in the folder
/// of the build setting `TarnwickPhaseDataDirectory`; else in the default folder.
QString settingsFile(const BuildSettings& build, bool diagnostic = false,
                     const std::optional<QString>& storage = std::nullopt);

}  // namespace tarnwick
