#include "views/families/habits/HabitTiles.h"

#include <QSet>

#include "base/LocalFigures.h"
#include "views/theme/WaterGlass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/HabitMath.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QRectF kGlass(12, 14, 24, 36);
constexpr double kGlassReach = 6;
constexpr double kCountLeft = 46;
constexpr double kCountRight = 6;

constexpr double kHabitBaseline = 25;
constexpr double kDiscRadius = 5;
constexpr double kDiscTop = 44;
constexpr double kFirstDisc = 18;
constexpr double kOpenRing = 1.5;
constexpr double kDiscReach = 9;
constexpr double kNameGap = 6;

QString daysWord(int days) {
  return days == 1 ? TileWords::tr("1 day") : TileWords::tr("%1 days").arg(LocalFigures::number(days));
}

QPointF discCentre(int day, double width) {
  return {kFirstDisc + day * (width - kFirstDisc * 2) / (HabitContent::kDays - 1), kDiscTop};
}

bool isNear(QPointF point, QPointF centre, double reach) {
  const QPointF away = point - centre;
  return QPointF::dotProduct(away, away) <= reach * reach;
}

/// The count and its goal as large as there is space for; the goal goes before a digit of the count would.
void paintCount(TileCanvas& canvas, const WaterContent& content, bool captioned) {
  const double space = canvas.width() - kCountLeft - kCountRight;
  const QString count = LocalFigures::number(content.glasses);
  const QString goal = u'/' + LocalFigures::number(content.goal);
  TextStyle style = TextStyle::Title;
  bool withGoal = false;
  for (const TextStyle each : {TextStyle::Headline, TextStyle::Gauge, TextStyle::Title}) {
    const double width = canvas.line(count, each).width() + 2 + TextLine::unit(goal, each, canvas.scale()).width();
    if (width > space + 2) continue;
    style = each;
    withGoal = true;
    break;
  }
  const double baseline = captioned ? theme::kHeadlineBaseline : TileCanvas::centredBaseline(canvas.line(count, style));
  if (!withGoal) {
    canvas.figure(kCountLeft, baseline, style, count);
    return;
  }
  // A fraction is read in one direction by everyone.
  const double whole = canvas.line(count, style).width() + 2 + TextLine::unit(goal, style, canvas.scale()).width();
  canvas.unmirrored(kCountLeft + whole / 2, [&] { canvas.figure(kCountLeft, baseline, style, count, goal); });
}

}  // namespace

WaterContent makeWater(const TileRequest& request) {
  return {WaterMath::count(request.widget, request.sources.now), WaterMath::goal(request.widget)};
}

TileText describe(const WaterContent& content, const QString& name) {
  return {
      name,
      TileWords::tr("%1 of %2 glasses").arg(LocalFigures::number(content.glasses), LocalFigures::number(content.goal))};
}

void paint(TileCanvas& canvas, const WaterContent& content) {
  drawWaterGlass(canvas.painter(), kGlass, static_cast<double>(content.glasses) / content.goal, canvas.colors().track,
                 canvas.accent());
  const TextLine caption = canvas.line(TileWords::tr("glasses"), TextStyle::Caption);
  const bool captioned = canvas.showsCaption() && caption.width() <= canvas.width() - kCountLeft - kCountRight / 2;
  paintCount(canvas, content, captioned);
  if (captioned)
    caption.drawFromInk(canvas.painter(), {kCountLeft, theme::kCaptionBaseline}, canvas.colors().secondary);
}

std::optional<int> partAt(const WaterContent&, const TileClick& click) {
  const QRectF reach = kGlass.adjusted(-kGlassReach, -kGlassReach, kGlassReach, kGlassReach);
  return reach.contains(click.point) ? std::optional(0) : std::nullopt;
}

HabitContent makeHabit(const TileRequest& request) {
  HabitContent content;
  const QString text = request.widget.options.value(option::text).simplified();
  content.habit = text.isEmpty() ? request.title() : text;
  content.streak = HabitMath::streak(request.widget, request.sources.now);
  const QSet<QString> kept = HabitMath::completed(request.widget);
  for (int back = HabitContent::kDays - 1; back >= 0; --back)
    content.days.append(kept.contains(HabitMath::key(request.sources.now.addDays(-back))));
  return content;
}

TileText describe(const HabitContent& content, const QString& name) {
  const QString today = content.days.last() ? TileWords::tr("done today") : TileWords::tr("not yet today");
  const QString habit = content.habit == name ? QString() : content.habit + u", "_s;
  return {name, habit + u"%1, %2"_s.arg(daysWord(content.streak), today)};
}

void paint(TileCanvas& canvas, const HabitContent& content) {
  using namespace theme;
  TextLine habit = canvas.line(content.habit, TextStyle::Title).elided(canvas.spaceAfter(kTextLeft), Elide::End);
  if (canvas.showsLastRow() && content.streak > 0) {
    const TextLine streak = canvas.line(daysWord(content.streak), TextStyle::Caption);
    // A habit of many words has the line to itself.
    if (kTextLeft + habit.width() + kNameGap + streak.width() <= canvas.width() - kTextRight)
      streak.drawRight(canvas.painter(), {canvas.width() - kTextRight, kHabitBaseline}, canvas.accentWord());
  }
  habit.drawFromInk(canvas.painter(), {kTextLeft, kHabitBaseline}, canvas.colors().primary);
  QPainter& painter = canvas.painter();
  for (int day = 0; day < content.days.size(); ++day) {
    const bool done = content.days[day];
    const QPointF centre = discCentre(day, canvas.width());
    if (day == HabitContent::kDays - 1 && !done) {
      painter.setPen(QPen(canvas.accent(), kOpenRing));
      painter.setBrush(Qt::NoBrush);
      painter.drawEllipse(centre, kDiscRadius - kOpenRing / 2, kDiscRadius - kOpenRing / 2);
      continue;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(done ? canvas.accent() : canvas.colors().track);
    painter.drawEllipse(centre, kDiscRadius, kDiscRadius);
  }
}

std::optional<int> partAt(const HabitContent&, const TileClick& click) {
  const QPointF today = discCentre(HabitContent::kDays - 1, click.width);
  return isNear(click.point, today, kDiscReach) ? std::optional(0) : std::nullopt;
}

}  // namespace tarnwick
