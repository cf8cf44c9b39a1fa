#pragma once

#include <QDateTime>
#include <memory>

#include "calendar/CalendarDigest.h"

namespace tarnwick {

/// The calendars and reminders of a month, as pictures of the program show them around a moment.
std::shared_ptr<const CalendarDigest> calendarFixture(const QDateTime& now);

}  // namespace tarnwick
