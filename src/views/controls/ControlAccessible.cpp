#include "views/controls/ControlAccessible.h"

#include <QAccessibleWidget>
#include <QPushButton>
#include <QToolButton>

#include "views/controls/Rows.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Rows that only tell something are buttons that cannot be pressed.
bool isPressable(const QAbstractButton& button) {
  return !qobject_cast<const ListRow*>(&button) || button.focusPolicy() != Qt::NoFocus;
}

QAccessible::Role roleOf(const QAbstractButton& button) {
  if (!isPressable(button)) return QAccessible::ListItem;
  if (!button.isCheckable()) return QAccessible::Button;
  return button.autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
}

class ButtonAccessible final : public QAccessibleWidget {
 public:
  explicit ButtonAccessible(QAbstractButton* button) : QAccessibleWidget(button) {}

  QAccessible::Role role() const override { return roleOf(button()); }

  QString text(QAccessible::Text kind) const override {
    // The button's own words, before those of a label beside it. They have no mnemonics: each of their signs is doubled.
    if (kind == QAccessible::Name && button().accessibleName().isEmpty() && !button().text().isEmpty())
      return button().text().replace("&&"_L1, "&"_L1);
    return QAccessibleWidget::text(kind);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = button().isCheckable();
    state.checked = button().isChecked();
    state.pressed = button().isDown();
    const auto* push = qobject_cast<const QPushButton*>(&button());
    state.defaultButton = push && push->isDefault();
    return state;
  }

  QStringList actionNames() const override {
    QStringList names;
    if (button().isEnabled() && isPressable(button()))
      names << (button().isCheckable() ? toggleAction() : pressAction());
    return names + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != toggleAction() && name != pressAction()) return QAccessibleWidget::doAction(name);
    if (!isPressable(button())) return;
    // The reader waits for us, and what is done may ask a question or take the button away.
    QMetaObject::invokeMethod(widget(), "click", Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == toggleAction() || name == pressAction()) return {u"Space"_s};
    return QAccessibleWidget::keyBindingsForAction(name);
  }

 private:
  QAbstractButton& button() const { return *static_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* button = qobject_cast<QAbstractButton*>(object);
  if (!button || qobject_cast<QToolButton*>(button)) return nullptr;
  // What opens a menu is Qt's to describe.
  const auto* push = qobject_cast<QPushButton*>(button);
  return push && push->menu() ? nullptr : new ButtonAccessible(button);
}

}  // namespace

void installControlAccessibility() { QAccessible::installFactory(makeInterface); }  // Known already, not taken twice.

}  // namespace tarnwick
