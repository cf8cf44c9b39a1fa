#pragma once

#include <optional>

#include "views/theme/WeatherPictures.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// What a widget shows while it has nothing of its own to show: its symbol or its service's badge, its name, and one
/// word that says what is missing.
struct GenericContent {
  QString name;
  QString word;
  QString symbol;                              ///< Empty where a badge stands for a service.
  ServiceBadge badge;                          ///< Without letters where there is a symbol.
  bool opensEditor = false;                    ///< Whether the word is something to do, which is what the accent says.
  QString sentence = {};                       ///< In the tip, in place of the word.
  std::optional<WeatherPicture> picture = {};  ///< In place of the symbol.

  bool operator==(const GenericContent&) const = default;
};
GenericContent makeGeneric(const TileRequest& request);
TileText describe(const GenericContent& content, const QString& name);
void paint(TileCanvas& canvas, const GenericContent& content);
/// The rows that its name takes: one, or two where it would lose letters in one.
QStringList nameRows(const TileCanvas& canvas, const GenericContent& content);

}  // namespace tarnwick
