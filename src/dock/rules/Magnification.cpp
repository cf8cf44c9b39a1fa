#include "dock/rules/Magnification.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarnwick {

double Magnification::amountNamed(const QString& name) {
  if (name == QLatin1String("off")) return 0;
  return name == QLatin1String("much") ? kMuch : kMost;
}

QList<double> Magnification::centres(const QList<double>& widths, double spacing, double leadingInset) {
  QList<double> centres;
  double x = leadingInset;
  for (const double width : widths) {
    centres.append(x + width / 2);
    x += width + spacing;
  }
  return centres;
}

double Magnification::scale(double centre, double x, double most) {
  const double distance = std::abs(centre - x);
  if (!std::isfinite(distance)) return 1;
  const double t = std::min(distance / kReach, 1.0);
  return 1 + most * (std::cos(t * std::numbers::pi) + 1) / 2;
}

}  // namespace tarnwick
