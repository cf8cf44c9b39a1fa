#include "services/Money.h"

#include <QMap>
#include <QSet>
#include <cmath>

namespace tarnwick {

using namespace Qt::StringLiterals;

int Money::decimals(const QString& currency) {
  static const QSet<QString> none{u"JPY"_s, u"KRW"_s, u"VND"_s, u"CLP"_s, u"ISK"_s, u"XAF"_s, u"XOF"_s, u"XPF"_s,
                                  u"BIF"_s, u"DJF"_s, u"GNF"_s, u"KMF"_s, u"PYG"_s, u"RWF"_s, u"UGX"_s, u"VUV"_s};
  static const QSet<QString> three{u"BHD"_s, u"JOD"_s, u"KWD"_s, u"OMR"_s, u"TND"_s};
  const QString code = currency.toUpper();
  if (none.contains(code)) return 0;
  return three.contains(code) ? 3 : 2;
}

double Money::major(qint64 minor, const QString& currency) {
  return static_cast<double>(minor) / std::pow(10, decimals(currency));
}

QString Money::text(double amount, const QString& currency, const QLocale& locale) {
  static const QMap<QString, QString> signs{{u"USD"_s, u"$"_s}, {u"EUR"_s, u"€"_s}, {u"GBP"_s, u"£"_s},
                                            {u"JPY"_s, u"¥"_s}, {u"INR"_s, u"₹"_s}, {u"KRW"_s, u"₩"_s}};
  // London quotes in pence, by a code of its own.
  if (currency == "GBp"_L1) return text(amount / 100, u"GBP"_s, locale);
  const QString code = currency.toUpper();
  // Some locales put a loss into brackets, as ledgers do.
  if (amount < 0) return locale.negativeSign() + text(-amount, currency, locale);
  return locale.toCurrencyString(amount, signs.value(code, code + u'\u00a0'), decimals(code)).trimmed();
}

}  // namespace tarnwick
