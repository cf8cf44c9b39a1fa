#pragma once

#include <QString>
#include <optional>

namespace tarnwick {

/// What text means to every part alike.
struct Text {
  /// Without white space and new lines at both ends.
  static QStringView trimmed(QStringView text) { return text.trimmed(); }

  /// A number written as decimal digits, with an optional sign, point and exponent, and nothing around it. Absent for
  /// every other text, hexadecimal and infinity included, and for what is too large to be finite. Same in every locale.
  static std::optional<double> number(QStringView text);

  /// As searches compare it: without case and accents, with the apostrophe that keyboards have.
  static QString folded(const QString& text);
};

}  // namespace tarnwick
