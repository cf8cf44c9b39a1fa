#pragma once

#include <QString>
#include <variant>

#include "views/theme/Palette.h"
#include "views/tiles/AppTiles.h"
#include "views/tiles/CalendarTiles.h"
#include "views/tiles/ClockTiles.h"
#include "views/tiles/DateTiles.h"
#include "views/tiles/DigitTiles.h"
#include "views/tiles/FileTiles.h"
#include "views/tiles/GaugeTiles.h"
#include "views/tiles/HabitTiles.h"
#include "views/tiles/MeetingTiles.h"
#include "views/tiles/MetricTiles.h"
#include "views/tiles/NetworkTiles.h"
#include "views/tiles/NoteTiles.h"
#include "views/tiles/OverviewTiles.h"
#include "views/tiles/PlaceTiles.h"
#include "views/tiles/PlainTiles.h"
#include "views/tiles/ProcessTiles.h"
#include "views/tiles/ProgressTiles.h"
#include "views/tiles/ReminderTiles.h"
#include "views/tiles/RunningTiles.h"
#include "views/tiles/TileText.h"
#include "views/tiles/TimerTiles.h"
#include "views/tiles/ToggleTiles.h"
#include "views/tiles/UtilityTiles.h"
#include "views/tiles/WeatherTiles.h"

namespace tarnwick {

/// What a tile shows, as plain values: two contents that compare equal look alike, so a tile is painted anew only when
/// its content differs.
///
/// A new family of tiles is one struct with the functions `describe` and `paint` in a file of its own, its name in this
/// list, and one row in TileContent.cpp that says which widgets it serves.
using TileContent =
    std::variant<GenericContent, ApplicationsContent, TimeDateContent, AnalogClockContent, CurrentWeatherContent,
                 GaugeContent, TogglesContent, SeparatorContent, SpaceContent, LauncherContent, AppFolderContent,
                 FolderContent, TrashContent, ShelfContent, DigitsContent, DateContent, DayNumberContent,
                 TodayClockContent, WorldTimeContent, WorldListContent, ProgressContent, TodayEventContent,
                 NextEventContent, EventListContent, DaysContent, OverviewContent, MeetingContent, MeetingCenterContent,
                 RemindersContent, DueTodayContent, TimerContent, WaterContent, HabitContent, TodosContent, NoteContent,
                 LatestNoteContent, ResultContent, ColorContent, EmojiContent, BatteryContent, MetricChartContent,
                 SystemChartContent, NetworkContent, FigureContent, ProcessesContent, RunningAppsContent,
                 SwitcherContent, PinnedWindowContent, RecentFilesContent, ScreenshotsContent, SearchContent>;

/// The content of `widget` at one moment. Never fails: a kind without a painter of its own gets the generic tile.
TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources);

/// A tile in words. `name` is the user's or the catalog's name for it.
TileText tileText(const TileContent& content, const QString& name);

/// What could not be read of that which a tile shows, as a finished sentence; empty where nothing is missing.
QString tileProblem(const WidgetDefinition& definition, const TileSources& sources);

/// The one accent of a kind of widget.
Accent tileAccent(const WidgetDefinition& definition);

/// Whether the tile stands on a ground and answers the pointer; separators and spaces do not.
bool isSolid(const TileContent& content);

/// The part of a tile that a click at `point` means by itself, in the tile's own units: of quick toggles the `Toggle`,
/// of todos the place in the list, else 0 for the one thing that the tile lets a hand do. `scale` is the dock's.
std::optional<int> tilePartAt(const TileContent& content, double width, QPointF point, double scale = 1);

}  // namespace tarnwick
