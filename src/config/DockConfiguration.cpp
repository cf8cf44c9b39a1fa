#include "config/DockConfiguration.h"

#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

qsizetype DockConfiguration::activeIndex() const {
  if (!activeProfileID) return 0;
  const auto active = std::find_if(profiles.cbegin(), profiles.cend(),
                                   [&](const DockProfile& profile) { return profile.id == *activeProfileID; });
  return active == profiles.cend() ? 0 : active - profiles.cbegin();
}

bool DockConfiguration::weatherUsesFahrenheit(QLocale::MeasurementSystem system) const {
  if (temperatureUnit == u"auto"_s) return usesFahrenheit(system);
  if (temperatureUnit == u"celsius"_s) return false;
  if (temperatureUnit == u"fahrenheit"_s) return true;
  return fahrenheit;
}

}  // namespace tarnwick
