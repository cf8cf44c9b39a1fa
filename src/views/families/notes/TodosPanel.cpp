#include "views/families/notes/NotesRoom.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>
#include <functional>
#include <utility>

#include "base/LocalFigures.h"
#include "base/PutBack.h"
#include "views/controls/Buttons.h"
#include "views/controls/Fields.h"
#include "views/controls/FullWidth.h"
#include "views/controls/PlainTip.h"
#include "views/controls/Rows.h"
#include "views/panels/PanelWords.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What can be done to one to-do.
struct TodoActions {
  std::function<void()> toggle;
  std::function<void(const QString& text)> rename;
  std::function<void()> remove;
  // Among those that are ticked like it; empty at their ends.
  std::function<void()> moveUp;
  std::function<void()> moveDown;
};

/// One thing to do. Its buttons to edit and to delete it show under the pointer and the keyboard; F2 and the
/// Delete key do the same, and Alt with an arrow moves it. Screen readers find all of that at the tick.
class TodoRow final : public QWidget {
 public:
  TodoRow(const TodoItem& item, bool parted, TodoActions actions)
      : parted_(parted),
        text_(item.text),
        check_(new CheckRow(item.text.simplified())),
        field_(new TextField(PanelWords::tr("To-do"))),
        edit_(button(u"square.and.pencil"_s, PanelWords::tr("Edit %1"))),
        remove_(button(u"trash"_s, PanelWords::tr("Delete %1"))),
        actions_(std::move(actions)) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(check_, 1);
    line->addWidget(field_, 1);
    line->addWidget(edit_);
    line->addWidget(remove_);
    check_->setChecked(item.completed);
    setPlainTip(*check_, item.text);
    for (QWidget* part : std::initializer_list<QWidget*>{check_, field_, edit_, remove_})
      part->installEventFilter(this);
    field_->hide();
    offer(PanelWords::tr("Edit"), [this] { beginEditing(); });
    if (actions_.moveUp) offer(PanelWords::tr("Move Up"), [this] { actions_.moveUp(); });
    if (actions_.moveDown) offer(PanelWords::tr("Move Down"), [this] { actions_.moveDown(); });
    offer(PanelWords::tr("Delete"), [this] { actions_.remove(); });
    setAttribute(Qt::WA_Hover);
    connect(check_, &QAbstractButton::clicked, this, [this] { actions_.toggle(); });
    connect(edit_, &QPushButton::clicked, this, [this] { beginEditing(); });
    connect(remove_, &QPushButton::clicked, this, [this] { actions_.remove(); });
    connect(field_, &QLineEdit::editingFinished, this, [this] { endEditing(true); });
  }

  CheckRow* check() { return check_; }

  /// Takes what is entered in the field, if it is open; a text of blanks changes nothing.
  void finish() { endEditing(true); }

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave) reveal();
    return QWidget::event(event);
  }
  void paintEvent(QPaintEvent*) override {
    if (!parted_) return;
    QPainter painter(this);
    painter.fillRect(QRectF(0, 0, width(), hairline(painter)), lookOf(*this).palette.hairline);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && keyPressed(watched, *static_cast<QKeyEvent*>(event))) return true;
    // Where the focus goes is known only after it left.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
      QMetaObject::invokeMethod(
          this, [this] { reveal(); }, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
  }

 private:
  IconButton* button(const QString& symbol, const QString& label) {
    auto* made = new IconButton(symbol, label.arg(text_.simplified().left(80)));
    made->setGround(false);
    made->setTone(Tone::Secondary);
    QSizePolicy policy = made->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    made->setSizePolicy(policy);
    made->hide();
    return made;
  }

  void offer(const QString& name, std::function<void()> run) {
    auto* action = new QAction(name, check_);
    connect(action, &QAction::triggered, this, std::move(run));
    check_->addAction(action);
  }

  bool keyPressed(const QObject* watched, const QKeyEvent& event) {
    const int key = event.key();
    if (watched == field_) {
      if (key != Qt::Key_Escape) return false;
      endEditing(false);
      return true;
    }
    if (event.modifiers().testFlag(Qt::AltModifier) && (key == Qt::Key_Up || key == Qt::Key_Down)) {
      if (const auto& move = key == Qt::Key_Up ? actions_.moveUp : actions_.moveDown) move();
      return true;
    }
    if (key == Qt::Key_Delete) actions_.remove();
    if (key == Qt::Key_F2) beginEditing();
    return key == Qt::Key_Delete || key == Qt::Key_F2;
  }

  void beginEditing() {
    field_->setText(text_);
    check_->hide();
    field_->show();
    field_->setFocus();
    field_->selectAll();
    reveal();
  }

  void endEditing(bool keep) {
    if (field_->isHidden()) return;
    const bool hadFocus = field_->hasFocus();
    const QString text = field_->text().trimmed();
    field_->hide();
    check_->show();
    if (hadFocus) check_->setFocus();
    if (keep && !text.isEmpty() && text != text_) actions_.rename(text);
  }

  void reveal() {
    const bool reached = underMouse() || check_->hasFocus() || edit_->hasFocus() || remove_->hasFocus();
    edit_->setVisible(reached && field_->isHidden());
    remove_->setVisible(reached && field_->isHidden());
  }

  bool parted_;
  QString text_;
  CheckRow* check_;
  TextField* field_;
  IconButton* edit_;
  IconButton* remove_;
  TodoActions actions_;
};

