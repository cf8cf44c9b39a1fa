#include "services/Money.h"

#include <QMap>
#include <QSet>

#include "base/LocalFigures.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString signOf(const QString& currency) {
  static const QMap<QString, QString> signs{{u"USD"_s, u"$"_s}, {u"EUR"_s, u"€"_s}, {u"GBP"_s, u"£"_s},
                                            {u"JPY"_s, u"¥"_s}, {u"INR"_s, u"₹"_s}, {u"KRW"_s, u"₩"_s}};
  const QString code = currency.toUpper();
  return signs.value(code, code + u'\u00a0');
}

}  // namespace

int Money::decimals(const QString& currency) {
  static const QSet<QString> none{u"JPY"_s, u"KRW"_s, u"VND"_s, u"CLP"_s, u"ISK"_s, u"XAF"_s, u"XOF"_s, u"XPF"_s,
                                  u"BIF"_s, u"DJF"_s, u"GNF"_s, u"KMF"_s, u"PYG"_s, u"RWF"_s, u"UGX"_s, u"VUV"_s};
  static const QSet<QString> three{u"BHD"_s, u"JOD"_s, u"KWD"_s, u"OMR"_s, u"TND"_s};
  const QString code = currency.toUpper();
  if (none.contains(code)) return 0;
  return three.contains(code) ? 3 : 2;
}

QString Money::text(double amount, const QString& currency, const QLocale& locale) {
  // London quotes in pence, by a code of its own.
  if (currency == "GBp"_L1) return text(amount / 100, u"GBP"_s, locale);
  // Some locales put a loss into brackets, as ledgers do.
  if (amount < 0) return locale.negativeSign() + text(-amount, currency, locale);
  return locale.toCurrencyString(amount, signOf(currency), decimals(currency)).trimmed();
}

QString Money::text(const ExactDecimal& amount, const QString& currency, const QLocale& locale) {
  const int places = decimals(currency);
  const ExactDecimal rounded = amount.rounded(places);
  if (rounded.isNegative()) return locale.negativeSign() + text(-rounded, currency, locale);
  const QString digits = rounded.text(places);
  const qsizetype point = digits.size() - (places > 0 ? places + 1 : 0);
  QString text = locale.toCurrencyString(digits.left(point).toLongLong(), signOf(currency)).trimmed();
  if (places == 0) return text;
  // The locale writes the whole units; what is behind the point follows their last digit.
  qsizetype end = text.size();
  while (end > 0 && !text[end - 1].isDigit()) --end;
  return text.insert(end, locale.decimalPoint() + LocalFigures::of(digits.mid(point + 1), locale));
}

QString Money::ofMinor(qint64 minor, const QString& currency, const QLocale& locale) {
  return text(ExactDecimal::of(minor, decimals(currency)), currency, locale);
}

}  // namespace tarnwick
