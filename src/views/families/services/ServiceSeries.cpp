#include "views/families/services/ServiceSeries.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "views/theme/Glass.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

constexpr double kBarSpace = 3;
constexpr double kBarLeast = 5;
constexpr double kBarMost = 9;
constexpr double kBarRound = 2;
constexpr double kEarlierBars = 0.45;
constexpr double kSquare = 5.2;
constexpr double kSquarePitch = 6.6;
constexpr double kSquareCorner = 1;
constexpr double kSquaresTop = 12;
constexpr int kSquareRows = 6;
constexpr std::array kSquareStrengths = {0.38, 0.66, 1.0};

QColor squareInk(const TileCanvas& canvas, double value, double most) {
  if (value <= 0 || most <= 0) return canvas.colors().track;
  const auto step = static_cast<std::size_t>(std::min(2.0, std::floor(value / most * kSquareStrengths.size())));
  return faded(canvas.accent(), kSquareStrengths.at(step));
}

}  // namespace

void paintServiceBars(TileCanvas& canvas, const QRectF& box, const QList<double>& numbers) {
  const auto fitting = static_cast<qsizetype>((box.width() + kBarSpace) / (kBarLeast + kBarSpace));
  const qsizetype count = std::min(numbers.size(), fitting);
  const QList<double> shown = numbers.last(count);
  const auto [least, most] = std::ranges::minmax(shown);
  const double low = std::min(0.0, least);
  const double range = most > low ? most - low : 1;
  const double pitch = std::min(kBarMost + kBarSpace, (box.width() + kBarSpace) / static_cast<double>(count));
  QPainter& painter = canvas.painter();
  canvas.unmirrored(box.center().x(), [&] {
    painter.save();
    painter.setClipRect(box);
    for (qsizetype i = 0; i < count; ++i) {
      const double height = std::max(1.0, (shown[i] - low) / range * box.height());
      const double x = box.right() + kBarSpace - pitch * static_cast<double>(count - i);
      // The lower corners lie below what is seen.
      drawRounded(painter, QRectF(x, box.bottom() - height, pitch - kBarSpace, height + kBarRound), kBarRound,
                  i == count - 1 ? canvas.accent() : faded(canvas.accent(), kEarlierBars));
    }
    painter.restore();
  });
}

void paintServiceSquares(TileCanvas& canvas, const QRectF& box, const QList<double>& numbers) {
  const auto columns = static_cast<qsizetype>((box.width() + kSquarePitch - kSquare) / kSquarePitch);
  const qsizetype count = std::min(numbers.size(), columns * kSquareRows);
  const QList<double> shown = numbers.last(count);
  const double most = highestOf(shown);
  const qsizetype used = (count + kSquareRows - 1) / kSquareRows;
  canvas.unmirrored(box.center().x(), [&] {
    for (qsizetype i = 0; i < count; ++i) {
      const qsizetype place = used * kSquareRows - count + i;
      const double x = box.right() - kSquare - kSquarePitch * static_cast<double>(used - 1 - place / kSquareRows);
      const double y = kSquaresTop + kSquarePitch * static_cast<double>(place % kSquareRows);
      drawRounded(canvas.painter(), {x, y, kSquare, kSquare}, kSquareCorner, squareInk(canvas, shown[i], most));
    }
  });
}

}  // namespace tarnwick
