#pragma once

#include <QLocale>
#include <QString>

#include "services/ExactDecimal.h"

namespace tarnwick {

/// Sums in a currency, which is named by its code of three letters in either case.
struct Money {
  /// How many decimals the major unit has.
  static int decimals(const QString& currency);
  /// A sum in the major unit, as it is written in the locale: with the sign of a currency that everybody knows by one,
  /// else with its code.
  static QString text(double amount, const QString& currency, const QLocale& locale = QLocale());
  /// The same of a sum that is not rounded but to the decimals of the currency.
  static QString text(const ExactDecimal& amount, const QString& currency, const QLocale& locale = QLocale());
  /// The same of a sum in the minor unit.
  static QString ofMinor(qint64 minor, const QString& currency, const QLocale& locale = QLocale());
};

}  // namespace tarnwick
