#pragma once

#include <QLocale>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// What is played: its cover, what it is called, how far it has come, and the buttons for it.
struct PlaybackContent {
  enum class Shape {
    Mini,   ///< The cover, which plays and pauses.
    Whole,  ///< With title, bar and buttons.
    Bar,    ///< The same with the time on both sides of the bar.
    Video   ///< The cover as the whole tile.
  };
  /// Of a click; also the order of the buttons.
  enum Part { Previous, Toggle, Next };

  Shape shape = Shape::Mini;
  QString title;
  QString caption;
  TilePicture cover;
  bool isOn = false;  ///< There is something that can be controlled.
  bool playing = false;
  double share = 0;  ///< How far it has come; 0 where its length is not known.
  QString elapsed;   ///< Both empty where its length is not known.
  QString left;

  bool operator==(const PlaybackContent&) const = default;
};

/// A length as players write it: "1:28", "1:02:03".
QString playbackTime(double seconds, const QLocale& locale);

PlaybackContent makePlaybackMini(const TileRequest& request);
PlaybackContent makePlaybackWhole(const TileRequest& request);
PlaybackContent makePlaybackBar(const TileRequest& request);
PlaybackContent makePlaybackVideo(const TileRequest& request);
TileText describe(const PlaybackContent& content, const QString& name);
void paint(TileCanvas& canvas, const PlaybackContent& content);
std::optional<int> partAt(const PlaybackContent& content, const TileClick& click);
std::optional<TilePart> namedPart(const PlaybackContent& content, const TileClick& point);

}  // namespace tarnwick
