#include "views/families/calendar/CalendarRoom.h"

#include <array>

#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/MeetingTiles.h"
#include "views/families/calendar/OverviewTiles.h"
#include "views/families/calendar/ProgressTiles.h"
#include "views/families/calendar/ReminderTiles.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Without a calendar there is nothing to show but the way to one.
template <auto Make>
TileContent fromCalendar(const TileRequest& request) {
  if (auto notice = calendarNotice(request)) return *std::move(notice);
  return Make(request);
}

template <auto Make>
TileContent fromReminders(const TileRequest& request) {
  if (auto notice = remindersNotice(request)) return *std::move(notice);
  return Make(request);
}

QString problem(const TileSources& sources) { return sources.calendar ? sources.calendar->problem : QString(); }

void joinMeeting(const PartClick& click) {
  if (const auto& meeting = click.calendar()->nextMeeting) click.commands.openUrl(QUrl(meeting->meetingLink));
}

void tickReminder(const PartClick& click) {
  const auto digest = click.calendar();
  if (click.part >= 0 && click.part < digest->reminders.size())
    click.commands.completeReminder(digest->reminders[click.part], true);
}

/// The sample is about today, so it is made anew each day.
void sampleCalendar(TileSources& sources, const TileSources&) {
  const auto& calendar = sources.calendar;
  if (calendar && !(calendar->upcoming.isEmpty() && calendar->today.isEmpty() && calendar->reminders.isEmpty())) return;
  thread_local QDate day;
  thread_local std::shared_ptr<const CalendarDigest> sample;
  if (day != sources.now.date()) {
    day = sources.now.date();
    sample = calendarFixture(sources.now);
  }
  sources.calendar = sample;
}

void picture(TileSources& sources) { sources.calendar = calendarFixture(sources.now); }

constexpr auto kMinute = always<TickCadence::Minute, DockWidget>;

constexpr std::array kFamilies = {
    RoomRow{.word = familyText(Family::Calendar),
            .panel = makeCalendarPanel,
            .accent = always<Accent::Red>,
            .cadence = kMinute,
            .act = joinMeeting,
            .problem = problem,
            .sample = sampleCalendar},
    RoomRow{.word = familyText(Family::Progress),
            .panel = makeDayProgressPanel,
            .accent = always<Accent::Red>,
            .cadence = kMinute},
    RoomRow{.word = familyText(Family::Reminders),
            .panel = makeRemindersPanel,
            .accent = always<Accent::Orange>,
            .cadence = kMinute,
            .act = tickReminder,
            .problem = problem,
            .sample = sampleCalendar},
};
constexpr std::array kKinds = {
    RoomRow{.word = kind::calendar, .content = contentOf<makeTodayEvent>},
    RoomRow{.word = kind::calendarWeek, .content = contentOf<makeWeek>},
    RoomRow{.word = kind::calendarSevenDays, .content = fromCalendar<makeSevenDays>},
    RoomRow{.word = kind::calendarDayAgenda, .content = fromCalendar<makeDayAgenda>},
    RoomRow{.word = kind::calendarThreeEvents, .content = fromCalendar<makeThreeEvents>},
    RoomRow{.word = kind::calendarNextEvent, .content = fromCalendar<makeNextEvent>},
    RoomRow{.word = kind::calendarMeeting, .content = fromCalendar<makeMeetings>},
    RoomRow{.word = kind::calendarMeetingDetail, .content = fromCalendar<makeMeetingCenter>},
    RoomRow{.word = kind::calendarMeetingCompact, .content = fromCalendar<makeNextMeeting>},
    RoomRow{.word = kind::todayOverview, .content = contentOf<makeTodayOverview>, .panel = makeOverviewPanel},
    RoomRow{.word = kind::calendarDayProgress, .content = contentOf<makeDayProgress>},
    RoomRow{
        .word = kind::calendarMonthProgress, .content = contentOf<makeMonthProgress>, .panel = makeMonthProgressPanel},
    RoomRow{.word = kind::calendarYearProgress, .content = contentOf<makeYearProgress>, .panel = makeYearProgressPanel},
    RoomRow{.word = kind::remindersNext, .content = fromReminders<makeNextReminder>},
    RoomRow{.word = kind::remindersToday, .content = fromReminders<makeDueToday>},
    RoomRow{.word = kind::remindersAgenda, .content = fromReminders<makeRemindersAgenda>},
};

}  // namespace

extern const Room kCalendarRoom;
constinit const Room kCalendarRoom{.name = "calendar"_L1, .families = kFamilies, .kinds = kKinds, .picture = picture};

}  // namespace tarnwick
