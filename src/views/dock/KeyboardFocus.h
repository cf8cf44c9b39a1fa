#pragma once

#include <QString>
#include <functional>

#include "views/dock/RowTiles.h"

class QKeyEvent;

namespace tarnwick {

/// What a key means to a dock.
enum class DockKey {
  None,  ///< Nothing: it is for somebody else.
  Undo,
  Redo,
  Back,  ///< Towards the beginning of the row.
  Onwards,
  First,
  Last,
  Activate,
  ItemMenu,
  DockMenu,
  Leave,
};
/// In a row that is mirrored the arrows go the other way.
DockKey dockKeyOf(const QKeyEvent& event, bool isMirrored);

/// The item that the keyboard is at, and whether it was the keyboard that moved last, not the pointer. The row is
/// borrowed.
class KeyboardFocus final {
 public:
  /// `changed` is called for an item that the keyboard came to or left.
  KeyboardFocus(const RowTiles& tiles, std::function<void(qsizetype item)> changed);

  /// -1 for none; kept while the dock has no keyboard.
  qsizetype item() const { return item_; }
  void moveTo(qsizetype item);

  bool leads() const { return leads_; }
  void setLeads(bool leads) { leads_ = leads; }

  /// What it is at, to be found again in another row.
  struct Place {
    QString key;
    qsizetype item = -1;
  };
  Place place() const { return {tiles_.keyOf(item_), item_}; }
  /// Stays on its tile, or on what takes the place of one that went. False where that is another item.
  bool restore(const Place& before);
  /// The row is laid out differently.
  void clamp();

 private:
  const RowTiles& tiles_;
  std::function<void(qsizetype)> changed_;
  qsizetype item_ = -1;
  bool leads_ = false;
};

}  // namespace tarnwick
