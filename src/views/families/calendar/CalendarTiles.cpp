#include "views/families/calendar/CalendarTiles.h"

#include <QSet>
#include <algorithm>

#include "base/ForeignText.h"
#include "views/families/calendar/EventWords.h"
#include "views/theme/Glass.h"
#include "views/tiles/DayPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/CalendarStrip.h"
#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

const CalendarDigest& digestOf(const TileSources& sources) {
  static const CalendarDigest none;
  return sources.calendar ? *sources.calendar : none;
}

namespace {

constexpr qsizetype kMostEvents = 3;

constexpr double kDayMiddle = 28;
constexpr double kDayDivider = 55;
constexpr double kBesideDay = 66;
constexpr double kDividerHeight = 36;

constexpr double kEventBar = 3;
constexpr double kEventBarHeight = 36;
constexpr double kBesideBar = 24;

constexpr double kTimeColumn = 36;
constexpr double kAgendaBarHeight = 11;
constexpr double kAgendaGap = 3;
constexpr double kAgendaLeast = 1.5;  ///< More, where the times are wider than that.
constexpr double kAgendaTextGap = 6;

constexpr int kDaysInWeek = 7;
constexpr double kDayPitch = 22.67;
constexpr double kLetterBaseline = 19;
constexpr double kNumberMiddle = 39.5 - 4;
constexpr double kDisc = 10.5;
constexpr double kDiscMargin = 2.5;
constexpr double kNumberGap = 6;
constexpr double kDot = 1.6;
constexpr double kDotMiddle = 53;

constexpr QSizeF kBar(13, 4);
constexpr double kBarPitch = 6.5;
constexpr double kBarsTop = 10;
constexpr int kBars = 5;
constexpr double kOtherDays = 0.6;
constexpr double kDayNameBaseline = 54;

bool hasCalendar(const TileRequest& request) {
  return request.sources.calendar && request.sources.calendar->calendarMessage.isEmpty();
}

std::optional<GenericContent> notice(const TileRequest& request, const QString& word, const QString& sentence) {
  if (request.sources.calendar && sentence.isEmpty()) return std::nullopt;
  GenericContent content = makeGeneric(request);
  content.word = word;
  content.sentence = sentence;
  content.opensEditor = true;
  return content;
}

QString joined(QStringList words, const QString& between) {
  words.removeAll(QString());
  return words.join(between);
}

void paintDivider(TileCanvas& canvas, double x, double height) {
  canvas.painter().fillRect(canvas.snapped(QRectF(x, theme::kTileMiddle - height / 2, 1, height)),
                            canvas.colors().hairline);
}

/// Rows with the word at the right.
void paintUpcoming(TileCanvas& canvas, const EventListContent& content, const QList<double>& baselines) {
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const EventListContent::Row& row = content.rows[i];
    canvas.row(theme::kTextLeft, baselines[i], row.title, row.accented ? TextStyle::ListRowStrong : TextStyle::ListRow,
               row.word, row.accented ? canvas.accentWord() : canvas.colors().secondary);
  }
}

/// Rows with the time at the left and the calendar's colour before the title.
void paintAgenda(TileCanvas& canvas, const EventListContent& content, const QList<double>& baselines) {
  double column = kTimeColumn;
  for (qsizetype i = 0; i < baselines.size(); ++i)
    column = std::max(column, canvas.line(content.rows[i].word, TextStyle::ListRow).width() + kAgendaLeast);
  const double bar = theme::kTextLeft + column + kAgendaGap;
  const double text = bar + kEventBar + kAgendaTextGap;
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const EventListContent::Row& row = content.rows[i];
    const TextLine title = canvas.line(row.title, TextStyle::ListRow);
    canvas.line(row.word, TextStyle::ListRow)
        .draw(canvas.painter(), {theme::kTextLeft, baselines[i]}, canvas.colors().secondary);
    const double middle = baselines[i] - title.capHeight() / 2;
    const QRectF mark(bar, middle - kAgendaBarHeight / 2, kEventBar, kAgendaBarHeight);
    drawRounded(canvas.painter(), canvas.snapped(mark), kEventBar / 2,
                EventWords::colour(row.colour, canvas.colors(), canvas.accentName()));
    title.elided(canvas.spaceAfter(text), Elide::End)
        .draw(canvas.painter(), {text, baselines[i]}, canvas.colors().primary);
  }
}

