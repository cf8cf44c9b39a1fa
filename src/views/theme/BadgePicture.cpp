#include "views/theme/BadgePicture.h"

#include <algorithm>
#include <array>

#include "views/theme/Glass.h"
#include "views/theme/SymbolTable.h"
#include "views/theme/Upright.h"

namespace tarnwick {

namespace {

constexpr double kLetterWidth = 8;
constexpr double kLetterHeight = 12;
constexpr double kLetterGap = 3.6;
constexpr double kLetterStroke = 2;
// Shares of the side of the badge.
constexpr double kMostLetterHeight = 0.48;
constexpr double kMostLetterWidth = 0.68;

constexpr std::array<const char*, 26> kLetters = {
    "M0 12L4 0L8 12M1.5 8H6.5",
    "M4.4 6C6.3 6 7.4 4.8 7.4 3C7.4 1.2 6.3 0 4.4 0H0V12H4.6C6.8 12 8 10.8 8 9C8 7.2 6.8 6 4.6 6H0",
    "M7.8 2.2C7 0.8 5.8 0 4.2 0C1.6 0 0 2.2 0 6C0 9.8 1.6 12 4.2 12C5.8 12 7 11.2 7.8 9.8",
    "M0 0V12H3.4C6.4 12 8 9.8 8 6C8 2.2 6.4 0 3.4 0Z",
    "M7.4 0H0V12H7.4M0 6H6.4",
    "M7.4 0H0V12M0 6H6.2",
    "M7.8 2.2C7 0.8 5.8 0 4.2 0C1.6 0 0 2.2 0 6C0 9.8 1.6 12 4.2 12C5.9 12 7.2 11.3 8 9.8V6.4H4.8",
    "M0 0V12M8 0V12M0 6H8",
    "M4 0V12",
    "M7 0V8.4C7 10.8 5.8 12 3.7 12C1.7 12 0.5 10.9 0.2 9",
    "M0 0V12M7.6 0L0 7M3 4.4L8 12",
    "M0.6 0V12H7.6",
    "M0 12V0L4 7L8 0V12",
    "M0 12V0L8 12V0",
    "M4 0C1.5 0 0 2.2 0 6C0 9.8 1.5 12 4 12C6.5 12 8 9.8 8 6C8 2.2 6.5 0 4 0Z",
    "M0 12V0H4.4C6.8 0 8 1.3 8 3.4C8 5.5 6.8 6.8 4.4 6.8H0",
    "M4 0C1.5 0 0 2.2 0 6C0 9.8 1.5 12 4 12C6.5 12 8 9.8 8 6C8 2.2 6.5 0 4 0ZM5 8.6L8.2 12.4",
    "M0 12V0H4.4C6.8 0 8 1.3 8 3.4C8 5.5 6.8 6.8 4.4 6.8H0M4.2 6.8L8 12",
    "M7.4 2C6.8 0.7 5.6 0 4 0C1.9 0 0.5 1.2 0.5 3C0.5 4.8 1.7 5.5 4 6C6.5 6.5 7.8 7.3 7.8 9C7.8 10.8 6.3 12 4 12C2.1 "
    "12 0.8 11.2 0.2 9.8",
    "M0 0H8M4 0V12",
    "M0 0V7.8C0 10.5 1.5 12 4 12C6.5 12 8 10.5 8 7.8V0",
    "M0 0L4 12L8 0",
    "M0 0L2 12L4 4L6 12L8 0",
    "M0 0L8 12M8 0L0 12",
    "M0 0L4 6.2L8 0M4 6.2V12",
    "M0 0H8L0 12H8",
};

}  // namespace

QPainterPath badgeLetter(QChar letter) {
  if (letter < u'A' || letter > u'Z') return {};
  return parseSymbol(QLatin1StringView(kLetters[static_cast<std::size_t>(letter.unicode() - u'A')]));
}

void drawServiceBadge(QPainter& painter, const QRectF& box, double corner, const ServiceBadge& badge,
                      const Palette& palette, BadgeDetail detail) {
  if (badge.letters.isEmpty()) return;  // A kind without a service of one name.
  const BadgeColors colors = palette.badge(badge.color);
  drawRounded(painter, box, corner, colors.ground);
  // Where all badges have one colour, both letters are needed however small they are.
  const bool isInitial = detail == BadgeDetail::Initial && !palette.monochrome && !palette.highContrast;
  const QString letters = isInitial ? badge.letters.first(1) : badge.letters;
  const auto count = static_cast<double>(letters.size());
  const double width = count * kLetterWidth + (count - 1) * kLetterGap;
  const double scale =
      std::min(box.height() * kMostLetterHeight / kLetterHeight, box.width() * kMostLetterWidth / width);
  painter.save();
  keepUpright(painter, box.center().x());
  painter.translate(box.center());
  painter.scale(scale, scale);
  painter.translate(-width / 2, -kLetterHeight / 2);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colors.ink, kLetterStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const QChar letter : letters) {
    painter.drawPath(badgeLetter(letter));
    painter.translate(kLetterWidth + kLetterGap, 0);
  }
  painter.restore();
}

}  // namespace tarnwick
