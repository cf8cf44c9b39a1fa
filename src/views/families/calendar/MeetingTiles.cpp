#include "views/families/calendar/MeetingTiles.h"

#include "base/LocalFigures.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/EventWords.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QSizeF kPill(46, 28);
constexpr qint64 kHour = 60;
constexpr qint64 kDay = 24 * kHour;

QRectF pillOf(double width) {
  return {QPointF(width - theme::kPictureInset - kPill.width(), theme::kTileMiddle - kPill.height() / 2), kPill};
}

QString guests(const CalendarEvent& meeting) {
  if (meeting.attendees == 1) return TileWords::tr("1 guest");
  return meeting.attendees > 1 ? TileWords::tr("%1 guests").arg(LocalFigures::number(meeting.attendees)) : QString();
}

}  // namespace

MeetingContent makeMeetings(const TileRequest& request) {
  const qsizetype count = digestOf(request.sources).meetingsToday.size();
  MeetingContent content;
  content.figure = request.sources.locale.toString(count);
  content.caption = count == 1 ? TileWords::tr("meeting today") : TileWords::tr("meetings today");
  content.spoken = content.figure + u' ' + content.caption;
  return content;
}

MeetingContent makeNextMeeting(const TileRequest& request) {
  const std::optional<CalendarEvent>& meeting = digestOf(request.sources).nextMeeting;
  MeetingContent content;
  if (!meeting) {
    content.figure = u"–"_s;
    content.caption = content.spoken = TileWords::tr("No meeting ahead");
    return content;
  }
  const TileSources& sources = request.sources;
  content.caption = TileWords::tr("until %1").arg(meeting->title);
  content.spoken = TileWords::tr("%1, %2").arg(meeting->title, EventWords::distance(*meeting, sources));
  const qint64 minutes = ClockWords::minutesUntil(meeting->start, sources.now);
  if (minutes <= 0) {
    content.figure = TileWords::tr("Now");
    content.caption = meeting->title;
  } else if (minutes < kHour) {
    content.figure = sources.locale.toString(minutes);
    content.unit = TileWords::tr("min");
  } else if (minutes < kDay) {
    content.figure =
        LocalFigures::of(u"%1:%2"_s.arg(minutes / kHour).arg(minutes % kHour, 2, 10, QChar(u'0')), sources.locale);
    content.unit = TileWords::tr("h");
  } else {
    content.figure = ClockWords::weekday(meeting->start.date(), sources.locale, QLocale::ShortFormat);
    content.unit = ClockWords::time(meeting->start.time(), sources.locale, sources.use24Hour).full();
    content.caption = meeting->title;
  }
  return content;
}

TileText describe(const MeetingContent& content, const QString& name) { return {name, content.spoken}; }

void paint(TileCanvas& canvas, const MeetingContent& content) {
  using namespace theme;
  canvas.symbol(u"video"_s, {kTextLeft + kSymbolSize / 2, kTileMiddle}, kSymbolSize, canvas.accent());
  const double x = kTextAfterSymbol;
  const double baseline = canvas.showsCaption()
                              ? kHeadlineBaseline
                              : TileCanvas::centredBaseline(canvas.line(content.figure, TextStyle::Headline));
  canvas.figure(x, baseline, TextStyle::Headline, content.figure, content.unit);
  if (canvas.showsCaption())
    canvas.text(x, kCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption, content.caption,
                canvas.colors().secondary);
}

MeetingCenterContent makeMeetingCenter(const TileRequest& request) {
  const std::optional<CalendarEvent>& meeting = digestOf(request.sources).nextMeeting;
  if (!meeting) return {TileWords::tr("No meetings"), TileWords::tr("Nothing to join"), false};
  QStringList words{EventWords::brief(*meeting, request.sources), guests(*meeting)};
  words.removeAll(QString());
  return {meeting->title, words.join(u" · "_s), true};
}

TileText describe(const MeetingCenterContent& content, const QString& name) {
  return {name, content.joins ? content.title + u", "_s + content.caption : content.title};
}

void paint(TileCanvas& canvas, const MeetingCenterContent& content) {
  using namespace theme;
  const QRectF pill = pillOf(canvas.width());
  double space = canvas.spaceAfter(kTextLeft);
  if (content.joins) {
    space = pill.left() - kPictureInset - kTextLeft;
    const QRectF box = canvas.snapped(pill);
    drawRounded(canvas.painter(), box, box.height() / 2, canvas.accent());
    const TextLine word = canvas.line(TileWords::tr("Join"), TextStyle::BodyStrong).elided(box.width() - 8, Elide::End);
    word.drawCentred(canvas.painter(), {box.center().x(), TileCanvas::centredBaseline(word, box.center().y())},
                     canvas.colors().inkOnAccent);
  }
  paintTitle(canvas, kTextLeft, space, content.title, content.caption);
}

std::optional<int> partAt(const MeetingCenterContent& content, const TileClick& click) {
  return content.joins && pillOf(click.width).contains(click.point) ? std::optional(0) : std::nullopt;
}

}  // namespace tarnwick
