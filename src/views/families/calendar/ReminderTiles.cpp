#include "views/families/calendar/ReminderTiles.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/EventWords.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostReminders = 3;
constexpr double kRowPitch = 16;

constexpr double kRing = 9.2;
constexpr double kRingStroke = 1.8;
constexpr double kRingMiddle = 22;
constexpr double kBesideRing = 42;

constexpr double kSmallRing = 4.4;
constexpr double kSmallStroke = 1.5;
constexpr double kSmallMiddle = 17.7;
constexpr double kBesideSmall = 30;

constexpr double kProgress = 19.5;
constexpr double kProgressStroke = 5;
constexpr double kCheck = 16;
constexpr double kBesideProgress = 66;

RemindersContent reminders(const TileRequest& request, bool agenda) {
  const CalendarDigest& digest = digestOf(request.sources);
  RemindersContent content;
  content.agenda = agenda;
  content.empty = digest.completedToday.isEmpty() ? TileWords::tr("No reminders") : TileWords::tr("All done");
  const qsizetype most = std::min(digest.reminders.size(), agenda ? kMostReminders : 1);
  for (const Reminder& reminder : digest.reminders.first(most)) {
    const QString when =
        agenda ? EventWords::briefDue(reminder, request.sources) : EventWords::due(reminder, request.sources);
    content.rows.append({reminder.title, when.isEmpty() && !agenda ? reminder.calendar : when,
                         ReminderModel::isOverdue(reminder, request.sources.now), reminder.canComplete});
  }
  return content;
}

void drawRing(TileCanvas& canvas, QPointF centre, double radius, double stroke, const QColor& color) {
  canvas.painter().setBrush(Qt::NoBrush);
  canvas.painter().setPen(QPen(color, stroke));
  canvas.painter().drawEllipse(centre, radius, radius);
}

void paintNext(TileCanvas& canvas, const RemindersContent& content) {
  const QPointF centre(kRingMiddle, theme::kTileMiddle);
  drawRing(canvas, centre, kRing, kRingStroke, content.rows.isEmpty() ? canvas.colors().track : canvas.accent());
  const double space = canvas.spaceAfter(kBesideRing);
  if (content.rows.isEmpty()) {
    canvas.symbol(u"checkmark"_s, centre, kCheck * 0.75, canvas.colors().secondary);
    paintTitle(canvas, kBesideRing, space, content.empty, TileWords::tr("Nothing is due"));
    return;
  }
  const RemindersContent::Row& row = content.rows.first();
  paintTitle(canvas, kBesideRing, space, row.title, row.word, row.overdue);
}

}  // namespace

RemindersContent makeNextReminder(const TileRequest& request) { return reminders(request, false); }
RemindersContent makeRemindersAgenda(const TileRequest& request) { return reminders(request, true); }

TileText describe(const RemindersContent& content, const QString& name) {
  if (content.rows.isEmpty()) return {name, content.empty};
  QStringList parts;
  for (const RemindersContent::Row& row : content.rows) {
    QStringList words{row.title, row.overdue ? TileWords::tr("overdue") : QString(), row.word};
    words.removeAll(QString());
    parts << words.join(u' ');
  }
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const RemindersContent& content) {
  if (!content.agenda || content.rows.isEmpty()) {
    paintNext(canvas, content);
    return;
  }
  const QList<double> baselines = canvas.rowBaselines(std::min(content.rows.size(), kMostReminders));
  const double rise = canvas.line(u"0"_s, TextStyle::ListRow).capHeight() / 2;
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const RemindersContent::Row& row = content.rows[i];
    drawRing(canvas, {kSmallMiddle, baselines[i] - rise}, kSmallRing, kSmallStroke, canvas.colors().tertiary);
    canvas.row(kBesideSmall, baselines[i], row.title, TextStyle::ListRow, row.word,
               row.overdue ? canvas.accentWord() : canvas.colors().secondary);
  }
}

std::optional<int> partAt(const RemindersContent& content, const TileClick& click) {
  if (content.rows.isEmpty()) return std::nullopt;
  const auto ticked = [&](qsizetype row) {
    return content.rows[row].ticks ? std::optional(static_cast<int>(row)) : std::nullopt;
  };
  if (!content.agenda) return click.point.x() <= kBesideRing - 4 ? ticked(0) : std::nullopt;
  if (click.point.x() > kBesideSmall - 4) return std::nullopt;
  // In small docks there are fewer rows, farther apart.
  const qsizetype space = click.scale >= theme::kCompactScale ? kMostReminders : kMostReminders - 1;
  const qsizetype count = std::min(content.rows.size(), space);
  const double pitch = click.scale >= theme::kBareScale ? kRowPitch : kRowPitch * 1.5;
  const double first = theme::kTileMiddle - pitch * static_cast<double>(count) / 2;
  const auto row = static_cast<qsizetype>(std::floor((click.point.y() - first) / pitch));
  return row >= 0 && row < count ? ticked(row) : std::nullopt;
}

DueTodayContent makeDueToday(const TileRequest& request) {
  const CalendarDigest& digest = digestOf(request.sources);
  return {static_cast<int>(digest.dueToday.size()), static_cast<int>(digest.completedToday.size())};
}

TileText describe(const DueTodayContent& content, const QString& name) {
  return {name,
          TileWords::tr("%1 due, %2 done").arg(LocalFigures::number(content.due), LocalFigures::number(content.done))};
}

void paint(TileCanvas& canvas, const DueTodayContent& content) {
  using namespace theme;
  const QPointF centre(kTileMiddle, kTileMiddle);
  canvas.arc(centre, kProgress, kProgressStroke, 0, 360, canvas.colors().track);
  const int all = content.due + content.done;
  if (content.done > 0) canvas.arc(centre, kProgress, kProgressStroke, 0, 360.0 * content.done / all, canvas.accent());
  canvas.symbol(u"checkmark"_s, centre, kCheck, canvas.accent());
  const QString figure = LocalFigures::number(content.due);
  const double x = kBesideProgress;
  const double baseline =
      canvas.showsCaption() ? kHeadlineBaseline : TileCanvas::centredBaseline(canvas.line(figure, TextStyle::Headline));
  canvas.figure(x, baseline, TextStyle::Headline, figure);
  if (canvas.showsCaption())
    canvas.text(
        x, kCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption,
        content.done > 0 ? TileWords::tr("due, %1 done").arg(LocalFigures::number(content.done)) : TileWords::tr("due"),
        canvas.colors().secondary);
}

}  // namespace tarnwick
