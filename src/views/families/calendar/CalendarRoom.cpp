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
#include "widgets/catalog/Options.h"

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

constexpr std::array kOverviewOptions = {
    WidgetOption{.key = option::city,
                 .shape = FieldShape::Place,
                 .label = QT_TRANSLATE_NOOP("Library", "City"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
                 .help = QT_TRANSLATE_NOOP("Library", "The panel shows the weather there.")},
};

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Calendar),
            .panel = makeCalendarPanel,
            .accent = always<Accent::Red>,
            .act = joinMeeting,
            .problem = problem,
            .sample = sampleCalendar},
    RoomRow{.of = familyText(Family::Progress), .panel = makeDayProgressPanel, .accent = always<Accent::Red>},
    RoomRow{.of = familyText(Family::Reminders),
            .panel = makeRemindersPanel,
            .accent = always<Accent::Orange>,
            .act = tickReminder,
            .problem = problem,
            .sample = sampleCalendar},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::calendar, .content = contentOf<makeTodayEvent>},
    RoomRow{.of = kind::calendarWeek, .content = contentOf<makeWeek>},
    RoomRow{.of = kind::calendarSevenDays, .content = fromCalendar<makeSevenDays>},
    RoomRow{.of = kind::calendarDayAgenda, .content = fromCalendar<makeDayAgenda>},
    RoomRow{.of = kind::calendarThreeEvents, .content = fromCalendar<makeThreeEvents>},
    RoomRow{.of = kind::calendarNextEvent, .content = fromCalendar<makeNextEvent>},
    RoomRow{.of = kind::calendarMeeting, .content = fromCalendar<makeMeetings>},
    RoomRow{.of = kind::calendarMeetingDetail, .content = fromCalendar<makeMeetingCenter>},
    RoomRow{.of = kind::calendarMeetingCompact, .content = fromCalendar<makeNextMeeting>},
    RoomRow{.of = kind::todayOverview,
            .content = contentOf<makeTodayOverview>,
            .panel = makeOverviewPanel,
            .options = kOverviewOptions},
    RoomRow{.of = kind::calendarDayProgress, .content = contentOf<makeDayProgress>},
    RoomRow{
        .of = kind::calendarMonthProgress, .content = contentOf<makeMonthProgress>, .panel = makeMonthProgressPanel},
    RoomRow{.of = kind::calendarYearProgress, .content = contentOf<makeYearProgress>, .panel = makeYearProgressPanel},
    RoomRow{.of = kind::remindersNext, .content = fromReminders<makeNextReminder>},
    RoomRow{.of = kind::remindersToday, .content = fromReminders<makeDueToday>},
    RoomRow{.of = kind::remindersAgenda, .content = fromReminders<makeRemindersAgenda>},
};

}  // namespace

extern const Room kCalendarRoom;
constinit const Room kCalendarRoom{.name = "calendar"_L1, .families = kFamilies, .kinds = kKinds, .picture = picture};

}  // namespace tarnwick
