#pragma once

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QCoreApplication>
#include <QStringList>
#include <QWidget>

namespace tarnwick::test {

/// What a screen reader can do nothing with: of all that is shown and can be used below an object, what has no name, or
/// neither an action, a value nor a text of its own.
inline QStringList outOfReach(QAccessibleInterface* from) {
  if (!from || !from->isValid() || from->state().invisible) return {};
  QStringList found;
  const auto tell = [&](const QString& what) {
    const QString kind = from->object() ? QString::fromLatin1(from->object()->metaObject()->className()) : QString();
    found << kind + QStringLiteral(" “") + from->text(QAccessible::Name) + QStringLiteral("” ") + what;
  };
  QAccessibleActionInterface* actionsOf = from->actionInterface();
  const QStringList actions = actionsOf ? actionsOf->actionNames() : QStringList();
  const QString press = QAccessibleActionInterface::pressAction();
  const QString toggle = QAccessibleActionInterface::toggleAction();
  const QString menu = QAccessibleActionInterface::showMenuAction();
  bool isUsed = false;
  bool answers = false;
  switch (from->role()) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
      isUsed = true;
      answers = actions.contains(from->state().checkable ? toggle : press);
      break;
    case QAccessible::ComboBox:
      isUsed = true;
      answers = actions.contains(menu) || actions.contains(press);
      break;
    case QAccessible::ListItem:
      // A row that only tells something is a widget that nothing can be done to.
      isUsed = !from->object();
      answers = actions.contains(press);
      break;
    case QAccessible::Cell:
      isUsed = true;
      answers = actions.contains(press);
      break;
    case QAccessible::Slider:
    case QAccessible::SpinBox:
      isUsed = true;
      answers = from->valueInterface() != nullptr;
      break;
    case QAccessible::EditableText:
      isUsed = true;
      answers = from->textInterface() != nullptr;
      break;
    default:
      break;
  }
  if (isUsed && !from->state().disabled) {
    if (from->text(QAccessible::Name).isEmpty()) tell(QStringLiteral("has no name"));
    if (!answers) tell(QStringLiteral("cannot be used"));
  }
  for (int i = 0; i < from->childCount(); ++i) found << outOfReach(from->child(i));
  return found;
}

inline std::string outOfReach(QWidget& window) {
  return outOfReach(QAccessible::queryAccessibleInterface(&window)).join(QStringLiteral("; ")).toStdString();
}

/// Does what is offered under that name, with all that follows; false where nothing of that name is.
inline bool doAction(QAccessibleInterface* to, const QString& name) {
  QAccessibleActionInterface* actions = to ? to->actionInterface() : nullptr;
  if (!actions || !actions->actionNames().contains(name)) return false;
  actions->doAction(name);
  QCoreApplication::processEvents();
  return true;
}

/// Presses or toggles a control; false where neither is offered.
inline bool pressOrToggle(QWidget& control) {
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&control);
  return doAction(accessible, QAccessibleActionInterface::pressAction()) ||
         doAction(accessible, QAccessibleActionInterface::toggleAction());
}

}  // namespace tarnwick::test
