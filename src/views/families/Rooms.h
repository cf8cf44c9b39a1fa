#pragma once

#include <QMap>
#include <QString>
#include <memory>
#include <span>

#include "views/panels/Room.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

/// The rooms: everything that is particular to a group of kinds is in one folder below this one, and is asked for
/// here. Nothing else names kinds one by one.
struct Rooms {
  /// In the order of the table.
  static std::span<const Room* const> all();
  /// The one room that a kind belongs to; null for a kind that is in no room's list.
  static const Room* of(const WidgetDefinition& definition);

  static std::span<const WidgetOption> options(const QString& kind);
  static bool hasForm(const QString& kind);
  /// Whether nothing in this version fills the tiles of a kind.
  static bool comesLater(const QString& kind);
  /// Does what a click on a part of a tile means.
  static void act(const PartClick& click);
  /// Sets what these widgets show, and nothing else: a service that no widget shows is not asked, and so reads nothing.
  static void read(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services);
  /// The options of an example of a kind; empty where it needs none.
  static QMap<QString, QString> example(const QString& kind, const ExampleRequest& request);
  /// Gives the sources what these widgets show and the user has nothing of.
  static void sample(TileSources& sources, const TileSources& samples, const QList<DockWidget>& widgets);
  /// The further states in which the pictures of the program show the panel of a kind.
  static std::span<const PanelState> states(const QString& kind);
  /// The options of a kind in the pictures of the program.
  static QMap<QString, QString> pictured(const QString& kind, const QDateTime& now);
};

/// The content of `widget` at one moment. Never fails: a kind without a painter of its own gets the generic tile.
TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources);

/// What could not be read of that which a tile shows, as a finished sentence; empty where nothing is missing.
QString tileProblem(const WidgetDefinition& definition, const TileSources& sources);

/// The one accent of a kind of widget.
Accent tileAccent(const WidgetDefinition& definition);

/// Makes the panel behind a widget's tile. Never null: a kind without a panel of its own gets the plain one, which says
/// in a sentence what the widget lacks. The panel is not started yet.
std::unique_ptr<TilePanel> makePanel(const PanelContext& context);

}  // namespace tarnwick
