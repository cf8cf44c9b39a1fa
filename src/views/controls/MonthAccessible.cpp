#include "views/controls/MonthAccessible.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <vector>

#include "views/controls/MonthGrid.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCells = MonthGrid::kDays * MonthGrid::kWeeks;

/// One day. It is there while it is shown.
class DayAccessible final : public QAccessibleInterface,
                            public QAccessibleActionInterface,
                            public QAccessibleTableCellInterface {
 public:
  DayAccessible(MonthGrid* grid, const QDate& day) : grid_(grid), day_(day) {}

  bool isValid() const override { return grid_ && place() >= 0 && place() < kCells; }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return grid_ ? grid_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(grid_.data()); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::Cell; }
  QString text(QAccessible::Text kind) const override {
    return isValid() && kind == QAccessible::Name ? grid_->words(day_) : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect cell = grid_->cellOf(place()).toAlignedRect();
    return {grid_->mapToGlobal(cell.topLeft()), cell.size()};
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    state.disabled = !grid_->isEnabled();
    state.invisible = !grid_->isVisible();
    state.selectable = state.focusable = grid_->isEnabled();
    state.selected = isSelected();
    state.focused = state.selected && grid_->hasFocus();
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    return isValid() && grid_->isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList();
  }
  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    if (name == setFocusAction()) grid_->setFocus(Qt::OtherFocusReason);
    // The reader waits for us, and another month may come, which takes this away.
    QMetaObject::invokeMethod(
        grid_.data(), [grid = grid_, day = day_] { grid->setChosen(day); }, Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

  bool isSelected() const override { return isValid() && grid_->chosen() == day_; }
  QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
  QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  int columnIndex() const override { return isValid() ? place() % MonthGrid::kDays : -1; }
  int rowIndex() const override { return isValid() ? place() / MonthGrid::kDays : -1; }
  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  QAccessibleInterface* table() const override { return parent(); }

 private:
  int place() const { return static_cast<int>(grid_->firstCell().daysTo(day_)); }

  QPointer<MonthGrid> grid_;
  QDate day_;
};

/// The days in their rows. Turning to another month brings other days, which are other objects to a reader.
class MonthAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit MonthAccessible(MonthGrid* grid) : QAccessibleWidget(grid, QAccessible::Table), grid_(grid) {}
  ~MonthAccessible() override { drop(); }

  int childCount() const override { return grid_ && grid_->month().isValid() ? kCells : 0; }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    follow();
    return QAccessible::accessibleInterface(days_[static_cast<std::size_t>(index)]);
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    if (!grid_) return nullptr;
    const QDate day = grid_->dayAt(grid_->mapFromGlobal(QPoint(x, y)));
    return day.isValid() ? child(placeOf(day)) : nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    return grid_ && grid_->hasFocus() ? child(placeOf(grid_->chosen())) : QAccessibleWidget::focusChild();
  }
  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (std::size_t i = 0; i < days_.size(); ++i)
      if (QAccessible::accessibleInterface(days_[i]) == wanted) return static_cast<int>(i);
    return -1;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
  }
  /// What the wheel and the Page keys do.
  QStringList actionNames() const override {
    const QStringList others = QAccessibleWidget::actionNames();
    return grid_ && grid_->isEnabled() ? QStringList{nextPageAction(), previousPageAction()} + others : others;
  }
  void doAction(const QString& name) override {
    if (name != nextPageAction() && name != previousPageAction()) return QAccessibleWidget::doAction(name);
    if (!grid_ || !grid_->isEnabled()) return;
    const int months = name == nextPageAction() ? 1 : -1;
    QMetaObject::invokeMethod(
        grid_.data(), [grid = grid_, months] { grid->turn(months); }, Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == nextPageAction()) return {u"PgDown"_s};
    if (name == previousPageAction()) return {u"PgUp"_s};
    return QAccessibleWidget::keyBindingsForAction(name);
  }

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override {
    const bool isCell = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return isCell ? child(row * MonthGrid::kDays + column) : nullptr;
  }
  int rowCount() const override { return MonthGrid::kWeeks; }
  int columnCount() const override { return MonthGrid::kDays; }
  QString columnDescription(int column) const override { return grid_ ? grid_->columnWords(column) : QString(); }
  QString rowDescription(int) const override { return {}; }
  int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
  QList<QAccessibleInterface*> selectedCells() const override {
    QAccessibleInterface* chosen = grid_ ? child(placeOf(grid_->chosen())) : nullptr;
    return chosen ? QList{chosen} : QList<QAccessibleInterface*>();
  }
  // Whole weeks and weekdays are not chosen.
  int selectedColumnCount() const override { return 0; }
  int selectedRowCount() const override { return 0; }
  QList<int> selectedColumns() const override { return {}; }
  QList<int> selectedRows() const override { return {}; }
  bool isColumnSelected(int) const override { return false; }
  bool isRowSelected(int) const override { return false; }
  bool selectRow(int) override { return false; }
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  int placeOf(const QDate& day) const { return static_cast<int>(grid_->firstCell().daysTo(day)); }
  void follow() const {
    if (!days_.empty() && first_ == grid_->firstCell()) return;
    drop();
    first_ = grid_->firstCell();
    for (int i = 0; i < kCells; ++i)  // Qt's cache owns them.
      days_.push_back(QAccessible::registerAccessibleInterface(new DayAccessible(grid_, first_.addDays(i))));
  }
  void drop() const {
    for (const QAccessible::Id day : days_) QAccessible::deleteAccessibleInterface(day);
    days_.clear();
  }

  QPointer<MonthGrid> grid_;
  mutable QDate first_;
  mutable std::vector<QAccessible::Id> days_;
};

QAccessibleInterface* makeMonthInterface(const QString&, QObject* object) {
  auto* grid = qobject_cast<MonthGrid*>(object);
  return grid ? new MonthAccessible(grid) : nullptr;  // Qt's cache owns what is made.
}

}  // namespace

void installMonthAccessibility() {
  QAccessible::installFactory(makeMonthInterface);
}  // Known already, not taken twice.

}  // namespace tarnwick
