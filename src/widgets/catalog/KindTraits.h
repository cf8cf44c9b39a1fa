#pragma once

#include <QString>

#include "widgets/catalog/TickCadence.h"

namespace tarnwick {

/// What a click on a tile opens where no part of the tile takes the click.
enum class TileOpens {
  Panel,        ///< Its panel.
  Application,  ///< What its option `path` names.
  Folder,       ///< Its folder, in the file manager or in its panel as the user has set it; its panel without one.
  Trash         ///< The same, of the trash.
};

/// What a tile does with files that are dropped on it.
enum class TileTakes {
  None,
  Folder,      ///< Brings them into its folder.
  Trash,       ///< Throws them away.
  Shelf,       ///< Puts them on the file shelf.
  Share,       ///< Sends them to devices nearby.
  Application  ///< Opens them with its application.
};

/// How the time of a timer runs.
enum class TimerRun {
  Countdown,
  Exercise,  ///< A countdown to a break in which one moves.
  Stopwatch,
  Pomodoro,  ///< Through the phases of PomodoroMath.
  Posture    ///< Through those of PostureMath.
};

/// The ready-made section of the library that offers a kind.
enum class ReadyMade { None, Apps, Folders };

/// What the rest of the program asks of a kind of widget: columns of the catalog's row. All that a room alone must know
/// of its kinds is in the room.
struct KindTraits {
  TileOpens opens = TileOpens::Panel;
  TileTakes takes = TileTakes::None;
  TimerRun run = TimerRun::Countdown;  ///< Of a timer.
  ReadyMade readyMade = ReadyMade::None;
  /// Set by the row's own column or else by its family, not among the traits of a row.
  TickCadence cadence = TickCadence::Still;
  bool isGap = false;               ///< It only parts other tiles.
  bool isLine = false;              ///< It is a gap with a line in it.
  bool isFolder = false;            ///< It stands for the folder that its option `path` names, and is called after it.
  bool isDownloads = false;         ///< Without an option `path` it shows the user's downloads.
  bool isPinnedWindow = false;      ///< It stands for a window, and is shown only while the user wants such tiles.
  bool anchorsRunningApps = false;  ///< Running applications can be shown beside it.
  bool needsRunningApps = false;    ///< It shows which applications run, or their windows.
  bool isQuickNote = false;         ///< Its option `text` is a note of the user's.
  bool beginsWithWeek = false;      ///< Its days begin with the week, not with today.
  bool showsCityWeather = false;    ///< With an option `city` it shows the weather there.
  bool readsCodex = false;          ///< Its values can come from the Codex program on this computer.
  /// The kind that one becomes which holds a text of its own, as settings from before there was such a kind have it;
  /// empty for one that stays what it is.
  QLatin1StringView withText = {};

  bool launches() const { return opens == TileOpens::Application; }

  /// Those of `kind`; the plain ones for a kind that is in no row. Any thread may call.
  static const KindTraits& of(const QString& kind);
};

}  // namespace tarnwick
