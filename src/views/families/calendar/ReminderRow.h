#pragma once

#include <QString>
#include <functional>

#include "calendar/CalendarModel.h"

class QWidget;

namespace tarnwick {

/// A reminder in a list, with a word about when it is due. It is ticked off through `complete`; without that, or where
/// its list can only be read, it is a plain row.
QWidget* makeReminderRow(const Reminder& reminder, const QString& when, bool parted,
                         const std::function<void(const Reminder& reminder, bool done)>& complete);

}  // namespace tarnwick
