#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// A value, or the sentence that replaces it.
struct Answer {
  std::optional<double> value;
  QString sentence;

  bool operator==(const Answer&) const = default;
};

/// What the calculator and the converter read and write, in the user's locale.
struct UtilityText {
  /// A text as the user writes numbers, with the point that programs know and without separators of thousands.
  static QString plain(const QString& text, const QLocale& locale);
  /// The number that a user wrote; absent for what is none.
  static std::optional<double> value(const QString& text, const QLocale& locale);
  static Answer calculate(const QString& expression, const QLocale& locale);
  static Answer convert(const QString& value, const QString& from, const QString& to, const QLocale& locale);
  /// As the locale writes it, with at most `decimals` digits behind the point and none that say nothing; "-0" is "0".
  static QString localised(double value, const QLocale& locale, int decimals);
  /// The same with the true minus, for the eye.
  static QString number(double value, const QLocale& locale, int decimals = 10);
  /// The number from its longest form to its shortest, for places of unknown width.
  static QStringList forms(double value, const QLocale& locale);
  /// The number as the user would type it, to calculate on with it.
  static QString typed(double value, const QLocale& locale);
};

}  // namespace tarnwick
