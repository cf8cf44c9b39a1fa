#pragma once

#include <QString>
#include <optional>

#include "desktop/Edid.h"

namespace tarnwick {

/// What the kernel knows of the monitors: the compositor reports no serial number.
struct KernelConnectors {
  /// The identification of the monitor at a connector such as "DP-1", if the kernel has one.
  static std::optional<Edid> edid(const QString& connector, const QString& folder = QStringLiteral("/sys/class/drm"));
};

}  // namespace tarnwick
