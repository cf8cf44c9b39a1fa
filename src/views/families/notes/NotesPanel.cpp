#include "views/families/notes/NotesRoom.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>

#include "store/DocumentEdits.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelWords.h"
#include "widgets/QuickNotes.h"
#include "widgets/TimeMath.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kAreaHeight = 180;
/// How much later a note must be written into again to count as changed again. Each such mark is saved at once.
constexpr double kMarkSeconds = 60;

/// Writes the text of the note `id` into the document.
void writeNote(AppStore& store, const QUuid& id, const QString& text) {
  const DockWidget* stored = DocumentEdits::find(store.config(), id);
  if (!stored || stored->options.value(option::text) == text) return;
  DockWidget note = *stored;
  note.options.insert(option::text, text);
  const double now = TimeMath::unixSeconds(store.now());
  if (std::abs(now - note.number(option::edited, 0)) > kMarkSeconds)
    note.options.insert(option::edited, TimeMath::text(std::floor(now)));
  store.update(note);
}

QString noteText(const AppStore& store, const QUuid& id) {
  const DockWidget* stored = DocumentEdits::find(store.config(), id);
  return stored ? stored->options.value(option::text) : QString();
}

/// A text area that is bound to one note at a time.
class NoteArea final : public TextArea {
 public:
  explicit NoteArea(AppStore& store) : TextArea(PanelWords::tr("Note")), store_(store) {
    setPlaceholderText(PanelWords::tr("Write a note…"));
    setFixedHeight(kAreaHeight);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
      if (!note_.isNull()) writeNote(store_, note_, toPlainText());
    });
  }

  void bind(const QUuid& note) {
    if (note == note_) return;
    note_ = {};
    setPlainText(noteText(store_, note));
    note_ = note;
  }
  /// Takes a text that was changed elsewhere.
  void follow() {
    if (const QString text = noteText(store_, note_); !note_.isNull() && text != toPlainText()) {
      const QUuid note = std::exchange(note_, QUuid());
      setPlainText(text);
      note_ = note;
    }
  }
  const QUuid& note() const { return note_; }

 private:
  AppStore& store_;
  QUuid note_;
};

IconButton* copyButton(const PanelContext& context, NoteArea* area, QWidget* owner) {
  auto* copy = new IconButton(u"doc.on.clipboard"_s, PanelWords::tr("Copy"));
  QObject::connect(copy, &QPushButton::clicked, owner,
                   [area, &commands = context.commands] { commands.copyText(area->toPlainText()); });
  return copy;
}

class NotePanel final : public TilePanel {
 public:
  explicit NotePanel(const PanelContext& context) : TilePanel(context), area_(new NoteArea(context.store)) {
    body().addWidget(area_);
    area_->bind(context.widget);
    copy_ = copyButton(context, area_, this);
    header().addAction(copy_);
  }

 protected:
  void refresh(const TileSources&) override {
    area_->follow();
    copy_->setEnabled(!area_->toPlainText().isEmpty());
  }
  void showEvent(QShowEvent* event) override {
    TilePanel::showEvent(event);
    area_->moveCursor(QTextCursor::End);
    area_->setFocus();
  }

 private:
  NoteArea* area_;
  IconButton* copy_ = nullptr;
};

class NotesPanel final : public TilePanel {
 public:
  explicit NotesPanel(const PanelContext& context)
      : TilePanel(context), area_(new NoteArea(context.store)), rows_(new QVBoxLayout) {
    auto* add = new IconButton(u"plus"_s, PanelWords::tr("New Note"));
    connect(add, &QPushButton::clicked, this, [this] { addNote(); });
    header().addAction(add);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    body().addWidget(area_);
    body().addSpacing(theme::kSectionBelow);
    body().addLayout(rows_);
  }

 protected:
  void refresh(const TileSources&) override {
    const QList<DockWidget> notes = QuickNotes::byAge(store().config());
    if (!DocumentEdits::find(store().config(), area_->note()))
      area_->bind(notes.isEmpty() ? QUuid() : notes.first().id);
    if (area_->note().isNull()) {
      showEmpty({definition().symbol,
                 {},
                 title(),
                 PanelWords::tr("Your quick notes appear here, newest first."),
                 PanelWords::tr("New Note"),
                 [this] { addNote(); }});
      return;
    }
    hideEmpty();
    area_->follow();
    if (notes == shown_ && area_->note() == marked_) return;
    shown_ = notes;
    marked_ = area_->note();
    fill(notes);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool writes = !event->text().isEmpty() && event->text().at(0).isPrint() &&
                        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (!area_->note().isNull() || !(writes || event->matches(QKeySequence::Paste)))
      return TilePanel::keyPressEvent(event);
    // What is typed is meant for a note, before there is one.
    addNote();
    if (!area_->note().isNull()) QCoreApplication::sendEvent(area_, event);
  }

 private:
  void addNote() {
    const QUuid added = context().commands.addWidget(kind::scratchNote, context().display);
    if (added.isNull()) return;  // The store has said why.
    area_->bind(added);
    refreshNow();
    area_->setFocus();
  }

  void fill(const QList<DockWidget>& notes) {
    while (QLayoutItem* item = rows_->takeAt(0)) {
      item->widget()->hide();
      item->widget()->deleteLater();
      delete item;
    }
    if (notes.size() < 2) return;
    for (const DockWidget& note : notes) {
      const NoteReading reading = QuickNotes::reading(note.options.value(option::text));
      auto* row = new ListRow(reading.title);
      row->setCaption(reading.text.isEmpty() ? PanelWords::tr("No more text") : reading.text);
      row->setSymbol(u"note.text"_s, note.id == marked_ ? Tone::AccentWord : Tone::Secondary);
      row->setClickable(true);
      row->setParted(rows_->count() > 0);
      connect(row, &QPushButton::clicked, this, [this, id = note.id] {
        area_->bind(id);
        refreshNow();
        area_->setFocus();
      });
      addFullWidth(*rows_, row);
    }
  }

  NoteArea* area_;
  QVBoxLayout* rows_;
  QList<DockWidget> shown_;
  QUuid marked_;
};

}  // namespace

std::unique_ptr<TilePanel> makeNotePanel(const PanelContext& context) { return std::make_unique<NotePanel>(context); }
std::unique_ptr<TilePanel> makeNotesPanel(const PanelContext& context) { return std::make_unique<NotesPanel>(context); }

}  // namespace tarnwick
