#pragma once

#include <QColor>
#include <QStringList>
#include <optional>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A result over what it was made from.
struct ResultContent {
  QStringList figures;  ///< From the longest form to the shortest; the first that fits is shown.
  QString unit;
  QString source;
  QString exact;  ///< The result with all of its digits, for the tip.
  QString symbol;

  bool operator==(const ResultContent&) const = default;
};
ResultContent makeCalculator(const TileRequest& request);
ResultContent makeConverter(const TileRequest& request);
TileText describe(const ResultContent& content, const QString& name);
void paint(TileCanvas& canvas, const ResultContent& content);

/// The color that was picked last.
struct ColorContent {
  std::optional<QRgb> color;
  QString hex;

  bool operator==(const ColorContent&) const = default;
};
ColorContent makeColor(const TileRequest& request);
TileText describe(const ColorContent& content, const QString& name);
void paint(TileCanvas& canvas, const ColorContent& content);

/// The emoji that were copied last.
struct EmojiContent {
  static constexpr qsizetype kShown = 3;
  QStringList emoji;

  bool operator==(const EmojiContent&) const = default;
};
EmojiContent makeEmoji(const TileRequest& request);
TileText describe(const EmojiContent& content, const QString& name);
void paint(TileCanvas& canvas, const EmojiContent& content);

}  // namespace tarnwick
