#pragma once

#include <QColor>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// What was copied last.
struct ClipboardContent {
  QString symbol;
  std::optional<QRgb> color;  ///< In place of the symbol, of a colour.
  QString title;
  QString kind;
  QString
      age;  ///< How long ago it was copied; empty where nobody knows. It stands alone where there is no space for both.

  bool operator==(const ClipboardContent&) const = default;
};
TileText describe(const ClipboardContent& content, const QString& name);
void paint(TileCanvas& canvas, const ClipboardContent& content);

/// That, or what the history lacks.
TileContent makeClipboard(const TileRequest& request);

}  // namespace tarnwick
