#include "views/families/Rooms.h"

#include <QSet>
#include <algorithm>
#include <array>

#include "services/ProviderTable.h"
#include "views/panels/PlainPanel.h"
#include "views/tiles/GenericTile.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

// Each is defined in the folder of its name, in a file of its own.
extern const Room kClocksRoom;
extern const Room kCalendarRoom;
extern const Room kTimersRoom;
extern const Room kNotesRoom;
extern const Room kHabitsRoom;
extern const Room kSystemRoom;
extern const Room kAppsRoom;
extern const Room kWindowsRoom;
extern const Room kFilesRoom;
extern const Room kUtilitiesRoom;
extern const Room kTogglesRoom;
extern const Room kWeatherRoom;
extern const Room kServicesRoom;
extern const Room kMediaRoom;
extern const Room kDevicesRoom;
extern const Room kPeopleRoom;
extern const Room kClipboardRoom;
extern const Room kGapsRoom;
extern const Room kMeetingsRoom;

namespace {

constexpr std::array kRooms = {&kClocksRoom,  &kCalendarRoom,  &kTimersRoom,   &kNotesRoom,   &kHabitsRoom,
                               &kSystemRoom,  &kAppsRoom,      &kWindowsRoom,  &kFilesRoom,   &kUtilitiesRoom,
                               &kTogglesRoom, &kWeatherRoom,   &kServicesRoom, &kMediaRoom,   &kDevicesRoom,
                               &kPeopleRoom,  &kClipboardRoom, &kGapsRoom,     &kMeetingsRoom};

const RoomRow* rowIn(std::span<const RoomRow> rows, const QString& word) {
  const auto row = std::ranges::find(rows, word, &RoomRow::of);
  return row == rows.end() ? nullptr : &*row;
}

QSet<QString> kindsOf(const QList<DockWidget>& widgets) {
  QSet<QString> kinds;
  for (const DockWidget& widget : widgets) kinds.insert(widget.kind);
  return kinds;
}

/// What its room says of a kind: its own row before its family's.
struct Rows {
  explicit Rows(const WidgetDefinition& definition) {
    const Room* room = Rooms::of(definition);
    if (!room) return;
    kind = rowIn(room->kinds, definition.id);
    family = rowIn(room->families, definition.family);
  }

  /// A column; a null one where neither row says anything.
  template <class Column>
  Column get(Column RoomRow::*column) const {
    if (kind && kind->*column) return kind->*column;
    return family ? family->*column : Column{};
  }

  const RoomRow* kind = nullptr;
  const RoomRow* family = nullptr;
};

/// A kind whose service is offered is served, whatever the row of its family says.
bool isLater(const Rows& rows, const QString& kind) {
  return rows.get(&RoomRow::comesLater).value_or(false) && !providerFor(kind);
}

}  // namespace

std::span<const Room* const> Rooms::all() { return kRooms; }

const Room* Rooms::of(const WidgetDefinition& definition) {
  for (const Room* room : kRooms)
    if (rowIn(room->kinds, definition.id)) return room;
  for (const Room* room : kRooms)
    if (rowIn(room->families, definition.family)) return room;
  return nullptr;
}

std::span<const WidgetOption> Rooms::options(const QString& kind) {
  return Rows(Catalog::find(kind)).get(&RoomRow::options).value_or(std::span<const WidgetOption>());
}

bool Rooms::hasForm(const QString& kind) {
  const Rows rows(Catalog::find(kind));
  return (!rows.kind || rows.kind->hasForm) && (!rows.family || rows.family->hasForm);
}

bool Rooms::comesLater(const QString& kind) { return isLater(Rows(Catalog::find(kind)), kind); }

void Rooms::act(const PartClick& click) {
  if (const auto act = Rows(Catalog::find(click.widget.kind)).get(&RoomRow::act)) act(click);
}

void Rooms::read(ReadingFacts& readings, const QList<DockWidget>& widgets, const ReadingServices& services) {
  for (const QString& kind : kindsOf(widgets)) {
    const Rows rows(Catalog::find(kind));
    if (const auto read = rows.get(&RoomRow::read)) read(readings, services);
    const auto readEach = rows.get(&RoomRow::readEach);
    if (!readEach) continue;
    QList<DockWidget> ofKind;
    std::ranges::copy_if(widgets, std::back_inserter(ofKind),
                         [&](const DockWidget& widget) { return widget.kind == kind; });
    readEach(readings, ofKind, services);
  }
}

QMap<QString, QString> Rooms::example(const QString& kind, const ExampleRequest& request) {
  const auto example = Rows(Catalog::find(kind)).get(&RoomRow::example);
  return example ? example(request) : QMap<QString, QString>();
}

void Rooms::sample(TileSources& sources, const TileSources& samples, const QList<DockWidget>& widgets) {
  for (const QString& kind : kindsOf(widgets)) {
    const Rows rows(Catalog::find(kind));
    if (isLater(rows, kind)) continue;
    if (const auto sample = rows.get(&RoomRow::sample)) sample(sources, samples);
  }
}

QMap<QString, QString> Rooms::pictured(const QString& kind, const QDateTime& now) {
  const auto pictured = Rows(Catalog::find(kind)).get(&RoomRow::pictured);
  return pictured ? pictured(now) : QMap<QString, QString>();
}

std::span<const PanelState> Rooms::states(const QString& kind) {
  const auto states = Rows(Catalog::find(kind)).get(&RoomRow::states);
  return states ? states() : std::span<const PanelState>();
}

TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources) {
  const Rows rows(definition);
  const TileRequest request{widget, definition, sources, isLater(rows, definition.id)};
  const auto make = rows.get(&RoomRow::content);
  return make ? make(request) : TileContent(makeGeneric(request));
}

QString tileProblem(const WidgetDefinition& definition, const TileSources& sources) {
  const auto problem = Rows(definition).get(&RoomRow::problem);
  return problem ? problem(sources) : QString();
}

Accent tileAccent(const WidgetDefinition& definition) {
  const auto accent = Rows(definition).get(&RoomRow::accent);
  return accent ? accent(definition) : Accent::Blue;
}

std::unique_ptr<TilePanel> makePanel(const PanelContext& context) {
  const WidgetDefinition& definition = Catalog::find(context.as.isEmpty() ? context.kind() : context.as);
  PanelContext own = context;
  own.accent = tileAccent(definition);
  const Rows rows(definition);
  own.comesLater = isLater(rows, definition.id);
  if (const auto make = rows.get(&RoomRow::panel)) return make(own);
  return own.comesLater ? makeLaterPanel(own) : makePlainPanel(own);
}

}  // namespace tarnwick
