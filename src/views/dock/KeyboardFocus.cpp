#include "views/dock/KeyboardFocus.h"

#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace tarnwick {

DockKey dockKeyOf(const QKeyEvent& event, bool isMirrored) {
  if (event.matches(QKeySequence::Undo)) return DockKey::Undo;
  if (event.matches(QKeySequence::Redo)) return DockKey::Redo;
  switch (event.key()) {
    case Qt::Key_Left:
      return isMirrored ? DockKey::Onwards : DockKey::Back;
    case Qt::Key_Right:
      return isMirrored ? DockKey::Back : DockKey::Onwards;
    case Qt::Key_Home:
      return DockKey::First;
    case Qt::Key_End:
      return DockKey::Last;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      return DockKey::Activate;
    case Qt::Key_F10:
    case Qt::Key_Menu:
      if (event.modifiers().testFlag(Qt::ControlModifier)) return DockKey::DockMenu;
      // F10 alone is for the menu bar of a window.
      if (event.key() == Qt::Key_F10 && !event.modifiers().testFlag(Qt::ShiftModifier)) return DockKey::None;
      return DockKey::ItemMenu;
    case Qt::Key_Escape:
      return DockKey::Leave;
    default:
      return DockKey::None;
  }
}

KeyboardFocus::KeyboardFocus(const RowTiles& tiles, std::function<void(qsizetype item)> changed)
    : tiles_(tiles), changed_(std::move(changed)) {}

void KeyboardFocus::moveTo(qsizetype item) {
  changed_(item_);
  item_ = item;
  changed_(item_);
}

bool KeyboardFocus::restore(const Place& before) {
  const qsizetype kept = before.key.isEmpty() ? -1 : tiles_.itemWithKey(before.key);
  item_ = kept >= 0 ? kept : std::min(before.item, tiles_.count() - 1);
  return kept >= 0 && kept == before.item;
}

void KeyboardFocus::clamp() {
  if (item_ >= tiles_.count()) item_ = -1;
}

}  // namespace tarnwick