class TodosPanel final : public TilePanel {
 public:
  explicit TodosPanel(const PanelContext& context)
      : TilePanel(context),
        field_(new TextField(PanelWords::tr("Add a to-do"))),
        nothing_(new TextLabel(PanelWords::tr("Nothing to do"), TextStyle::Body, Tone::Secondary)),
        rows_(new QVBoxLayout),
        clear_(new Button(PanelWords::tr("Clear completed"), Button::Role::Quiet)) {
    field_->setPlaceholderText(PanelWords::tr("Add a to-do"));
    field_->setSymbol(u"plus"_s);
    nothing_->setAlignment(Qt::AlignCenter);
    nothing_->setFixedHeight(theme::kTallRowHeight);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(0);
    body().addWidget(field_);
    beginWith(*field_);
    body().addSpacing(theme::kSectionBelow);
    body().addLayout(rows_);
    body().addWidget(nothing_);
    // The word, not the button around it, begins where the rows do.
    auto* footer = new QWidget;
    footer->setFixedHeight(theme::kRowHeight);
    auto* line = new QHBoxLayout(footer);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(clear_, 0, Qt::AlignLeft | Qt::AlignBottom);
    addFullWidth(body(), footer);
    keepDraft(*field_);
    connect(field_, &QLineEdit::returnPressed, this, [this] {
      store().addTodo(field_->text());
      field_->clear();
    });
    connect(clear_, &QPushButton::clicked, this, [this] {
      remove(std::mem_fn(&TodoItem::completed));
      field_->setFocus();
    });
  }

 protected:
  void refresh(const TileSources&) override {
    // The document itself: what tiles show may be cut or late.
    const QList<TodoItem>& todos = store().config().todos;
    const auto done = std::ranges::count(todos, true, &TodoItem::completed);
    header().setNote(
        todos.isEmpty()
            ? QString()
            : PanelWords::tr("%1 of %2 done").arg(LocalFigures::number(done), LocalFigures::number(todos.size())));
    if (isFilled_ && todos == shown_) return;
    isFilled_ = true;
    fill(todos);
    nothing_->setVisible(todos.isEmpty());
    clear_->parentWidget()->setVisible(done > 0);
  }

  void hideEvent(QHideEvent* event) override {
    for (int i = 0; i < rows_->count(); ++i) static_cast<TodoRow*>(rows_->itemAt(i)->widget())->finish();
    TilePanel::hideEvent(event);
  }

