#pragma once

#include <QAccessible>

class QWidget;

namespace tarnwick {

/// Teaches Qt that what a screen reader does to a button, a switch, a tick, a card or a stepper is a click, with all
/// that follows from one. Qt's own description toggles what can be checked without one, so that it looks changed and
/// nothing was done. The actions that a button was given (QWidget::addAction) are offered beside the click, by their
/// texts. Whatever is such a control calls it; safe to call again.
void installControlAccessibility();

/// Has screen readers say what a widget is that is only painted or only holds others. Its description is made once,
/// when it is first given a name or asked for: to be called before that.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace tarnwick
