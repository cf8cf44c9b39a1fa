#include "views/dock/DockMenu.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>
#include <QHash>
#include <vector>

#include "views/dock/DockView.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The menu of a dock that this one is, or opens from; null for others.
DockMenu* dockMenuOf(QObject* object) {
  for (; object; object = object->parent())
    if (auto* menu = qobject_cast<DockMenu*>(object)) return menu;
  return nullptr;
}

/// One entry, or a line between entries.
class EntryAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  EntryAccessible(QMenu* menu, QAction* entry) : menu_(menu), entry_(entry) {}

  bool isValid() const override { return menu_ && entry_; }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return menu_ ? menu_->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(menu_.data()); }
  int childCount() const override { return inner() && inner()->isVisible() ? 1 : 0; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 && childCount() == 1 ? QAccessible::queryAccessibleInterface(inner()) : nullptr;
  }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface* wanted) const override { return wanted && child(0) == wanted ? 0 : -1; }

  QAccessible::Role role() const override {
    return isValid() && entry_->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
  }
  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    // No entry has a mnemonic: each of their signs is doubled.
    if (kind == QAccessible::Name) return entry_->text().section(u'\t', 0, 0).replace(u"&&"_s, u"&"_s);
    return kind == QAccessible::Accelerator ? entry_->shortcut().toString(QKeySequence::NativeText) : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = menu_->actionGeometry(entry_);
    return {menu_->mapToGlobal(place.topLeft()), place.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !isValid() || !menu_->isVisible() || !entry_->isVisible();
    if (!isValid()) return state;
    state.disabled = !entry_->isEnabled();
    state.focusable = entry_->isEnabled() && !entry_->isSeparator();
    state.focused = menu_->activeAction() == entry_;
    state.checkable = entry_->isCheckable();
    state.checked = entry_->isChecked();
    state.hasPopup = inner() != nullptr;
    state.expandable = inner() != nullptr;
    state.expanded = childCount() == 1;
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    if (!isValid() || !entry_->isEnabled() || entry_->isSeparator()) return {};
    return {inner() ? showMenuAction() : pressAction()};
  }
  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    // The reader waits for us, and what is done may ask a question.
    QMetaObject::invokeMethod(
        menu_.data(),
        [menu = menu_, entry = entry_] {
          if (!menu || !entry || !menu->isVisible()) return;
          if (entry->menu()) return menu->setActiveAction(entry);
          if (DockMenu* outermost = dockMenuOf(menu.data())) outermost->close();
          if (entry) entry->trigger();
        },
        Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString&) const override { return {u"Return"_s}; }

 private:
  QMenu* inner() const { return entry_ ? entry_->menu() : nullptr; }

  QPointer<QMenu> menu_;
  QPointer<QAction> entry_;
};

class MenuAccessible final : public QAccessibleWidget {
 public:
  explicit MenuAccessible(QMenu* menu) : QAccessibleWidget(menu, QAccessible::PopupMenu) {}
  ~MenuAccessible() override {
    for (const QAccessible::Id each : entries_) QAccessible::deleteAccessibleInterface(each);
  }

  QAccessibleInterface* parent() const override {
    if (const auto* outermost = qobject_cast<DockMenu*>(object()); outermost && outermost->dock())
      return QAccessible::queryAccessibleInterface(outermost->dock());
    QAccessibleInterface* outer = QAccessible::queryAccessibleInterface(object()->parent());
    const auto* outerMenu = qobject_cast<QMenu*>(object()->parent());
    if (!outerMenu) return QAccessibleWidget::parent();
    return outer->child(static_cast<int>(outerMenu->actions().indexOf(menu().menuAction())));
  }
  QString text(QAccessible::Text kind) const override {
    if (kind != QAccessible::Name || qobject_cast<DockMenu*>(object())) return QAccessibleWidget::text(kind);
    return menu().title().replace(u"&&"_s, u"&"_s);
  }

  int childCount() const override { return static_cast<int>(menu().actions().size()); }
  /// Qt tells by their place which entry has the keyboard, so that none may be left out.
  QAccessibleInterface* child(int index) const override {
    QAction* const entry = menu().actions().value(index);
    if (!entry) return nullptr;
    auto known = entries_.constFind(entry);
    QAccessibleInterface* made = known == entries_.cend() ? nullptr : QAccessible::accessibleInterface(*known);
    if (made && made->isValid()) return made;
    if (made) QAccessible::deleteAccessibleInterface(*known);  // Another entry was at that address.
    made = new EntryAccessible(&menu(), entry);
    entries_[entry] = QAccessible::registerAccessibleInterface(made);  // Qt's cache owns it.
    return made;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    QAction* const entry = menu().actionAt(menu().mapFromGlobal(QPoint(x, y)));
    return entry ? child(static_cast<int>(menu().actions().indexOf(entry))) : nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    QAction* const entry = menu().activeAction();
    return entry ? child(static_cast<int>(menu().actions().indexOf(entry))) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i) == wanted) return i;
    return -1;
  }

 private:
  QMenu& menu() const { return *static_cast<QMenu*>(widget()); }

  mutable QHash<QAction*, QAccessible::Id> entries_;
};

QAccessibleInterface* makeMenuInterface(const QString&, QObject* object) {
  auto* menu = qobject_cast<QMenu*>(object);
  return menu && dockMenuOf(menu) ? new MenuAccessible(menu) : nullptr;  // Qt's cache owns what is made.
}

void announce(QMenu& menu, QAccessible::Event what) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(&menu, what);
  QAccessible::updateAccessibility(&event);
}

}  // namespace

DockMenu::DockMenu(DockView* dock) : dock_(dock) {
  installMenuAccessibility();
  setAccessibleName(tr("Menu"));
}

void DockMenu::showEvent(QShowEvent* event) {
  QMenu::showEvent(event);
  announce(*this, QAccessible::ObjectCreated);
}

void DockMenu::hideEvent(QHideEvent* event) {
  announce(*this, QAccessible::ObjectDestroyed);
  QMenu::hideEvent(event);
}

void installMenuAccessibility() { QAccessible::installFactory(makeMenuInterface); }  // Known already, not taken twice.

}  // namespace tarnwick
