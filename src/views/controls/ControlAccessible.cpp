#include "views/controls/ControlAccessible.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QPushButton>
#include <QToolButton>

#include "base/LocalFigures.h"
#include "views/controls/Charts.h"
#include "views/controls/Rows.h"
#include "views/controls/Stepper.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kRole = "accessibleRole";

bool isRow(const QAbstractButton& button) { return qobject_cast<const ListRow*>(&button) != nullptr; }

/// Rows and fields of colour that only tell something are buttons that cannot be pressed.
bool isPressable(const QAbstractButton& button) {
  if (button.testAttribute(Qt::WA_TransparentForMouseEvents)) return false;
  return !isRow(button) || button.focusPolicy() != Qt::NoFocus;
}

QAccessible::Role roleOf(const QAbstractButton& button) {
  if (!isPressable(button)) return isRow(button) ? QAccessible::ListItem : QAccessible::StaticText;
  if (!button.isCheckable()) return QAccessible::Button;
  return button.autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
}

class ButtonAccessible final : public QAccessibleWidget {
 public:
  explicit ButtonAccessible(QAbstractButton* button) : QAccessibleWidget(button) {}

  QAccessible::Role role() const override { return roleOf(button()); }

  QString text(QAccessible::Text kind) const override {
    // The button's own words, before those of a label beside it. They have no mnemonics: each of their signs is
    // doubled.
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
    names += QAccessibleWidget::actionNames();
    for (const QAction* action : widget()->actions())
      if (action->isEnabled()) names << action->text();
    return names;
  }
  QString localizedActionName(const QString& name) const override {
    return actionOf(name) ? name : QAccessibleWidget::localizedActionName(name);
  }
  void doAction(const QString& name) override {
    if (QAction* action = actionOf(name)) {
      QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
      return;
    }
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
  /// What else can be done to what the button stands for; null where it is called otherwise.
  QAction* actionOf(const QString& name) const {
    for (QAction* action : widget()->actions())
      if (action->isEnabled() && action->text() == name) return action;
    return nullptr;
  }
  QAbstractButton& button() const { return *static_cast<QAbstractButton*>(widget()); }
};

/// A number between its two buttons, which are its children.
class StepperAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit StepperAccessible(Stepper* stepper) : QAccessibleWidget(stepper, QAccessible::SpinBox) {}

  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    if (kind == QAccessible::Value) return stepper().text();
    // Readers ask for the number alone, which does not say that it means "Off" or minutes.
    if (kind != QAccessible::Description || stepper().text() == LocalFigures::number(stepper().value())) return own;
    return own.isEmpty() ? stepper().text() : stepper().text() + u", "_s + own;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return stepper().value(); }
  void setCurrentValue(const QVariant& value) override {
    if (stepper().isEnabled()) stepper().stepTo(value.toInt());
  }
  QVariant minimumValue() const override { return stepper().least(); }
  QVariant maximumValue() const override { return stepper().most(); }
  QVariant minimumStepSize() const override { return stepper().step(); }

  QStringList actionNames() const override {
    const QStringList others = QAccessibleWidget::actionNames();
    return stepper().isEnabled() ? QStringList{increaseAction(), decreaseAction()} + others : others;
  }
  void doAction(const QString& name) override {
    if (name != increaseAction() && name != decreaseAction()) return QAccessibleWidget::doAction(name);
    if (!stepper().isEnabled()) return;
    const int way = name == increaseAction() ? 1 : -1;
    // The reader waits for us.
    QMetaObject::invokeMethod(
        &stepper(), [&at = stepper(), way] { at.stepTo(at.value() + way * at.step()); }, Qt::QueuedConnection);
  }
  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == increaseAction()) return {u"Up"_s};
    if (name == decreaseAction()) return {u"Down"_s};
    return QAccessibleWidget::keyBindingsForAction(name);
  }

 private:
  Stepper& stepper() const { return *static_cast<Stepper*>(widget()); }
};

/// A chart, of which a reader says first what is pointed at.
class ChartAccessible final : public QAccessibleWidget {
 public:
  explicit ChartAccessible(ChartView* chart) : QAccessibleWidget(chart, QAccessible::Chart) {}

  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    const QString pointed = static_cast<ChartView*>(widget())->pointedWords();
    if (kind == QAccessible::Value) return pointed;
    if (kind != QAccessible::Description || pointed.isEmpty()) return own;
    return own.isEmpty() ? pointed : pointed + u". "_s + own;
  }
};

/// The description of what setAccessibleRole() was called for; null for others.
QAccessibleInterface* makeForRole(QObject* object) {
  const QVariant role = object->isWidgetType() ? object->property(kRole) : QVariant();
  if (!role.isValid()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  if (auto* stepper = qobject_cast<Stepper*>(object)) return new StepperAccessible(stepper);
  if (auto* chart = qobject_cast<ChartView*>(object)) return new ChartAccessible(chart);
  if (QAccessibleInterface* made = makeForRole(object)) return made;
  auto* button = qobject_cast<QAbstractButton*>(object);
  if (!button || qobject_cast<QToolButton*>(button)) return nullptr;
  // What opens a menu is Qt's to describe.
  const auto* push = qobject_cast<QPushButton*>(button);
  return push && push->menu() ? nullptr : new ButtonAccessible(button);
}

}  // namespace

void installControlAccessibility() { QAccessible::installFactory(makeInterface); }  // Known already, not taken twice.

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  installControlAccessibility();
  widget.setProperty(kRole, static_cast<int>(role));
}

}  // namespace tarnwick
