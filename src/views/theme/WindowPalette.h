#pragma once

#include <QColor>
#include <QPalette>

namespace tarnwick {

/// The grounds of the program's own windows.
struct WindowColors {
  QColor side, body, card, hairline;
};
const WindowColors& windowColors(bool dark);

/// The colours of the program's own windows, menus and message boxes.
QPalette windowPalette(bool dark);

}  // namespace tarnwick
