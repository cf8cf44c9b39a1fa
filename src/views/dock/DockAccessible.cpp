#include "views/dock/DockAccessible.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>
#include <QMenu>
#include <QPointer>
#include <algorithm>
#include <vector>

#include "views/dock/DockView.h"
#include "views/dock/DockWords.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {

namespace {

/// Runs the command of that name. The item may go with what is done, and a question that is asked may wait for its
/// answer.
void runCommand(DockView* view, qsizetype item, const QString& name) {
  const QList<ItemCommand> commands = view->itemCommands(item);
  const auto command = std::ranges::find(commands, name, &ItemCommand::text);
  if (command != commands.end()) QMetaObject::invokeMethod(view, command->run, Qt::QueuedConnection);
}

/// One tile. It keeps its place in the row; the interface of the view throws it away when the row has fewer places.
class TileAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  TileAccessible(DockView* view, int item) : view_(view), item_(item) {}

  bool isValid() const override { return view_ && item_ < view_->itemCount(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return view_ ? view_->window()->windowHandle() : nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_.data()); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QAccessible::Role role() const override { return QAccessible::Button; }

  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    const TileText text = view_->itemText(item_);
    if (kind == QAccessible::Name) return text.name;
    return kind == QAccessible::Value || kind == QAccessible::Description ? text.spoken() : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = view_->itemRect(item_).toAlignedRect();
    return {view_->mapToGlobal(place.topLeft()), place.size()};
  }

  QAccessible::State state() const override {
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !isValid() || !view_->isVisible();
    state.offscreen = isValid() && !view_->isItemSeen(item_);
    state.focusable = true;
    state.focused = isValid() && view_->focusedItem() == item_;
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  /// The entries of a tile's menu follow under their own words, so that nobody needs to open it.
  QStringList actionNames() const override {
    QStringList names{pressAction(), showMenuAction(), setFocusAction()};
    if (!isValid()) return names;
    for (const ItemCommand& command : view_->itemCommands(item_)) names << command.text;
    return names;
  }
  QString localizedActionName(const QString& name) const override {
    const bool isOwn = name == pressAction() || name == showMenuAction() || name == setFocusAction();
    return isOwn ? QAccessibleActionInterface::localizedActionName(name) : name;
  }
  void doAction(const QString& name) override {
    if (!isValid()) return;
    if (name == pressAction()) return view_->activateItem(item_);
    if (name == showMenuAction()) return view_->openItemMenu(item_);
    if (name == setFocusAction()) return view_->focusItem(item_);
    runCommand(view_.data(), item_, name);
  }
  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == pressAction()) return {QStringLiteral("Return")};
    return name == showMenuAction() ? QStringList{QStringLiteral("Shift+F10")} : QStringList();
  }

 private:
  QPointer<DockView> view_;
  int item_;
};

/// The dock: its tiles, and what its own menu offers, Quit among it.
class DockAccessible final : public QAccessibleWidget {
 public:
  explicit DockAccessible(DockView* view) : QAccessibleWidget(view, QAccessible::ToolBar), view_(view) {}
  ~DockAccessible() override { trim(0); }

  /// An open menu stands behind the tiles.
  int childCount() const override { return tileCount() + (openMenu() ? 1 : 0); }

  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    if (index == tileCount()) return QAccessible::queryAccessibleInterface(openMenu());
    trim(static_cast<std::size_t>(tileCount()));
    while (tiles_.size() <= static_cast<std::size_t>(index))
      tiles_.push_back(QAccessible::registerAccessibleInterface(
          new TileAccessible(view_, static_cast<int>(tiles_.size()))));  // Qt's cache owns it.
    return QAccessible::accessibleInterface(tiles_[static_cast<std::size_t>(index)]);
  }

  QAccessibleInterface* childAt(int x, int y) const override {
    // Tiles that are scrolled out of sight lie under others.
    return view_ ? child(static_cast<int>(view_->itemAt(view_->mapFromGlobal(QPointF(x, y))))) : nullptr;
  }

  QAccessibleInterface* focusChild() const override {
    return view_ && view_->focusedItem() >= 0 ? child(static_cast<int>(view_->focusedItem())) : nullptr;
  }

  int indexOfChild(const QAccessibleInterface* wanted) const override {
    for (int i = 0; i < childCount(); ++i)
      if (child(i) == wanted) return i;
    return -1;
  }

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (!view_) return names;
    names << showMenuAction();
    for (const ItemCommand& command : view_->itemCommands(-1)) names << command.text;
    return names;
  }
  QString localizedActionName(const QString& name) const override {
    const bool isOwn = name == showMenuAction() || QAccessibleWidget::actionNames().contains(name);
    return isOwn ? QAccessibleWidget::localizedActionName(name) : name;
  }
  void doAction(const QString& name) override {
    if (!view_) return;
    if (name == showMenuAction()) return view_->openDockMenu();
    if (QAccessibleWidget::actionNames().contains(name)) return QAccessibleWidget::doAction(name);
    runCommand(view_.data(), -1, name);
  }

 private:
  int tileCount() const { return view_ ? static_cast<int>(view_->itemCount()) : 0; }
  QMenu* openMenu() const {
    QMenu* const menu = view_ ? view_->openMenu() : nullptr;
    return menu && menu->isVisible() ? menu : nullptr;
  }
  void trim(std::size_t count) const {
    while (tiles_.size() > count) {
      QAccessible::deleteAccessibleInterface(tiles_.back());
      tiles_.pop_back();
    }
  }

  QPointer<DockView> view_;
  mutable std::vector<QAccessible::Id> tiles_;
};

/// A bubble: its message, and what its buttons do.
class BubbleAccessible final : public QAccessibleWidget {
 public:
  explicit BubbleAccessible(MessageBubble* bubble)
      : QAccessibleWidget(bubble, QAccessible::AlertMessage), bubble_(bubble) {}

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (!bubble_) return names;
    if (!bubble_->action().isEmpty()) names.prepend(pressAction());
    return names << dismissAction();
  }
  QString localizedActionName(const QString& name) const override {
    if (bubble_ && name == pressAction()) return bubble_->action();
    if (name == dismissAction()) return DockWords::tr("Dismiss");
    return QAccessibleWidget::localizedActionName(name);
  }
  void doAction(const QString& name) override {
    if (!bubble_) return;
    if (name == pressAction() && !bubble_->action().isEmpty())
      Q_EMIT bubble_->actionRequested();
    else if (name == dismissAction())
      Q_EMIT bubble_->dismissed();
    else
      QAccessibleWidget::doAction(name);
  }

 private:
  static QString dismissAction() { return QStringLiteral("Dismiss"); }

  QPointer<MessageBubble> bubble_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  // Qt's cache owns what is made.
  if (auto* view = qobject_cast<DockView*>(object)) return new DockAccessible(view);
  if (auto* bubble = qobject_cast<MessageBubble*>(object)) return new BubbleAccessible(bubble);
  return nullptr;
}

}  // namespace

void installDockAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(makeInterface);
    return true;
  }();
  Q_UNUSED(installed)
}

}  // namespace tarnwick
