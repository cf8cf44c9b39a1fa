#include "services/ExactDecimal.h"

#include <QRegularExpression>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostDigits = 18;  ///< Before the point; sums of so many still fit.

}  // namespace

std::optional<ExactDecimal> ExactDecimal::read(const QString& text) {
  static const QRegularExpression form(u"^([+-]?)([0-9]+)(?:\\.([0-9]+))?\\z"_s);
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const QString fraction = match.captured(3).left(kScale);
  if (match.capturedLength(2) > kMostDigits) return std::nullopt;
  Units units = 0;
  for (const QChar digit : match.captured(2) + fraction.leftJustified(kScale, u'0'))
    units = units * 10 + digit.digitValue();
  return ExactDecimal(match.captured(1) == "-"_L1 ? -units : units);
}

ExactDecimal ExactDecimal::of(qint64 units, int decimals) { return ExactDecimal(units * unitsOf(decimals)); }

ExactDecimal::Units ExactDecimal::unitsOf(int decimals) {
  Units units = 1;
  for (int each = decimals; each < kScale; ++each) units *= 10;
  return units;
}

ExactDecimal ExactDecimal::rounded(int decimals) const {
  const Units step = unitsOf(decimals);
  const Units half = units_ < 0 ? -step / 2 : step / 2;
  return ExactDecimal((units_ + half) / step * step);
}

ExactDecimal ExactDecimal::operator+(const ExactDecimal& other) const { return ExactDecimal(units_ + other.units_); }

QString ExactDecimal::text(int decimals) const {
  Units left = units_ < 0 ? -units_ : units_;
  QString digits;
  while (left > 0 || digits.size() <= kScale) {
    digits.prepend(QChar(u'0' + static_cast<char16_t>(left % 10)));
    left /= 10;
  }
  digits.insert(digits.size() - kScale, u'.');
  const qsizetype fewest = digits.indexOf(u'.') + 1 + decimals;
  while (digits.size() > fewest && digits.endsWith(u'0')) digits.chop(1);
  if (digits.endsWith(u'.')) digits.chop(1);
  return units_ < 0 ? u'-' + digits : digits;
}

double ExactDecimal::value() const { return text().toDouble(); }

}  // namespace tarnwick
