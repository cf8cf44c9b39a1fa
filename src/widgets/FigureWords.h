#pragma once

#include <QLocale>
#include <QString>

namespace tarnwick {

/// A text that somebody else wrote, taken apart into a figure and its unit, which is set smaller.
struct FigureWords {
  QString figure;  ///< The number with its sign and what stands before it, such as a currency; or the whole text.
  QString unit;    ///< Behind the number; empty where there is none.
  bool isNumber = false;

  /// "1,234 ms" is 1,234 and ms, "€12.50" stays whole, "73%" is 73 and %. A text that does not begin with a number, and
  /// one whose number is a part of something else (a date, a version, a sentence), stays as it is.
  static FigureWords of(const QString& text);
  /// A figure with its unit as the user's locale writes it, with withMinus(); every other text as it is, and so does
  /// one whose marks are not those of ASCII.
  static QString localised(const QString& text, const QLocale& locale = QLocale());
  /// -1 for a text such as "-2.1%", 1 for one with a plus, 0 for all others.
  static int signOf(const QString& text);
  /// With a minus before its number that is as wide as a plus, in place of a hyphen.
  static QString withMinus(QString text);

  bool operator==(const FigureWords&) const = default;
};

}  // namespace tarnwick
