#pragma once

#include <QString>
#include <optional>

namespace tarnwick {

/// A sum as it is written, with up to eighteen decimals: it is added without rounding.
class ExactDecimal {
 public:
  ExactDecimal() = default;
  /// Digits with a sign or none, and a point or none. Decimals beyond those are cut off. Absent for all else, and for
  /// a sum that is larger than any.
  static std::optional<ExactDecimal> read(const QString& text);
  /// So many of 10^-`decimals`, which are at most eighteen.
  static ExactDecimal of(qint64 units, int decimals);

  ExactDecimal operator+(const ExactDecimal& other) const;
  ExactDecimal operator-() const { return ExactDecimal(-units_); }
  bool operator==(const ExactDecimal&) const = default;
  bool isNegative() const { return units_ < 0; }
  /// To so many decimals, halves away from zero.
  ExactDecimal rounded(int decimals) const;
  /// "-12.5": without zeros at the end, but with `decimals` of them if there are fewer.
  QString text(int decimals = 0) const;
  double value() const;

 private:
  static constexpr int kScale = 18;
  __extension__ using Units = __int128;
  explicit ExactDecimal(Units units) : units_(units) {}
  /// As many units as one of 10^-`decimals` has.
  static Units unitsOf(int decimals);

  Units units_ = 0;  ///< Of 10^-kScale.
};

}  // namespace tarnwick
