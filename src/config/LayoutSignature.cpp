#include "config/LayoutSignature.h"

#include <algorithm>
#include <array>

#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

constexpr std::array kVolatileKeys{
    option::deadline,        option::remaining,    option::started,      option::elapsed, option::phase,
    option::sessions,        option::lastReminder, option::glasses,      option::day,     option::lastWallpaperChange,
    option::standingMinutes, option::text,         option::completedDays};

bool isVolatile(const QString& key) {
  return std::find(kVolatileKeys.begin(), kVolatileKeys.end(), key) != kVolatileKeys.end();
}

bool hasVolatile(const QMap<QString, QString>& options) {
  return std::any_of(options.keyBegin(), options.keyEnd(), isVolatile);
}

}  // namespace

LayoutSignature::LayoutSignature(const DockConfiguration& configuration) : stable_(configuration) {
  stable_.todos.clear();
  stable_.shelf.clear();
  stable_.clipboard.clear();
  for (qsizetype p = 0; p < stable_.profiles.size(); ++p) {
    for (qsizetype w = 0; w < stable_.profiles.at(p).widgets.size(); ++w) {
      // Touching a widget copies its profile, so the many that count nothing are left shared with the original.
      if (!hasVolatile(stable_.profiles.at(p).widgets.at(w).options)) continue;
      stable_.profiles[p].widgets[w].options.removeIf([](const auto& option) { return isVolatile(option.key()); });
    }
  }
}

}  // namespace tarnwick
