#include "views/families/notes/NotesRoom.h"

#include <array>

#include "views/families/notes/NoteTiles.h"
#include "views/panels/Room.h"
#include "widgets/LibraryWords.h"
#include "widgets/QuickNotes.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kNoteOptions = {
    WidgetOption{.key = option::text, .shape = FieldShape::Text, .label = QT_TRANSLATE_NOOP("Library", "Note")},
};

void tickTodo(const PartClick& click) {
  const auto& todos = click.store.config().todos;
  if (click.part >= 0 && click.part < todos.size()) click.store.toggleTodo(todos[click.part].id);
}

QMap<QString, QString> exampleNote(const ExampleRequest&) {
  return {{option::text, LibraryWords::tr("Water the plants on Friday")}};
}
void sampleTodos(TileSources& sources, const TileSources& samples) {
  if (sources.todos.isEmpty()) sources.todos = samples.todos;
}
void sampleNote(TileSources& sources, const TileSources& samples) {
  if (!sources.latestNote) sources.latestNote = samples.latestNote;
}

TodoItem todo(const QString& text, bool done) {
  TodoItem item;
  item.id = QUuid::createUuidV5(QUuid(), text);
  item.text = text;
  item.completed = done;
  return item;
}

QString latestNote() { return u"Dock review\nCheck the ring width at half the scale"_s; }

QMap<QString, QString> picturedNote(const QDateTime&) {
  return {{option::text, u"Ask Ines about the museum tickets"_s}};
}

QList<TodoItem> picturedTodos() {
  return {todo(u"Fix clipboard icon at 0.5 scale"_s, false), todo(u"Reply to Sam about the theme"_s, false),
          todo(u"Book train for Friday"_s, false), todo(u"Write release notes"_s, true),
          todo(u"Draw empty states for panels"_s, true)};
}

void picture(TileSources& sources) {
  sources.todos = picturedTodos();
  sources.latestNote = QuickNotes::reading(latestNote());
}

void fillStore(AppStore& store, const QDateTime& now) {
  store.edit([&now](DockConfiguration& config) {
    config.todos = picturedTodos();
    config.profiles.last().widgets.append(
        {QUuid::createUuidV5(QUuid(), u"latest note"_s),
         kind::scratchNote,
         {},
         {{option::text, latestNote()}, {option::edited, QString::number(now.addSecs(-600).toSecsSinceEpoch())}}});
  });
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Todos),
            .content = contentOf<makeTodos>,
            .panel = makeTodosPanel,
            .accent = always<Accent::Green>,
            .act = tickTodo,
            .sample = sampleTodos},
    RoomRow{.of = familyText(Family::Notes),
            .content = contentOf<makeNote>,
            .panel = makeNotePanel,
            .accent = always<Accent::Yellow>,
            .options = kNoteOptions,
            .example = exampleNote,
            .pictured = picturedNote},
    RoomRow{.of = familyText(Family::NativeNotes),
            .content = contentOf<makeLatestNote>,
            .panel = makeNotesPanel,
            .accent = always<Accent::Yellow>,
            .sample = sampleNote},
};

}  // namespace

extern const Room kNotesRoom;
constinit const Room kNotesRoom{.name = "notes"_L1, .families = kFamilies, .picture = picture, .fillStore = fillStore};

}  // namespace tarnwick
