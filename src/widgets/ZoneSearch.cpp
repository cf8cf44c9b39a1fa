#include "widgets/ZoneSearch.h"

#include <QLocale>
#include <QTimeZone>
#include <algorithm>
#include <array>

#include "base/Text.h"
#include "widgets/ClockWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct City {
  const char* name;
  const char* zone;
};

/// Where many people live and no zone has the name.
constexpr std::array kCities = {
    City{"Abu Dhabi", "Asia/Dubai"},
    City{"Atlanta", "America/New_York"},
    City{"Austin", "America/Chicago"},
    City{"Bangalore", "Asia/Kolkata"},
    City{"Barcelona", "Europe/Madrid"},
    City{"Beijing", "Asia/Shanghai"},
    City{"Boston", "America/New_York"},
    City{"Cape Town", "Africa/Johannesburg"},
    City{"Chennai", "Asia/Kolkata"},
    City{"Cologne", "Europe/Berlin"},
    City{"Dallas", "America/Chicago"},
    City{"Delhi", "Asia/Kolkata"},
    City{"Edinburgh", "Europe/London"},
    City{"Frankfurt", "Europe/Berlin"},
    City{"Geneva", "Europe/Zurich"},
    City{"Hamburg", "Europe/Berlin"},
    City{"Hanoi", "Asia/Ho_Chi_Minh"},
    City{"Houston", "America/Chicago"},
    City{"Hyderabad", "Asia/Kolkata"},
    City{"Kyiv", "Europe/Kiev"},
    City{"Kyoto", "Asia/Tokyo"},
    City{"Las Vegas", "America/Los_Angeles"},
    City{"Manchester", "Europe/London"},
    City{"Miami", "America/New_York"},
    City{"Milan", "Europe/Rome"},
    City{"Montreal", "America/Toronto"},
    City{"Mumbai", "Asia/Kolkata"},
    City{"Munich", "Europe/Berlin"},
    City{"Ottawa", "America/Toronto"},
    City{"Philadelphia", "America/New_York"},
    City{"Porto", "Europe/Lisbon"},
    City{"Rio de Janeiro", "America/Sao_Paulo"},
    City{"San Diego", "America/Los_Angeles"},
    City{"San Francisco", "America/Los_Angeles"},
    City{"Seattle", "America/Los_Angeles"},
    City{"Washington", "America/New_York"},
    City{"Wellington", "Pacific/Auckland"},
};

QString folded(const QString& text) { return Text::folded(text).replace(u'_', u' '); }

struct Known {
  ZoneMatch match;
  QString city;  ///< Folded, as are the others.
  QString zone;
  QString country;
};

Known known(const QString& zone, const QString& city) {
  const QLocale::Territory country = QTimeZone(zone.toUtf8()).territory();
  const QString land = country == QLocale::AnyTerritory ? QString() : QLocale::territoryToString(country);
  return {{zone, city, land}, folded(city), folded(zone), folded(land)};
}

/// Read once, at the first search for a zone.
const QList<Known>& knownZones() {
  static const QList<Known> zones = [] {
    QList<Known> all;
    for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) {
      const QString zone = QString::fromLatin1(id);
      if (!zone.contains(u'/') && zone != "UTC"_L1) continue;
      if (zone.startsWith("Etc/"_L1) || zone.startsWith("SystemV/"_L1)) continue;
      all << known(zone, ClockWords::city(zone));
    }
    for (const City& city : kCities) all << known(QString::fromLatin1(city.zone), QString::fromLatin1(city.name));
    return all;
  }();
  return zones;
}

/// How well it fits, 0 best; -1 for not at all.
int rank(const Known& known, const QString& wanted) {
  if (known.city == wanted || known.zone == wanted) return 0;
  if (known.city.startsWith(wanted)) return 1;
  if (known.city.contains(u' ' + wanted)) return 2;
  if (known.country.startsWith(wanted)) return 3;
  if (known.city.contains(wanted)) return 4;
  return known.zone.contains(wanted) ? 5 : -1;
}

}  // namespace

QList<ZoneMatch> ZoneSearch::find(const QString& text, qsizetype most) {
  const QString wanted = folded(text.simplified());
  if (wanted.isEmpty()) return {};
  QList<std::pair<int, const Known*>> found;
  for (const Known& known : knownZones())
    if (const int place = rank(known, wanted); place >= 0) found.append({place, &known});
  std::ranges::stable_sort(found, [](const auto& a, const auto& b) {
    return std::tie(a.first, a.second->city) < std::tie(b.first, b.second->city);
  });
  QList<ZoneMatch> matches;
  for (const auto& [place, known] : found)
    if (matches.size() < most) matches << known->match;
  // A name of the database that is not offered otherwise, such as an old one.
  if (matches.isEmpty() && ClockWords::isZone(text.trimmed()))
    matches << ZoneMatch{text.trimmed(), ClockWords::city(text.trimmed()), {}};
  return matches;
}

bool ZoneSearch::isNameOf(const QString& label, const QString& zone) {
  const QString wanted = folded(label.simplified());
  if (wanted.isEmpty() || wanted == folded(ClockWords::city(zone))) return true;
  return std::ranges::any_of(knownZones(),
                             [&](const Known& known) { return known.match.zone == zone && known.city == wanted; });
}

}  // namespace tarnwick