/// Two letters of each day, or one in languages where two do not distinguish the days.
QString dayName(const QDate& date, const QLocale& locale) {
  QSet<QString> names;
  for (int day = 1; day <= kDaysInWeek; ++day)
    names.insert(locale.standaloneDayName(day, QLocale::ShortFormat).left(2));
  const bool distinct = names.size() == kDaysInWeek;
  const QString name = ClockWords::weekday(date, locale, distinct ? QLocale::ShortFormat : QLocale::NarrowFormat);
  return name.left(2);
}

DaysContent days(const TileRequest& request, bool week) {
  const QLocale& locale = request.sources.locale;
  const CalendarDigest& digest = digestOf(request.sources);
  const QDate today = request.sources.now.date();
  DaysContent content;
  content.week = week;
  const QList<Qt::DayOfWeek> working = locale.weekdays();
  QStringList spoken;
  for (const QDate& date : CalendarStrip::days(request.widget.kind, request.sources.now, locale.firstDayOfWeek())) {
    const QString name = week ? ClockWords::weekday(date, locale, QLocale::NarrowFormat) : dayName(date, locale);
    const int events = digest.counts.value(date);
    content.days.append({name, locale.toString(date.day()), events, date == today,
                         !working.contains(static_cast<Qt::DayOfWeek>(date.dayOfWeek()))});
    if (events > 0)
      spoken << TileWords::tr("%1: %2").arg(ClockWords::day(date, today, locale), locale.toString(events));
  }
  const QString date = ClockWords::dates(today, locale).value(0);
  if (!hasCalendar(request))
    content.spoken = joined({date, digest.calendarMessage}, u". "_s);
  else
    content.spoken = spoken.isEmpty() ? joined({date, TileWords::tr("No events")}, u", "_s) : spoken.join(u", "_s);
  return content;
}

void paintWeekDay(TileCanvas& canvas, const DaysContent::Day& day, double x) {
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  const TextLine number = canvas.line(day.number, TextStyle::BodyStrong);
  double middle = theme::kTileMiddle;
  if (canvas.showsCaption()) {
    middle = kNumberMiddle;
    canvas.line(day.name, TextStyle::Caption)
        .drawCentred(painter, {x, kLetterBaseline}, day.today ? canvas.accentWord() : colors.secondary);
  }
  painter.setPen(Qt::NoPen);
  if (day.today) {
    painter.setBrush(canvas.accent());
    const double disc = std::max(kDisc, number.width() / 2 + kDiscMargin);
    painter.drawEllipse(QPointF(x, middle), disc, disc);
  }
  number.drawCentred(painter, {x, TileCanvas::centredBaseline(number, middle)},
                     day.today  ? colors.inkOnAccent
                     : day.free ? colors.tertiary
                                : colors.primary);
  if (day.events == 0 || !canvas.showsLastRow()) return;
  painter.setBrush(day.today ? canvas.accent() : colors.tertiary);
  painter.drawEllipse(QPointF(x, kDotMiddle), kDot, kDot);
}

