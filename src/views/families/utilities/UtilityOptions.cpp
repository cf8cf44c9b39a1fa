#include "views/families/utilities/UtilityOptions.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "commandbar/UnitConversion.h"
#include "commandbar/UtilityText.h"
#include "services/CurrencyQuote.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

Conversion Conversion::of(const DockWidget& widget) {
  const Conversion chosen{widget.options.value(option::value, u"10"_s), widget.options.value(option::from, u"km"_s),
                          widget.options.value(option::to, u"mi"_s)};
  if (chosen.isOfMoney()) return chosen;
  const bool matches = std::ranges::any_of(UnitConversion::groups(), [&](const UnitConversion::Group& group) {
    return group.units.contains(chosen.from) && group.units.contains(chosen.to);
  });
  return matches ? chosen : Conversion{chosen.value, u"km"_s, u"mi"_s};
}

bool Conversion::isOfMoney() const { return from != to && CurrencyQuote::isCode(from) && CurrencyQuote::isCode(to); }

QStringList offeredCurrencies(const QLocale& locale, const Conversion& chosen) {
  // Twelve fill the rows of a panel.
  constexpr qsizetype kOffered = 12;
  QStringList offered{u"EUR"_s, u"USD"_s, u"GBP"_s, u"JPY"_s, u"CHF"_s, u"CNY"_s,
                      u"CAD"_s, u"AUD"_s, u"INR"_s, u"BRL"_s, u"SEK"_s, u"MXN"_s};
  if (const QString own = locale.currencySymbol(QLocale::CurrencyIsoCode); CurrencyQuote::isCode(own)) {
    offered.removeAll(own);
    offered.prepend(own);
  }
  offered = offered.first(std::min(kOffered, offered.size()));
  if (!chosen.isOfMoney()) return offered;
  for (const QString& code : {chosen.from, chosen.to})
    if (!offered.contains(code)) offered.append(code);
  return offered;
}

std::optional<double> exchanged(const QString& amount, double rate, const QLocale& locale) {
  constexpr double kCents = 100;
  constexpr double kAFewCents = 0.1;
  const auto number = UtilityText::value(amount, locale);
  if (!number) return std::nullopt;
  const double worth = *number * rate;
  if (!std::isfinite(worth * kCents)) return std::nullopt;
  return std::abs(worth) < kAFewCents ? worth : std::round(worth * kCents) / kCents;
}

std::optional<QColor> colorOfHex(const QString& text) {
  static const QRegularExpression form(u"^#?([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6})$"_s);
  const auto match = form.match(text.trimmed());
  if (!match.hasMatch()) return std::nullopt;
  return QColor(u'#' + match.captured(1));
}

QString hexOf(const QColor& color) { return color.name(QColor::HexRgb).toUpper(); }

QStringList recentEmoji(const DockWidget& widget) {
  return widget.options.value(option::recents).split(u' ', Qt::SkipEmptyParts);
}

}  // namespace tarnwick
