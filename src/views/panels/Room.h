#pragma once

#include <QLatin1StringView>
#include <QMap>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "store/Commands.h"
#include "views/panels/FixedReadings.h"
#include "views/panels/PanelContext.h"
#include "views/panels/WidgetOption.h"
#include "views/theme/Palette.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TilePanel;

/// A click on a part of a tile (see TileContent::partAt), and what it may act upon.
struct PartClick {
  DockWidget widget;
  int part = 0;
  QString display;  ///< Whose dock it is in.
  AppStore& store;
  Toggles& toggles;
  Commands& commands;
  std::function<std::shared_ptr<const CalendarDigest>()> calendar;  ///< Never gives null.
};

/// What the example of a kind may be made from.
struct ExampleRequest {
  QDateTime now;
  QStringList applications;  ///< Paths of desktop entries.
};

/// A function that gives the same answer to every question, for the columns below.
template <auto Answer, class Question>
constexpr auto always(const Question&) {
  return Answer;
}

/// A state of a panel, or of a tile and its panel, that the pictures of the program show beside the usual one.
struct PanelState {
  QLatin1StringView name;
  /// Changes what tile and panel show. Nothing; then the tile is not pictured.
  void (*fill)(TileSources& sources) = nullptr;
  /// Sets what the panel reads, before it is made. Nothing.
  void (*prepare)(AppStore& store, FixedReadings& readings) = nullptr;
  /// Does what the user did in it. Nothing.
  void (*arrange)(TilePanel& panel) = nullptr;
};

/// What there is to know of a kind, or of all kinds of a family. What a kind's row leaves out its family's row says;
/// what both leave out has the answer that is given here.
struct RoomRow {
  QLatin1StringView of;  ///< The kind, or the family.
  /// Without one: the symbol, the name, and a word that says what is missing.
  TileContent (*content)(const TileRequest& request) = nullptr;
  /// Without one: the plain panel, which says in a sentence what the widget lacks.
  std::unique_ptr<TilePanel> (*panel)(const PanelContext& context) = nullptr;
  Accent (*accent)(const WidgetDefinition& definition) = nullptr;       ///< Blue.
  std::optional<std::span<const WidgetOption>> options = std::nullopt;  ///< None.
  bool hasForm = true;  ///< Whether there is a form in which the widget is set up.
  /// Whether nothing in this version fills its tile by itself, which then says so, as do its panel (a room's own, or
  /// else one that says it in a sentence) and its card in the library. False. A kind that is filled is taken off here:
  /// by its family's row, or by a row of its own that says false.
  std::optional<bool> comesLater = std::nullopt;
  /// Does what a click on a part of the tile means. Nothing.
  void (*act)(const PartClick& click) = nullptr;
  /// What could not be read of that which the tile shows, as a finished sentence. Nothing.
  QString (*problem)(const TileSources& sources) = nullptr;
  /// Sets what its tiles show of the machine and of the user's files. Nothing.
  void (*read)(ReadingFacts& readings, const ReadingServices& services) = nullptr;
  /// The same of what is another for each of these widgets, which are all of its kind that are shown. Nothing.
  void (*readEach)(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) = nullptr;
  /// The options of an example, for a picture of a widget that nothing is set for. None.
  QMap<QString, QString> (*example)(const ExampleRequest& request) = nullptr;
  /// Gives `sources` what its tiles show and the user has nothing of, out of `samples`. Nothing.
  void (*sample)(TileSources& sources, const TileSources& samples) = nullptr;
  /// The options in the pictures of the program, which show the moment `now`. None.
  QMap<QString, QString> (*pictured)(const QDateTime& now) = nullptr;
  /// The further states in which they show its panel, and perhaps its tile. None.
  std::span<const PanelState> (*states)() = nullptr;
};

/// What panels ask while the pictures of the program are made.
struct PicturedParts {
  FixedReadings& readings;
  QDateTime now;
};

/// All that is particular to a group of kinds, for the table in views/families/Rooms.cpp. A room names the families
/// that it serves, and single kinds; a kind that is named belongs to the room that names it, whatever its family.
struct Room {
  QLatin1StringView name;  ///< Of its folder.
  std::span<const RoomRow> families = {};
  std::span<const RoomRow> kinds = {};
  /// Gives what its tiles show in the pictures of the program, at the moment of the sources.
  void (*picture)(TileSources& sources) = nullptr;
  /// Puts what its tiles and panels show there into the store.
  void (*fillStore)(AppStore& store, const QDateTime& now) = nullptr;
  /// Gives what only its panels ask there.
  void (*fillReadings)(const PicturedParts& parts) = nullptr;
};

/// The column `content`, from a function that gives a struct.
template <auto Make>
TileContent contentOf(const TileRequest& request) {
  return Make(request);
}

}  // namespace tarnwick
