#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// A time zone that was looked for.
struct ZoneMatch {
  QString zone;  ///< Its name, such as "Asia/Tokyo".
  QString city;
  QString country;

  bool operator==(const ZoneMatch&) const = default;
};

/// Finds time zones by city, country or their own names, whatever the letter case and the accents; also by large cities
/// that no zone is named after.
struct ZoneSearch {
  /// The best `most`; none for a blank text.
  static QList<ZoneMatch> find(const QString& text, qsizetype most);
  /// Whether the label says no more than which zone it is, so that another zone needs another one. An empty one is.
  static bool isNameOf(const QString& label, const QString& zone);
};

}  // namespace tarnwick
