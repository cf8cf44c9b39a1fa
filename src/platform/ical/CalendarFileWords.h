#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What is said of calendars in files.
struct CalendarFileWords {
  Q_DECLARE_TR_FUNCTIONS(CalendarFiles)
};

}  // namespace tarnwick