 private:
  void fill(const QList<TodoItem>& todos) {
    shown_ = todos;
    const auto* focused = QApplication::focusWidget();
    int focusedRow = -1;
    for (int i = 0; i < rows_->count(); ++i)
      if (focused && rows_->itemAt(i)->widget()->isAncestorOf(focused)) focusedRow = i;
    while (QLayoutItem* item = rows_->takeAt(0)) {
      item->widget()->hide();
      item->widget()->deleteLater();
      delete item;
    }
    QList<TodoItem> ordered = todos;
    std::ranges::stable_sort(ordered, {}, &TodoItem::completed);
    for (qsizetype i = 0; i < ordered.size(); ++i) addRow(ordered, i);
    // A user of the keyboard stays in the list, and with what moves.
    const auto moved = std::ranges::find(ordered, std::exchange(moved_, {}), &TodoItem::id) - ordered.begin();
    if (focusedRow < 0) return;
    if (moved < ordered.size()) focusedRow = static_cast<int>(moved);
    const int next = std::min(focusedRow, rows_->count() - 1);
    if (next < 0)
      field_->setFocus();
    else
      static_cast<TodoRow*>(rows_->itemAt(next)->widget())->check()->setFocus();
  }

  void addRow(const QList<TodoItem>& ordered, qsizetype index) {
    const TodoItem& item = ordered[index];
    const auto isAlike = [&](qsizetype other) {
      return other >= 0 && other < ordered.size() && ordered[other].completed == item.completed;
    };
    TodoActions actions;
    if (isAlike(index - 1)) actions.moveUp = [this, id = item.id, over = ordered[index - 1].id] { move(id, over); };
    if (isAlike(index + 1)) actions.moveDown = [this, id = item.id, over = ordered[index + 1].id] { move(id, over); };
    actions.toggle = [this, id = item.id] { store().toggleTodo(id); };
    actions.rename = [this, id = item.id](const QString& text) {
      store().edit([&](DockConfiguration& config) {
        for (TodoItem& each : config.todos)
          if (each.id == id) each.text = text;
      });
    };
    actions.remove = [this, id = item.id] { remove([&id](const TodoItem& each) { return each.id == id; }); };
    rows_->addWidget(new TodoRow(item, rows_->count() > 0, std::move(actions)));
  }

  /// To the place of another one.
  void move(const QUuid& id, const QUuid& over) {
    moved_ = id;
    store().edit([&](DockConfiguration& config) {
      const auto placeOf = [&](const QUuid& of) {
        return std::ranges::find(config.todos, of, &TodoItem::id) - config.todos.begin();
      };
      const auto from = placeOf(id), to = placeOf(over);
      if (std::max(from, to) < config.todos.size()) config.todos.move(from, to);
    });
  }

  template <class Test>
  void remove(Test test) {
    const QList<TodoItem> before = store().config().todos;
    store().edit([&](DockConfiguration& config) { config.todos.removeIf(test); });
    const QList<TodoItem> left = store().config().todos;
    const auto removed = before.size() - left.size();
    if (removed == 0) return;
    const auto back = [store = &store(), before] {
      store->edit([&before](DockConfiguration& config) { putBack(config.todos, before, &TodoItem::id); });
    };
    const auto again = [store = &store(), before, left] {
      store->edit([&](DockConfiguration& config) { takeOut(config.todos, before, left, &TodoItem::id); });
    };
    offerUndo(removed == 1 ? PanelWords::tr("The to-do was deleted.")
                           : PanelWords::tr("%1 to-dos were deleted.").arg(LocalFigures::number(removed)),
              back, again);
  }

  TextField* field_;
  TextLabel* nothing_;
  QVBoxLayout* rows_;
  Button* clear_;
  QList<TodoItem> shown_;
  QUuid moved_;  ///< Has the keyboard once the rows are there anew.
  bool isFilled_ = false;
};

}  // namespace

std::unique_ptr<TilePanel> makeTodosPanel(const PanelContext& context) { return std::make_unique<TodosPanel>(context); }

}  // namespace tarnwick
