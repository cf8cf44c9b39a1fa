#pragma once

#include <QAbstractButton>
#include <QList>

namespace tarnwick {

/// Lets Tab enter a group of buttons, of which one is chosen, at that one; at the first while none is. From there the
/// arrow keys choose. To be called whenever another one was chosen by the program.
template <class Button>
void enterAtChosen(const QList<Button*>& group) {
  bool hasChosen = false;
  for (const Button* each : group) hasChosen = hasChosen || each->isChecked();
  for (Button* each : group) {
    const int others = each->focusPolicy() & ~Qt::TabFocus;
    const bool enters = each->isChecked() || !hasChosen;
    each->setFocusPolicy(static_cast<Qt::FocusPolicy>(enters ? others | Qt::TabFocus : others));
  }
}

}  // namespace tarnwick
