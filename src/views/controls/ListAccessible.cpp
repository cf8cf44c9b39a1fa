#include "views/controls/ListAccessible.h"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QListView>
#include <QPersistentModelIndex>
#include <QPointer>
#include <vector>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The box whose words the list holds; null for a list that stands for itself.
QComboBox* boxOf(const QListView& list) {
  const QWidget* frame = list.parentWidget();
  auto* box = frame ? qobject_cast<QComboBox*>(frame->parentWidget()) : nullptr;
  return box && box->model() == list.model() ? box : nullptr;
}

bool canPress(const QListView& list) { return dynamic_cast<const ItemActions*>(&list) || boxOf(list); }

void pressItem(QListView& list, const QModelIndex& index) {
  if (auto* actions = dynamic_cast<ItemActions*>(&list)) return actions->pressItem(index);
  QComboBox* box = boxOf(list);
  if (!box) return;
  box->hidePopup();
  box->setCurrentIndex(index.row());
  Q_EMIT box->activated(index.row());
}

/// One item. It keeps its place; the list's interface throws it away when there is nothing at that place.
class ItemAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  ItemAccessible(QListView* list, int row) : list_(list), row_(row) {}

  bool isValid() const override { return list_ && list_->model() && index().isValid(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return list_ ? list_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(list_.data()); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::ListItem; }

  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    if (kind == QAccessible::Description) return index().data(Qt::AccessibleDescriptionRole).toString();
    if (kind != QAccessible::Name) return {};
    const QString name = index().data(Qt::AccessibleTextRole).toString();
    return name.isEmpty() ? index().data(Qt::DisplayRole).toString() : name;
  }
  void setText(QAccessible::Text, const QString&) override {}

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = list_->visualRect(index());
    return {list_->viewport()->mapToGlobal(place.topLeft()), place.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    const bool isEnabled = list_->isEnabled() && index().flags().testFlag(Qt::ItemIsEnabled);
    state.disabled = !isEnabled;
    state.invisible = !list_->isVisible();
    state.offscreen = !list_->viewport()->rect().intersects(list_->visualRect(index()));
    state.selectable = state.focusable = isEnabled;
    const QItemSelectionModel* selection = list_->selectionModel();
    const bool isCurrent = list_->currentIndex() == index();
    state.selected = isCurrent || (selection && selection->isSelected(index()));
    state.focused = isCurrent && list_->hasFocus();
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    if (!isValid() || state().disabled) return {};
    QStringList names;
    if (canPress(*list_)) names << pressAction();
    names << setFocusAction();
    const auto* actions = dynamic_cast<const ItemActions*>(list_.data());
    return actions ? names + actions->itemActions(index()) : names;
  }
  QString localizedActionName(const QString& name) const override {
    const bool isOwn = name == pressAction() || name == setFocusAction();
    return isOwn ? QAccessibleActionInterface::localizedActionName(name) : name;
  }
  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    if (name == setFocusAction()) {
      list_->setCurrentIndex(index());
      list_->setFocus(Qt::OtherFocusReason);
      return;
    }
    // The reader waits for us, and what is done may ask a question or bring other items.
    QMetaObject::invokeMethod(
        list_.data(),
        [list = list_, at = QPersistentModelIndex(index()), name] {
          if (!list || !at.isValid()) return;
          if (name == pressAction()) return pressItem(*list, at);
          auto* actions = dynamic_cast<ItemActions*>(list.data());
          const qsizetype action = actions ? actions->itemActions(at).indexOf(name) : -1;
          if (action >= 0) actions->runItemAction(at, action);
        },
        Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString& name) const override {
    return name == pressAction() ? QStringList{u"Return"_s} : QStringList();
  }

 private:
  QModelIndex index() const { return list_->model()->index(row_, 0, list_->rootIndex()); }

  QPointer<QListView> list_;
  int row_;
};

class ListAccessible final : public QAccessibleWidget {
 public:
  explicit ListAccessible(QListView* list) : QAccessibleWidget(list, QAccessible::List), list_(list) {}
  ~ListAccessible() override {
    QObject::disconnect(reset_);
    trim(0);
  }

  int childCount() const override { return list_ && list_->model() ? list_->model()->rowCount(list_->rootIndex()) : 0; }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    follow();
    trim(static_cast<std::size_t>(childCount()));
    while (items_.size() <= static_cast<std::size_t>(index))
      items_.push_back(QAccessible::registerAccessibleInterface(
          new ItemAccessible(list_, static_cast<int>(items_.size()))));  // Qt's cache owns it.
    return QAccessible::accessibleInterface(items_[static_cast<std::size_t>(index)]);
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    if (!list_ || !list_->model()) return nullptr;
    return child(list_->indexAt(list_->viewport()->mapFromGlobal(QPoint(x, y))).row());
  }
  QAccessibleInterface* focusChild() const override {
    return list_ && list_->hasFocus() ? child(list_->currentIndex().row()) : QAccessibleWidget::focusChild();
  }
  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (std::size_t i = 0; i < items_.size(); ++i)
      if (QAccessible::accessibleInterface(items_[i]) == wanted) return static_cast<int>(i);
    return -1;
  }

 private:
  /// Other items are other objects to a reader, which asks each for its name once. A list is described before it has a
  /// model.
  void follow() const {
    if (model_ == list_->model()) return;
    QObject::disconnect(reset_);
    trim(0);
    model_ = list_->model();
    reset_ = QObject::connect(model_, &QAbstractItemModel::modelReset, list_.data(), [this] { trim(0); });
  }
  void trim(std::size_t count) const {
    while (items_.size() > count) {
      QAccessible::deleteAccessibleInterface(items_.back());
      items_.pop_back();
    }
  }

  QPointer<QListView> list_;
  mutable QPointer<QAbstractItemModel> model_;
  mutable QMetaObject::Connection reset_;
  mutable std::vector<QAccessible::Id> items_;
};

QAccessibleInterface* makeListInterface(const QString&, QObject* object) {
  auto* list = qobject_cast<QListView*>(object);
  return list && canPress(*list) ? new ListAccessible(list) : nullptr;  // Qt's cache owns what is made.
}

}  // namespace

void installListAccessibility() { QAccessible::installFactory(makeListInterface); }  // Known already, not taken twice.

}  // namespace tarnwick
