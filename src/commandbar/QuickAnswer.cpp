#include "commandbar/QuickAnswer.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "base/Text.h"
#include "commandbar/Calculator.h"
#include "commandbar/UnitConversion.h"
#include "commandbar/UtilityText.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongest = 200;
constexpr int kDecimals = 4;  // Of a converted number from 1 on; a smaller one has as many as a calculation.

struct QuickAnswerWords {
  Q_DECLARE_TR_FUNCTIONS(QuickAnswer)
};

/// What people write for a unit beside its symbol, and beside that in another case.
const QHash<QString, QString>& otherNames() {
  static const QHash<QString, QString> names = [] {
    constexpr struct {
      const char16_t* unit;
      const char16_t* names;
    } rows[] = {{u"m", u"meter meters metre metres"},
                {u"km", u"kilometer kilometers kilometre kilometres"},
                {u"cm", u"centimeter centimeters centimetre centimetres"},
                {u"mm", u"millimeter millimeters millimetre millimetres"},
                {u"in", u"inch inches \""},
                {u"ft", u"foot feet '"},
                {u"yd", u"yard yards"},
                {u"mi", u"mile miles"},
                {u"kg", u"kilogram kilograms kilo kilos"},
                {u"g", u"gram grams"},
                {u"lb", u"lbs pound pounds"},
                {u"oz", u"ounce ounces"},
                {u"°C", u"c celsius"},
                {u"°F", u"f fahrenheit"},
                {u"K", u"kelvin"},
                {u"B", u"byte bytes"},
                {u"s", u"sec second seconds"},
                {u"min", u"minute minutes"},
                {u"h", u"hr hrs hour hours"},
                {u"day", u"d days"},
                {u"m/s", u"mps"},
                {u"km/h", u"kmh kph"},
                {u"kn", u"knot knots kt"},
                {u"L", u"liter liters litre litres"},
                {u"US gal", u"gal gallon gallons"},
                {u"m²", u"m2 sqm"},
                {u"km²", u"km2"},
                {u"ft²", u"ft2 sqft"},
                {u"acre", u"acres"},
                {u"ha", u"hectare hectares"}};
    QHash<QString, QString> made;
    for (const auto& row : rows)
      for (const QString& name : QString::fromUtf16(row.names).split(u' '))
        made.insert(name, QString::fromUtf16(row.unit));
    return made;
  }();
  return names;
}

/// The symbol of the unit that is meant; empty for none.
QString unitOf(const QString& written) {
  const QString folded = written.toLower();
  QString other = otherNames().value(folded);
  for (const auto& group : UnitConversion::groups()) {
    for (const QString& unit : group.units) {
      if (unit == written) return unit;
      if (other.isEmpty() && unit.toLower() == folded) other = unit;
    }
  }
  return other;
}

/// "12 cm in in".
std::optional<QString> converted(const QString& text, const QLocale& locale) {
  static const QRegularExpression form(uR"(^([-+−]?[0-9.,'’\s]+?)\s*([^0-9\s,.].*?)\s+(?:%1)\s+(\S.*)$)"_s.arg(
                                           QuickAnswerWords::tr("in to into as").split(u' ').join(u'|')),
                                       QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const QString from = unitOf(match.captured(2));
  const QString to = unitOf(match.captured(3).trimmed());
  if (from.isEmpty() || to.isEmpty()) return std::nullopt;
  const auto value = UtilityText::convert(match.captured(1), from, to, locale).value;
  if (!value || !std::isfinite(*value)) return std::nullopt;
  const QString figure =
      std::abs(*value) < 1 ? Calculator::format(*value, locale) : UtilityText::localised(*value, locale, kDecimals);
  return u"%1 %2"_s.arg(figure, to);
}

/// Roots as powers: "sqrt(2)" is "((2)^0.5)".
QString withoutRoots(QString text) {
  static const QRegularExpression bare(uR"(√\s*([0-9.]+))"_s);
  text.replace(bare, u"sqrt(\\1)"_s);
  text.replace(u"√"_s, u"sqrt"_s);
  const QString root = u"sqrt("_s;
  // From the last one on, so that what is inside of one is done before it.
  for (qsizetype at = text.lastIndexOf(root); at >= 0; at = text.lastIndexOf(root)) {
    qsizetype end = at + root.size();
    for (int open = 1; end < text.size(); ++end) {
      if (text[end] == u'(') ++open;
      if (text[end] == u')' && --open == 0) break;
    }
    if (end == text.size()) return {};
    text.replace(end, 1, u")^0.5)"_s);
    text.replace(at, root.size(), u"(("_s);
  }
  return text;
}

/// The text in the way in which Calculator reads it.
QString rewritten(const QString& text, const QLocale& locale) {
  QString plain = UtilityText::plain(text.toLower(), locale);
  plain.replace(u'×', u'*').replace(u'·', u'*').replace(u'÷', u'/').replace(u'−', u'-');
  static const QRegularExpression share(uR"(%\s*of\s+)"_s);
  plain.replace(share, u"/100*"_s);
  static const QRegularExpression circle(uR"((?<![a-z0-9.])(pi|π)(?![a-z0-9.]))"_s);
  plain.replace(circle, u"3.14159265358979323846"_s);
  return withoutRoots(plain);
}

}  // namespace

std::optional<QString> QuickAnswer::of(const QString& text, const QLocale& locale) {
  const QString written = Text::withoutOuterBlanks(text).toString();
  if (written.size() > kLongest || std::ranges::none_of(written, [](QChar each) { return each.isNumber(); }))
    return std::nullopt;
  if (Calculator::evaluate(written)) return std::nullopt;
  if (const auto figure = converted(written, locale)) return figure;
  const QString plain = rewritten(written, locale);
  const auto value = plain == written ? std::nullopt : Calculator::evaluate(plain);
  return value ? std::optional(Calculator::format(*value, locale)) : std::nullopt;
}

}  // namespace tarnwick
