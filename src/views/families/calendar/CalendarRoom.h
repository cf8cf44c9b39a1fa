#pragma once

#include <QDateTime>
#include <memory>

#include "calendar/CalendarDigest.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A month, and below it what the chosen day holds, with a way into its meetings.
std::unique_ptr<TilePanel> makeCalendarPanel(const PanelContext& context);
/// The day at a glance: the weather, what is planned, what is due and what is to be done.
std::unique_ptr<TilePanel> makeOverviewPanel(const PanelContext& context);
/// How much of day, month and year has passed, and what is left.
std::unique_ptr<TilePanel> makeDayProgressPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeMonthProgressPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeYearProgressPanel(const PanelContext& context);
/// What is due, to be ticked off.
std::unique_ptr<TilePanel> makeRemindersPanel(const PanelContext& context);

/// The calendars and reminders of a month, as pictures of the program show them around a moment.
std::shared_ptr<const CalendarDigest> calendarFixture(const QDateTime& now);

}  // namespace tarnwick
