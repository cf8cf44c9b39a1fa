#pragma once

#include <QHash>
#include <QString>
#include <QUuid>
#include <functional>

class QLineEdit;

namespace tarnwick {

/// What was written into the fields of panels and has led to nothing yet. A panel may close at any moment, by Escape,
/// by a click elsewhere or because its dock goes, and its fields are full again when it opens the next time. It lasts
/// as long as the program runs.
class PanelDrafts {
 public:
  /// Gives a field of a widget's panel back what was left in it, and notes from then on what is written there, for as
  /// long as the field lives. A widget's fields are distinguished by their accessible names. `isUnfinished` says
  /// whether the field holds something that the settings do not; without it, whatever is not blank counts.
  void keep(const QUuid& widget, QLineEdit& field, std::function<bool()> isUnfinished = {});
  /// The widget's panel has done what its fields asked for.
  void forget(const QUuid& widget) { texts_.remove(widget); }

 private:
  QHash<QUuid, QHash<QString, QString>> texts_;
};

}  // namespace tarnwick
