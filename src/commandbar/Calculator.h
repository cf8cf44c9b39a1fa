#pragma once

#include <QLocale>
#include <QString>
#include <optional>

namespace tarnwick {

/// The calculator behind the command bar, asked at every keystroke: it gives a value for what is a calculation, and
/// none, without a word, for everything else.
///
/// Beside the four operations there are "^", which groups to the right, and "%": a remainder where an operand follows
/// it, else a hundredth of what stands before it. So 50%+10 is 10.5 and 50%-10 is 0. Signs bind tighter than "^":
/// -2^2 is 4. Numbers are written with a point, without an exponent and without marks between thousands.
struct Calculator {
  /// Parentheses, signs and powers may be nested this deep. More is no calculation.
  static constexpr int kDeepest = 1000;

  /// Finite. A number alone is no calculation: there must be an operator, a percent sign or a parenthesis.
  static std::optional<double> evaluate(const QString& text);

  /// A value in the user's way of writing numbers, with at most ten digits behind the point.
  static QString format(double value, const QLocale& locale = QLocale());
};

}  // namespace tarnwick
