#pragma once

#include <QStringList>

class QModelIndex;

namespace tarnwick {

/// What can be done to an item of a list without a pointer. Lists derive from it, and `installListAccessibility` has
/// screen readers do it.
class ItemActions {
 public:
  virtual ~ItemActions() = default;

  /// Does what a click does that means the item, or Return.
  virtual void pressItem(const QModelIndex& index) = 0;
  /// What else can be done to it, in the user's words.
  virtual QStringList itemActions(const QModelIndex&) const { return {}; }
  /// Does the one of `itemActions` at that index.
  virtual void runItemAction(const QModelIndex&, qsizetype) {}
};

/// Teaches Qt to describe a list of one column as its items, each with the actions of ItemActions. Of the words in the
/// list of a QComboBox a press chooses one. Qt's own description can only select, which does nothing. Safe to call
/// again.
void installListAccessibility();

}  // namespace tarnwick
