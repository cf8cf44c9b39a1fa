#include "clipboard/ClipboardColor.h"

#include <QList>
#include <algorithm>
#include <cmath>

#include "base/Text.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

std::optional<QColor> ofDigits(QStringView digits) {
  QString whole;
  if (digits.size() <= 4) {
    for (const QChar digit : digits) whole += QString(2, digit);
  } else {
    whole = digits.toString();
  }
  if (whole.size() == 6) whole += u"ff"_s;
  if (whole.size() != 8) return std::nullopt;
  bool isNumber = false;
  const uint value = whole.toUInt(&isNumber, 16);
  if (!isNumber) return std::nullopt;
  return QColor(static_cast<int>(value >> 24), static_cast<int>(value >> 16 & 0xff),
                static_cast<int>(value >> 8 & 0xff), static_cast<int>(value & 0xff));
}

/// From 0 to 1: a percentage, or a part of `whole`.
std::optional<double> share(QStringView text, double whole) {
  const bool isPercent = text.endsWith(u'%');
  const auto number = Text::number(isPercent ? text.chopped(1) : text);
  if (!number) return std::nullopt;
  return std::clamp(*number / (isPercent ? 100 : whole), 0.0, 1.0);
}

QList<QStringView> partsOf(QStringView text) {
  const qsizetype open = text.indexOf(u'(');
  QList<QStringView> parts;
  qsizetype begin = -1;
  for (qsizetype i = open + 1; i < text.size(); ++i) {
    const bool separates = text[i] == u',' || text[i] == u' ' || text[i] == u')';
    if (!separates && begin < 0) begin = i;
    if (!separates || begin < 0) continue;
    parts << text.sliced(begin, i - begin);
    begin = -1;
  }
  return parts;
}

}  // namespace

std::optional<QColor> ClipboardColor::of(QStringView text) {
  const QStringView trimmed = Text::trimmed(text);
  if (trimmed.startsWith(u'#')) return ofDigits(trimmed.sliced(1));
  const bool isHsl = trimmed.startsWith("hsl"_L1);
  if (!(isHsl || trimmed.startsWith("rgb"_L1)) || !trimmed.endsWith(u')')) return std::nullopt;
  const QList<QStringView> parts = partsOf(trimmed);
  if (parts.size() != 3 && parts.size() != 4) return std::nullopt;
  const auto alpha = parts.size() == 4 ? share(parts[3], 1) : 1.0;
  const auto second = share(parts[1], isHsl ? 100 : 255);
  const auto third = share(parts[2], isHsl ? 100 : 255);
  if (!alpha || !second || !third) return std::nullopt;
  if (!isHsl) {
    const auto first = share(parts[0], 255);
    if (!first) return std::nullopt;
    return QColor::fromRgbF(static_cast<float>(*first), static_cast<float>(*second), static_cast<float>(*third),
                            static_cast<float>(*alpha));
  }
  // A hue goes round.
  constexpr double circle = 360;
  const auto degrees = Text::number(parts[0]);
  if (!degrees) return std::nullopt;
  const double turned = std::fmod(std::fmod(*degrees, circle) + circle, circle);
  return QColor::fromHslF(static_cast<float>(turned / circle), static_cast<float>(*second), static_cast<float>(*third),
                          static_cast<float>(*alpha))
      .toRgb();
}

}  // namespace tarnwick
