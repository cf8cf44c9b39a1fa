#include "services/WeatherCondition.h"

#include <algorithm>
#include <array>

#include "services/ServiceWords.h"

namespace tarnwick {

namespace {

struct Condition {
  std::array<int, 4> codes;  ///< -1 for none.
  const char* label;
  QLatin1StringView symbol;
};

constexpr QLatin1StringView kSun("sun.max.fill");
constexpr QLatin1StringView kCloudSun("cloud.sun.fill");
constexpr QLatin1StringView kCloud("cloud.fill");
constexpr QLatin1StringView kFog("cloud.fog.fill");
constexpr QLatin1StringView kDrizzle("cloud.drizzle.fill");
constexpr QLatin1StringView kRain("cloud.rain.fill");
constexpr QLatin1StringView kSnow("cloud.snow.fill");
constexpr QLatin1StringView kThunder("cloud.bolt.rain.fill");

constexpr std::array kConditions{
    Condition{{0, -1, -1, -1}, QT_TRANSLATE_NOOP("Services", "Clear"), kSun},
    Condition{{1, -1, -1, -1}, QT_TRANSLATE_NOOP("Services", "Mostly clear"), kCloudSun},
    Condition{{2, -1, -1, -1}, QT_TRANSLATE_NOOP("Services", "Partly cloudy"), kCloudSun},
    Condition{{3, -1, -1, -1}, QT_TRANSLATE_NOOP("Services", "Overcast"), kCloud},
    Condition{{45, 48, -1, -1}, QT_TRANSLATE_NOOP("Services", "Fog"), kFog},
    Condition{{51, 53, 55, -1}, QT_TRANSLATE_NOOP("Services", "Drizzle"), kDrizzle},
    Condition{{56, 57, -1, -1}, QT_TRANSLATE_NOOP("Services", "Freezing drizzle"), kDrizzle},
    Condition{{61, 63, 65, -1}, QT_TRANSLATE_NOOP("Services", "Rain"), kRain},
    Condition{{66, 67, -1, -1}, QT_TRANSLATE_NOOP("Services", "Freezing rain"), kRain},
    Condition{{71, 73, 75, 77}, QT_TRANSLATE_NOOP("Services", "Snow"), kSnow},
    Condition{{80, 81, 82, -1}, QT_TRANSLATE_NOOP("Services", "Rain showers"), kRain},
    Condition{{85, 86, -1, -1}, QT_TRANSLATE_NOOP("Services", "Snow showers"), kSnow},
    Condition{{95, -1, -1, -1}, QT_TRANSLATE_NOOP("Services", "Thunderstorm"), kThunder},
    Condition{{96, 99, -1, -1}, QT_TRANSLATE_NOOP("Services", "Thunderstorm with hail"), kThunder},
};

const Condition* find(std::optional<int> code) {
  if (!code || *code < 0) return nullptr;
  const auto found = std::ranges::find_if(
      kConditions, [code](const Condition& each) { return std::ranges::find(each.codes, *code) != each.codes.end(); });
  return found == kConditions.end() ? nullptr : &*found;
}

}  // namespace

QString WeatherCondition::label(std::optional<int> code) {
  const Condition* condition = find(code);
  return condition ? ServiceWords::tr(condition->label) : ServiceWords::tr("Conditions unavailable");
}

QString WeatherCondition::symbol(std::optional<int> code) {
  const Condition* condition = find(code);
  return condition ? condition->symbol : kCloud;
}

}  // namespace tarnwick
