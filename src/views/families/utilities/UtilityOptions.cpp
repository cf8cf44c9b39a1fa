#include "views/families/utilities/UtilityOptions.h"

#include <QRegularExpression>
#include <algorithm>

#include "commandbar/UnitConversion.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

Conversion Conversion::of(const DockWidget& widget) {
  const Conversion chosen{widget.options.value(option::value, u"10"_s), widget.options.value(option::from, u"km"_s),
                          widget.options.value(option::to, u"mi"_s)};
  const bool matches = std::ranges::any_of(UnitConversion::groups(), [&](const UnitConversion::Group& group) {
    return group.units.contains(chosen.from) && group.units.contains(chosen.to);
  });
  return matches ? chosen : Conversion{chosen.value, u"km"_s, u"mi"_s};
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
