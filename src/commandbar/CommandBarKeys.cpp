#include "commandbar/CommandBarKeys.h"

namespace tarnwick {

CommandBarKeys::Action CommandBarKeys::action(int key, Qt::KeyboardModifiers modifiers) {
  // Arrows of the number pad are arrows.
  const Qt::KeyboardModifiers held = modifiers & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
  const auto with = [&](Qt::KeyboardModifiers wanted, Action action) { return held == wanted ? action : Action::None; };
  switch (key) {
    case Qt::Key_C:
      return with(Qt::ControlModifier, Action::CopyPath);
    case Qt::Key_R:
      return with(Qt::ControlModifier, Action::Reveal);
    case Qt::Key_Tab:
      return held == Qt::ShiftModifier ? Action::Previous : with(Qt::NoModifier, Action::Next);
    case Qt::Key_Backtab:  // Tab with Shift, which some systems still report beside it.
      return with(held & Qt::ShiftModifier, Action::Previous);
    case Qt::Key_Down:
      return with(Qt::NoModifier, Action::Next);
    case Qt::Key_Up:
      return with(Qt::NoModifier, Action::Previous);
    case Qt::Key_Escape:
      return Action::Hide;
    default:
      return Action::None;
  }
}

}  // namespace tarnwick
