#pragma once

#include <QPainter>
#include <QPointF>

#include "views/theme/Palette.h"

namespace tarnwick {

enum class WeatherPicture { Sun, CloudSun, Cloud, Fog, Drizzle, Rain, Snow, Thunder, Moon, CloudMoon };

/// Paints a filled weather picture into the square of `size` at `topLeft`.
void drawWeather(QPainter& painter, WeatherPicture picture, QPointF topLeft, double size, const Palette& palette);

}  // namespace tarnwick
