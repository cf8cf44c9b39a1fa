#pragma once

#include <QObject>
#include <functional>

#include "calendar/ports/CalendarRecords.h"

namespace tarnwick {

/// The user's calendars and lists of things to do. Nothing is read or watched before the first `load`. Main thread
/// only; all reading happens elsewhere, and answers come later, on the main thread, unless their context has gone
/// meanwhile.
class CalendarSource : public QObject {
  Q_OBJECT
 public:
  using Loaded = std::function<void(const CalendarReading&)>;
  /// Empty on success, else a finished sentence.
  using Done = std::function<void(const QString& failure)>;

  using QObject::QObject;

  /// Reads what lies in the range. Cheap while nothing changed since the last time and the range is the same.
  virtual void load(const CalendarRange& range, QObject* context, Loaded done) = 0;

  /// Ticks a reminder off at the moment `at`, or takes the tick away again; of a series that occasion alone. `changed`
  /// follows where it succeeds.
  virtual void setCompleted(const Reminder& reminder, bool completed, const QDateTime& at, QObject* context,
                            Done done) = 0;

  /// Folders that the user added to the places which the source knows by itself. `changed` follows after the first
  /// load.
  virtual void setFolders(const QStringList& folders) = 0;

 Q_SIGNALS:
  /// Something in the calendars changed: load again to know what.
  void changed();
};

}  // namespace tarnwick
