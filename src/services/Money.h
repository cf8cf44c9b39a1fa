#pragma once

#include <QLocale>
#include <QString>

namespace tarnwick {

/// Sums in a currency, which is named by its code of three letters in either case.
struct Money {
  /// How many decimals the major unit has.
  static int decimals(const QString& currency);
  /// A sum in the minor unit as one in the major unit.
  static double major(qint64 minor, const QString& currency);
  /// A sum in the major unit, as it is written in the locale: with the sign of a currency that everybody knows by one,
  /// else with its code.
  static QString text(double amount, const QString& currency, const QLocale& locale = QLocale());
};

}  // namespace tarnwick
