#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Converts between units of one group. Units are known by their symbols, in which case matters and which are unique
/// across the groups.
struct UnitConversion {
  struct Group {
    QString name;
    QStringList units;
  };

  /// Every group with its units, in the order in which they are offered.
  static const QList<Group>& groups();
  /// Throws DomainError for a value that isn't finite and for units that are not in one group.
  static double convert(double value, const QString& from, const QString& to);
};

}  // namespace tarnwick
