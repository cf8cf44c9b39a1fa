#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace tarnwick {

/// Ticks a reminder off in the text of its file, or takes the tick away: the lines that say so change, no other byte.
struct TodoEdit {
  QString uid;       ///< As Reminder has it.
  QString occasion;  ///< For one of a series which of them, as Reminder has it; that one alone changes.
  bool completed = true;
  QDateTime at;

  /// The new text. Throws DomainError where the text holds no such reminder, or anything besides it.
  QByteArray apply(const QByteArray& text) const;
};

}  // namespace tarnwick
