#pragma once

#include <QString>
#include <optional>

namespace tarnwick {

/// What a WMO weather code means.
struct WeatherCondition {
  /// In the user's language; said so where there is no code or an unknown one.
  static QString label(std::optional<int> code);
  /// The name of its symbol.
  static QString symbol(std::optional<int> code);
};

}  // namespace tarnwick
