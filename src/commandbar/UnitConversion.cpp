#include "commandbar/UnitConversion.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/DomainError.h"
#include "commandbar/UnitWords.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kTemperature = "Temperature";

struct Unit {
  const char16_t* symbol;
  double factor;  ///< To the group's base unit; unused for temperatures, which do not begin at one zero.
};

struct UnitGroup {
  const char* name;
  std::array<Unit, 8> units;  ///< Ends at the first one without a symbol.
};

constexpr std::array kGroups = {
    UnitGroup{"Length",
              {{{u"m", 1},
                {u"km", 1000},
                {u"cm", 0.01},
                {u"mm", 0.001},
                {u"in", 0.0254},
                {u"ft", 0.3048},
                {u"yd", 0.9144},
                {u"mi", 1609.344}}}},
    UnitGroup{"Mass", {{{u"kg", 1}, {u"g", 0.001}, {u"lb", 0.45359237}, {u"oz", 0.028349523125}}}},
    UnitGroup{kTemperature, {{{u"°C", 1}, {u"°F", 1}, {u"K", 1}}}},
    UnitGroup{"Data", {{{u"B", 1}, {u"KB", 1e3}, {u"MB", 1e6}, {u"GB", 1e9}, {u"TB", 1e12}}}},
    UnitGroup{"Time", {{{u"s", 1}, {u"min", 60}, {u"h", 3600}, {u"day", 86400}}}},
    UnitGroup{"Speed", {{{u"m/s", 1}, {u"km/h", 0.2777777777777778}, {u"mph", 0.44704}, {u"kn", 0.514444444444}}}},
    UnitGroup{"Volume", {{{u"L", 1}, {u"mL", 0.001}, {u"US gal", 3.785411784}, {u"US fl oz", 0.0295735295625}}}},
    UnitGroup{"Area", {{{u"m²", 1}, {u"km²", 1e6}, {u"ft²", 0.09290304}, {u"acre", 4046.8564224}, {u"ha", 10000}}}},
};

const Unit* unitIn(const UnitGroup& group, const QString& symbol) {
  for (const Unit& unit : group.units)
    if (unit.symbol && QStringView(unit.symbol) == symbol) return &unit;
  return nullptr;
}

double temperature(double value, const QString& from, const QString& to) {
  double celsius = value;
  if (from == u"°F"_s) celsius = (value - 32) * 5 / 9;
  if (from == u"K"_s) celsius = value - 273.15;
  if (to == u"°F"_s) return celsius * 9 / 5 + 32;
  return to == u"K"_s ? celsius + 273.15 : celsius;
}

}  // namespace

const QList<UnitConversion::Group>& UnitConversion::groups() {
  static const QList<Group> groups = [] {
    QList<Group> made;
    for (const UnitGroup& group : kGroups) {
      made.append({QString::fromLatin1(group.name), {}});
      for (const Unit& unit : group.units)
        if (unit.symbol) made.last().units.append(QString::fromUtf16(unit.symbol));
    }
    return made;
  }();
  return groups;
}

double UnitConversion::convert(double value, const QString& from, const QString& to) {
  if (std::isfinite(value)) {
    for (const UnitGroup& group : kGroups) {
      const Unit* source = unitIn(group, from);
      const Unit* target = unitIn(group, to);
      if (!source || !target) continue;
      return group.name == kTemperature ? temperature(value, from, to) : value * source->factor / target->factor;
    }
  }
  throw DomainError::invalid(UnitWords::tr("Choose compatible units."));
}

}  // namespace tarnwick