void paintFullness(TileCanvas& canvas, const DaysContent::Day& day, double x) {
  const double top = canvas.showsCaption() ? kBarsTop : theme::kTileMiddle - (kBarPitch * kBars - 2.5) / 2;
  for (int i = 0; i < kBars; ++i) {
    const bool full = kBars - i <= day.events;
    const QRectF bar(x - kBar.width() / 2, top + kBarPitch * i, kBar.width(), kBar.height());
    drawRounded(canvas.painter(), canvas.snapped(bar), kBar.height() / 2,
                !full       ? canvas.colors().track
                : day.today ? canvas.accent()
                            : faded(canvas.accent(), kOtherDays));
  }
  if (canvas.showsCaption())
    canvas.line(day.name, day.today ? TextStyle::TabLabel : TextStyle::Caption)
        .drawCentred(canvas.painter(), {x, kDayNameBaseline},
                     day.today ? canvas.colors().primary : canvas.colors().secondary);
}

}  // namespace

std::optional<GenericContent> calendarNotice(const TileRequest& request) {
  return notice(request, TileWords::tr("Add calendar"), digestOf(request.sources).calendarMessage);
}

std::optional<GenericContent> remindersNotice(const TileRequest& request) {
  return notice(request, TileWords::tr("Add list"), digestOf(request.sources).reminderMessage);
}

void paintTitle(TileCanvas& canvas, double x, double space, const QString& title, const QString& caption,
                bool accented) {
  const TextLine line = canvas.line(title, TextStyle::Title).elided(space, Elide::End);
  if (!canvas.showsCaption() || caption.isEmpty()) {
    line.draw(canvas.painter(), {x, TileCanvas::centredBaseline(line)}, canvas.colors().primary);
    return;
  }
  line.draw(canvas.painter(), {x, theme::kTitleBaseline}, canvas.colors().primary);
  canvas.text(x, theme::kTitleCaptionBaseline, space, TextStyle::Caption, caption,
              accented ? canvas.accentWord() : canvas.colors().secondary);
}

TodayEventContent makeTodayEvent(const TileRequest& request) {
  const TileSources& sources = request.sources;
  const QDate today = sources.now.date();
  TodayEventContent content;
  content.weekday = sources.locale.toUpper(ClockWords::weekday(today, sources.locale, QLocale::ShortFormat));
  content.day = sources.locale.toString(today.day());
  content.spoken = ClockWords::dates(today, sources.locale).value(0);
  const CalendarDigest& digest = digestOf(request.sources);
  if (!hasCalendar(request)) {
    content.title = TileWords::tr("No calendar");
    content.caption = TileWords::tr("Add calendar");
    content.accented = true;
    content.spoken = joined({content.spoken, digest.calendarMessage}, u". "_s);
  } else if (digest.upcoming.isEmpty()) {
    content.title = TileWords::tr("No events");
    content.caption = TileWords::tr("Nothing is planned");
    content.spoken += u", "_s + content.title;
  } else {
    const CalendarEvent& event = digest.upcoming.first();
    content.title = event.title;
    content.caption = EventWords::when(event, sources);
    content.shortCaption = EventWords::brief(event, sources);
    content.spoken += u": "_s + joined({content.title, content.caption, ForeignText::line(event.location)}, u", "_s);
  }
  return content;
}

TileText describe(const TodayEventContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const TodayEventContent& content) {
  paintDay(canvas, kDayMiddle, content.weekday, content.day, DaySize::Beside);
  paintDivider(canvas, kDayDivider, kDividerHeight);
  const double space = canvas.spaceAfter(kBesideDay);
  const bool fits = content.shortCaption.isEmpty() || canvas.line(content.caption, TextStyle::Caption).width() <= space;
  paintTitle(canvas, kBesideDay, space, content.title, fits ? content.caption : content.shortCaption, content.accented);
}

NextEventContent makeNextEvent(const TileRequest& request) {
  const CalendarDigest& digest = digestOf(request.sources);
  if (digest.upcoming.isEmpty()) return {TileWords::tr("No events"), TileWords::tr("Nothing is planned"), false};
  const CalendarEvent& event = digest.upcoming.first();
  return {event.title,
          joined({EventWords::distance(event, request.sources), ForeignText::line(event.location)}, u" · "_s), true};
}

