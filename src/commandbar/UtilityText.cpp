#include "commandbar/UtilityText.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "base/Text.h"
#include "commandbar/Arithmetic.h"
#include "commandbar/UnitConversion.h"
#include "commandbar/UnitWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// From here on a number is written with an exponent only: further digits would be made up.
constexpr double kTooLong = 1e21;

Answer answer(const std::function<double()>& compute) {
  try {
    return {compute(), {}};
  } catch (const DomainError& failure) {
    return {std::nullopt, failure.message()};
  }
}

/// The true minus in place of the one that programs write.
QString withTrueMinus(QString text) { return text.replace(u'-', u'−'); }

}  // namespace

QString UtilityText::plain(const QString& text, const QLocale& locale) {
  QString result = text;
  if (const QString group = locale.groupSeparator(); !group.isEmpty()) {
    const QRegularExpression between(u"(?<=[0-9])%1(?=[0-9]{3}(?![0-9]))"_s.arg(QRegularExpression::escape(group)));
    result.remove(between);
  }
  if (const QString point = locale.decimalPoint(); point != u"."_s) result.replace(point, u"."_s);
  return result;
}

Answer UtilityText::calculate(const QString& expression, const QLocale& locale) {
  return answer([&] { return Arithmetic(plain(expression, locale)).evaluate(); });
}

std::optional<double> UtilityText::value(const QString& text, const QLocale& locale) {
  QString written = plain(text, locale).trimmed();
  written.replace(u'−', u'-');
  return Text::number(written);
}

Answer UtilityText::convert(const QString& value, const QString& from, const QString& to, const QLocale& locale) {
  const auto number = UtilityText::value(value, locale);
  if (!number) return {std::nullopt, UnitWords::tr("Enter a number.")};
  return answer([&] { return UnitConversion::convert(*number, from, to); });
}

QString UtilityText::localised(double value, const QLocale& locale, int decimals) {
  QString text = locale.toString(value, 'f', decimals);
  const QString point = locale.decimalPoint();
  if (decimals > 0 && text.contains(point)) {
    while (text.endsWith(locale.zeroDigit())) text.chop(locale.zeroDigit().size());
    if (text.endsWith(point)) text.chop(point.size());
  }
  const bool nothing = text == locale.negativeSign() + locale.zeroDigit();  // Less than would be seen.
  return nothing ? locale.zeroDigit() : text;
}

QString UtilityText::number(double value, const QLocale& locale, int decimals) {
  return withTrueMinus(localised(value, locale, decimals));
}

QStringList UtilityText::forms(double value, const QLocale& locale) {
  QStringList forms;
  const auto add = [&forms](const QString& form) {
    if (!forms.contains(form)) forms.append(form);
  };
  const double size = std::abs(value);
  if (size < kTooLong) {
    // What rounds to nothing is no form of a number that is something.
    for (const int decimals : {10, 8, 6, 4, 3, 2, 1, 0})
      if (value == 0 || size >= 0.5 * std::pow(10.0, -decimals)) add(number(value, locale, decimals));
  }
  if (size >= 1e6 || (value != 0 && size < 1e-2))
    for (const int digits : {3, 1}) add(withTrueMinus(locale.toString(value, 'e', digits)));
  return forms;
}

QString UtilityText::typed(double value, const QLocale& locale) {
  QLocale without = locale;
  without.setNumberOptions(QLocale::OmitGroupSeparator);
  return number(value, without);
}

}  // namespace tarnwick
