#include "services/CurrencyQuote.h"

#include <algorithm>
#include <cmath>

#include "base/DomainError.h"
#include "services/ServiceWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// An answer that does not name its currencies is taken at its word.
bool isAbout(const QJsonValue& named, const QString& asked) {
  return named.isUndefined() || named.toString().compare(asked, Qt::CaseInsensitive) == 0;
}

}  // namespace

CurrencyQuote CurrencyQuote::decode(const QJsonValue& answer, const QString& base, const QString& quote) {
  const QJsonValue rate = answer["rate"_L1];
  const bool isRate = rate.isDouble() && std::isfinite(rate.toDouble()) && rate.toDouble() > 0;
  if (!isRate || !isAbout(answer["base"_L1], base) || !isAbout(answer["quote"_L1], quote))
    throw DomainError::invalid(ServiceWords::tr("Invalid rate response"));
  return {base, quote, rate.toDouble(), QDate::fromString(answer["date"_L1].toString(), Qt::ISODate)};
}

bool CurrencyQuote::isCode(QStringView text) {
  return text.size() == 3 && std::ranges::all_of(text, [](QChar each) { return each >= u'A' && each <= u'Z'; });
}

}  // namespace tarnwick
