#pragma once

#include <QPalette>

namespace tarnwick {

/// The colours of the program's own windows, menus and message boxes.
QPalette windowPalette(bool dark);

}  // namespace tarnwick