TileText describe(const NextEventContent& content, const QString& name) {
  return {name, content.some ? content.title + u", "_s + content.caption : content.title};
}

void paint(TileCanvas& canvas, const NextEventContent& content) {
  const QRectF bar(theme::kTextLeft, theme::kTileMiddle - kEventBarHeight / 2, kEventBar, kEventBarHeight);
  drawRounded(canvas.painter(), canvas.snapped(bar), kEventBar / 2,
              content.some ? canvas.accent() : canvas.colors().track);
  paintTitle(canvas, kBesideBar, canvas.spaceAfter(kBesideBar), content.title, content.caption);
}

EventListContent makeThreeEvents(const TileRequest& request) {
  EventListContent content;
  content.empty = TileWords::tr("No events");
  const TileSources& sources = request.sources;
  for (const CalendarEvent& event : digestOf(request.sources).upcoming) {
    if (content.rows.size() >= kMostEvents) break;
    const bool soon = content.rows.isEmpty() && !event.allDay && event.start.date() <= sources.now.date();
    content.rows.append({event.title, soon ? EventWords::distance(event, sources) : EventWords::brief(event, sources),
                         event.colour, soon});
  }
  return content;
}

EventListContent makeDayAgenda(const TileRequest& request) {
  EventListContent content;
  content.agenda = true;
  const TileSources& sources = request.sources;
  QList<CalendarEvent> left;
  for (const CalendarEvent& event : digestOf(request.sources).today)
    if (event.end > sources.now || event.start >= sources.now) left.append(event);
  content.empty = digestOf(request.sources).today.isEmpty() ? TileWords::tr("No events today")
                                                            : TileWords::tr("Nothing more today");
  for (const CalendarEvent& event : left.first(std::min(left.size(), kMostEvents)))
    content.rows.append({event.title, EventWords::brief(event, sources), event.colour, false});
  return content;
}

TileText describe(const EventListContent& content, const QString& name) {
  if (content.rows.isEmpty()) return {name, content.empty};
  QStringList parts;
  for (const EventListContent::Row& row : content.rows)
    parts << (content.agenda ? row.word + u' ' + row.title : row.title + u' ' + row.word);
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const EventListContent& content) {
  const QList<double> baselines = canvas.rowBaselines(std::min(content.rows.size(), kMostEvents));
  if (baselines.isEmpty())
    paintTitle(canvas, theme::kTextLeft, canvas.spaceAfter(theme::kTextLeft), content.empty, {});
  else
    content.agenda ? paintAgenda(canvas, content, baselines) : paintUpcoming(canvas, content, baselines);
}

DaysContent makeWeek(const TileRequest& request) { return days(request, true); }
DaysContent makeSevenDays(const TileRequest& request) { return days(request, false); }

TileText describe(const DaysContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const DaysContent& content) {
  qsizetype first = 0;
  qsizetype count = content.days.size();
  double pitch = kDayPitch;
  if (content.week) {
    // In small docks the numbers are as wide as ever; then only the days around today are shown.
    pitch = std::max(pitch, canvas.line(u"00"_s, TextStyle::BodyStrong).width() + kNumberGap);
    count = std::min(count, static_cast<qsizetype>((canvas.width() - theme::kPictureInset) / pitch));
    const auto today = std::ranges::find(content.days, true, &DaysContent::Day::today) - content.days.begin();
    first = std::clamp<qsizetype>(today - count / 2, 0, content.days.size() - count);
  }
  const double left = canvas.width() / 2 - pitch * static_cast<double>(count - 1) / 2;
  for (qsizetype i = 0; i < count; ++i) {
    const double x = left + pitch * static_cast<double>(i);
    const DaysContent::Day& day = content.days[first + i];
    content.week ? paintWeekDay(canvas, day, x) : paintFullness(canvas, day, x);
  }
}

}  // namespace tarnwick
