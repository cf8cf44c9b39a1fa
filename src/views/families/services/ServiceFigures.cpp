#include "views/families/services/ServiceFigures.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "services/ServiceWords.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kBetweenParts = u" · "_s;
/// A whole number of more digits is a name.
constexpr qsizetype kMostDigits = 15;
/// From here on the cents of an amount say little.
constexpr double kWholeAmounts = 100;
/// From here on a count, and an amount, may be told in thousands or millions.
constexpr double kShortCounts = 1e4;
constexpr double kShortAmounts = 1e6;
/// Of so many units on, a tenth is left out.
constexpr double kWholeUnits = 100;

bool isWholeNumber(const QString& text) {
  static const QRegularExpression whole(u"^-?[0-9]+$"_s);
  return text.size() <= kMostDigits && whole.match(text).hasMatch();
}

bool isMoney(const QString& text) {
  static const QRegularExpression currency(u"\\p{Sc}|^[-−]?[A-Z]{3}\\x{A0}|\\x{A0}[A-Z]{3}$"_s);
  return currency.match(text).hasMatch();
}

/// A figure that is shown with its number in the middle: what stands before it, the number, and its unit.
struct OpenFigure {
  QString before;
  double value = 0;
  bool hasCents = false;
  QString unit;

  FigureWords with(const QString& number, const QString& size = {}) const {
    return {before + number, unit.isEmpty() ? size : size.isEmpty() ? unit : size + u'\u00a0' + unit, true};
  }
};

std::optional<OpenFigure> opened(const FigureWords& words, const QLocale& locale) {
  const auto isDigit = [](QChar letter) { return letter.isDigit(); };
  const auto first = std::ranges::find_if(words.figure, isDigit);
  const QString number = words.figure.mid(first - words.figure.begin());
  bool isNumber = false;
  const double value = locale.toDouble(number, &isNumber);
  if (!isNumber) return std::nullopt;
  return OpenFigure{words.figure.left(words.figure.size() - number.size()), value,
                    number.contains(locale.decimalPoint()), words.unit};
}

/// "48.2" and "K".
FigureWords inUnits(const OpenFigure& figure, const QLocale& locale) {
  const std::array sizes = {std::pair{1e3, TileWords::tr("K", "thousands, behind a number")},
                            std::pair{1e6, TileWords::tr("M", "millions, behind a number")},
                            std::pair{1e9, TileWords::tr("B", "thousand millions, behind a number")},
                            std::pair{1e12, TileWords::tr("T", "millions of millions, behind a number")}};
  // What rounds to a thousand of one is one of the next.
  const auto above = std::ranges::find_if(sizes, [&](const auto& size) { return figure.value < size.first * 999.5; });
  const auto& [size, letter] = above == sizes.end() ? sizes.back() : *above;
  const double units = figure.value / size;
  const double tenths = std::round(units * 10);
  const bool hasTenths = tenths < kWholeUnits * 10 && std::fmod(tenths, 10) != 0;
  return figure.with(locale.toString(units, 'f', hasTenths ? 1 : 0), letter);
}

}  // namespace

ServiceText ServiceText::of(const QString& text) {
  const QStringList parts = text.split(kBetweenParts);
  // An amount below nothing is what there is, not by how much it changed.
  const auto change = std::ranges::find_if(parts, [](const QString& part) {
    return FigureWords::signOf(part) != 0 && FigureWords::of(part).isNumber && !isMoney(part);
  });
  if (change == parts.end()) return {text, {}, {}};
  const qsizetype at = change - parts.begin();
  return {parts.first(at).join(kBetweenParts), *change, parts.sliced(at + 1).join(kBetweenParts)};
}

QString ServiceText::joined() const {
  QStringList parts{before, change, after};
  parts.removeAll(QString());
  return parts.join(kBetweenParts);
}

ServiceHeadline ServiceHeadline::of(const QString& text) {
  static const QString partial = ServiceWords::tr("Partial · ");
  if (!text.startsWith(partial)) return {{}, text};
  return {partial, text.sliced(partial.size())};
}

ServiceFigures ServiceFigures::of(const DockWidget& widget, const TileSources& sources) {
  const QString mode = widget.options.value(option::connectionMode);
  if (mode == value::geminiHistory) return {sources.locale, Writer::LocalReader};
  // An example is what the kind's own reader gives.
  const bool isNative = !mode.isEmpty() || !sources.remote.of(widget.id);
  return {sources.locale, isNative ? Writer::Provider : Writer::Anybody};
}

QString ServiceFigures::part(const QString& text) const {
  if (isWholeNumber(text)) return FigureWords::withMinus(locale_.toString(text.toLongLong()));
  if (isMoney(text) && FigureWords::of(text).isNumber) return FigureWords::withMinus(text);
  return FigureWords::localised(text, locale_);
}

QString ServiceFigures::words(const QString& text) const {
  switch (writer_) {
    case Writer::Anybody:
      return FigureWords::localised(text, locale_);
    case Writer::LocalReader:
      return text;
    case Writer::Provider:
      break;
  }
  QStringList parts = text.split(kBetweenParts);
  for (QString& each : parts) each = part(each);
  return parts.join(kBetweenParts);
}

ServiceText ServiceFigures::aside(const QString& text) const {
  const ServiceText parts = ServiceText::of(text);
  if (parts.change.isEmpty()) return {FigureWords::localised(text, locale_), {}, {}};
  return {words(parts.before), words(parts.change), words(parts.after)};
}

QList<FigureWords> ServiceFigures::ways(const QString& text) const {
  const QString whole = words(text);
  QList<FigureWords> ways{FigureWords::of(whole)};
  const bool isAmount = isMoney(whole);
  if (writer_ == Writer::Anybody || !ways.first().isNumber) return ways;
  if (!isAmount && !ways.first().unit.isEmpty()) return ways;
  const std::optional<OpenFigure> figure = opened(ways.first(), locale_);
  if (!figure) return ways;
  if (isAmount && figure->hasCents && figure->value >= kWholeAmounts)
    ways << figure->with(locale_.toString(std::round(figure->value), 'f', 0));
  if (!(isAmount || figure->hasCents) && figure->value >= kShortCounts) ways << inUnits(*figure, locale_);
  if (isAmount && figure->value >= kShortAmounts) ways << inUnits(*figure, locale_);
  return ways;
}

}  // namespace tarnwick
