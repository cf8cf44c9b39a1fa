#pragma once

#include <QLocale>
#include <QString>
#include <optional>

namespace tarnwick {

/// What people write into a command bar that Calculator, by its rules, does not take for a calculation: "12 cm in in",
/// "10% of 50", "sqrt(2)", "4 × 3", and numbers as the user's locale writes them. It gives nothing for all else, and
/// for what Calculator answers itself.
struct QuickAnswer {
  /// The result as it is shown and copied: with its unit, where something was converted.
  static std::optional<QString> of(const QString& text, const QLocale& locale = QLocale());
};

}  // namespace tarnwick
