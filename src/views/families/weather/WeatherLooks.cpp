#include "views/families/weather/WeatherLooks.h"

#include <algorithm>
#include <array>

#include "views/families/weather/WeatherPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPicture = 32;
constexpr double kPictureTop = 4;
constexpr double kFigureLeastRight = 4;
constexpr double kFigureLeft = 48;
constexpr double kPlaceBaseline = 51;

// Wide tiles that begin with the picture.
constexpr double kWideFigureLeft = 50;
constexpr double kWideTextGap = 8;

// Humidity and wind, each behind a symbol.
constexpr double kFactSymbol = 13;
constexpr double kFactGap = 5;
constexpr std::array kFactMiddles = {20.5, 42.5};

// Days beside each other.
constexpr double kDayName = 17;
constexpr double kDayPicture = 20;
constexpr double kDayPictureTop = 22.5;
constexpr double kDayFigure = 55;
constexpr double kDayDivider = 100;
constexpr double kDayDividerHeight = 36;
constexpr double kBareDayPicture = 26;
constexpr double kBareDayTop = 6;
constexpr double kDayGap = 4;

// The condition in words.
constexpr double kStatusPicture = 38;
constexpr double kStatusText = 60;
constexpr std::array kStatusRows = {21.0, 36.0, 52.0};

// Hours.
constexpr double kHoursInset = 20;
constexpr double kHoursTexts = 17;
constexpr double kHoursNames = 56;
constexpr double kHoursTop = 26;
constexpr double kHoursFoot = 39;
constexpr double kHoursLowFoot = 50;
constexpr double kHourGap = 5;
constexpr double kHourEdge = 6;

constexpr double kRoseRadius = 22;
constexpr double kRoseMiddle = 34;
constexpr double kWindLeft = 68;

constexpr double kSunInset = 16;
constexpr double kSunTop = 12;
constexpr double kSunFoot = 42;
constexpr double kSunLowFoot = 48;
constexpr double kSunTimes = 56;
constexpr double kSunWord = 6;  ///< Above the horizon.

QColor inkOf(const TileCanvas& canvas, const WeatherContent& content) {
  return content.reading.isFailed ? canvas.colors().secondary : canvas.colors().primary;
}

/// The largest in which the whole figure fits into `space`: in hard winters it has four characters.
TextStyle figureStyle(const TileCanvas& canvas, const QString& figure, double space) {
  for (const TextStyle style : {TextStyle::Headline, TextStyle::Figure17})
    if (canvas.line(figure, style).width() <= space) return style;
  return TextStyle::Title;
}

/// The temperature with one of `captions` below it, from the longest to the shortest. Gives where they end.
double paintFigure(TileCanvas& canvas, const WeatherContent& content, double x, double space,
                   const QStringList& captions) {
  const QString& figure = content.reading.temperature;
  const TextStyle style = figureStyle(canvas, figure, space);
  const bool captioned = canvas.showsCaption() && !captions.isEmpty();
  const double baseline =
      captioned ? theme::kHeadlineBaseline : TileCanvas::centredBaseline(canvas.line(figure, style));
  double end = canvas.figure(x, baseline, style, figure, {}, inkOf(canvas, content));
  if (!captioned) return end;
  const TextLine caption = Typography::fitting(captions, TextStyle::Caption, space, Elide::End, canvas.scale());
  caption.draw(canvas.painter(), {x, theme::kCaptionBaseline}, canvas.colors().secondary);
  return std::max(end, x + caption.width());
}

void paintPicture(TileCanvas& canvas, WeatherPicture picture, double x, double size) {
  drawWeather(canvas.painter(), picture, {x, theme::kTileMiddle - size / 2}, size, canvas.colors());
}

/// How old it is, where that is to be told, else the other words.
QStringList captionsOr(const WeatherContent& content, QStringList others) {
  if (!content.reading.age.isEmpty()) return {content.reading.age};
  others.removeAll(QString());
  return others;
}

// --- The weather now ------------------------------------------------------------------------------------------------

bool hasAnything(const WeatherContent&) { return true; }

void paintCurrent(TileCanvas& canvas, const WeatherContent& content) {
  const WeatherReading& reading = content.reading;
  const double lower = canvas.showsCaption() ? 0 : 12;
  drawWeather(canvas.painter(), reading.picture, {theme::kPictureInset, kPictureTop + lower}, kPicture,
              canvas.colors());
  double baseline = theme::kHeadlineBaseline;
  const TextStyle style = figureStyle(canvas, reading.temperature, canvas.width() - kFigureLeft - kFigureLeastRight);
  if (!canvas.showsCaption()) baseline = TileCanvas::centredBaseline(canvas.line(reading.temperature, style));
  canvas.figure(kFigureLeft, baseline, style, reading.temperature, {}, inkOf(canvas, content));
  if (canvas.showsCaption())
    canvas.text(theme::kTextLeft, kPlaceBaseline, canvas.width() - theme::kTextLeft - kFigureLeastRight,
                TextStyle::Caption, reading.age.isEmpty() ? reading.place : reading.age, canvas.colors().secondary);
}

// --- Details --------------------------------------------------------------------------------------------------------

bool hasDetails(const WeatherContent& content) {
  return !content.facts.humidity.isEmpty() || !content.facts.wind.isEmpty();
}

void paintDetails(TileCanvas& canvas, const WeatherContent& content) {
  struct Fact {
    QString symbol;
    TextLine text;
  };
  const WeatherFacts& facts = content.facts;
  QList<Fact> rows;
  double widest = 0;
  for (const auto& [symbol, text] : {std::pair(u"drop"_s, facts.humidity), std::pair(u"wind"_s, facts.windText())}) {
    if (text.isEmpty()) continue;
    rows.append({symbol, canvas.line(text, TextStyle::ListRow)});
    widest = std::max(widest, rows.last().text.width());
  }
  const double left = canvas.width() - theme::kTextRight - widest;
  double space = left - kFactGap - kFactSymbol - kWideTextGap - kWideFigureLeft;
  const QStringList captions = captionsOr(content, {facts.range(), facts.range(true)});
  // Figure and caption come first.
  const bool fits = canvas.line(content.reading.temperature, TextStyle::Title).width() <= space &&
                    (!canvas.showsCaption() || captions.isEmpty() ||
                     canvas.line(captions.last(), TextStyle::Caption).width() <= space);
  if (!fits) {
    rows.clear();
    space = canvas.spaceAfter(kWideFigureLeft);
  }
  paintPicture(canvas, content.reading.picture, theme::kPictureInset, kPicture);
  paintFigure(canvas, content, kWideFigureLeft, space, captions);
  if (!canvas.showsLastRow() && rows.size() > 1) rows.removeFirst();
  for (qsizetype i = 0; i < rows.size(); ++i) {
    const double middle = rows.size() == 1 ? theme::kTileMiddle : kFactMiddles[static_cast<std::size_t>(i)];
    const TextLine& text = rows[i].text;
    text.draw(canvas.painter(), {left, TileCanvas::centredBaseline(text, middle)}, canvas.colors().primary);
    canvas.symbol(rows[i].symbol, {left - kFactGap - kFactSymbol / 2, middle}, kFactSymbol, canvas.accent());
  }
}

QStringList detailWords(const WeatherContent& content) {
  const WeatherFacts& facts = content.facts;
  return {content.reading.temperature, content.reading.condition, facts.range(),
          facts.humidity.isEmpty() ? QString() : TileWords::tr("humidity %1").arg(facts.humidity),
          facts.wind.isEmpty() ? QString() : TileWords::tr("wind %1").arg(facts.windText())};
}

// --- Days -----------------------------------------------------------------------------------------------------------

QList<WeatherFacts::Day> comingDays(const WeatherContent& content, qsizetype most) {
  QList<WeatherFacts::Day> days = content.facts.days;
  if (!days.isEmpty() && days.first().isToday) days.removeFirst();
  return days.first(std::min(days.size(), most));
}

bool hasDays(const WeatherContent& content) { return !comingDays(content, 1).isEmpty(); }

/// As many as have space for their figures.
void paintDays(TileCanvas& canvas, QList<WeatherFacts::Day> days, double left, double right) {
  const auto widest = [&](TextStyle style) {
    double width = 0;
    for (const WeatherFacts::Day& day : days) width = std::max(width, canvas.line(day.highText, style).width());
    return width + kDayGap;
  };
  const auto step = [&] { return (right - left) / static_cast<double>(days.size()); };
  while (days.size() > 1 && widest(TextStyle::Caption) > step()) days.removeLast();
  const TextStyle style = widest(TextStyle::BodyStrong) <= step() ? TextStyle::BodyStrong : TextStyle::Caption;
  const bool named = canvas.showsLastRow();
  const double size = named ? kDayPicture : kBareDayPicture;
  for (qsizetype i = 0; i < days.size(); ++i) {
    const WeatherFacts::Day& day = days[i];
    const double x = left + step() * (static_cast<double>(i) + 0.5);
    drawWeather(canvas.painter(), day.picture, {x - size / 2, named ? kDayPictureTop : kBareDayTop}, size,
                canvas.colors());
    if (named)
      canvas.line(day.name, TextStyle::Caption)
          .elided(step(), Elide::End)
          .drawCentred(canvas.painter(), {x, kDayName}, canvas.colors().secondary);
    canvas.line(day.highText, style).drawCentred(canvas.painter(), {x, kDayFigure}, canvas.colors().primary);
  }
}

void paintForecast(TileCanvas& canvas, const WeatherContent& content) {
  paintDays(canvas, comingDays(content, 4), theme::kPictureInset, canvas.width() - theme::kPictureInset);
}

void paintToday(TileCanvas& canvas, const WeatherContent& content) {
  paintPicture(canvas, content.reading.picture, theme::kPictureInset, kPicture);
  const double end = paintFigure(canvas, content, kWideFigureLeft, kDayDivider - kWideFigureLeft + kWideTextGap,
                                 captionsOr(content, {content.facts.range(), content.facts.range(true)}));
  const double divider = std::max(kDayDivider, end + kWideTextGap);
  canvas.painter().fillRect(
      canvas.snapped(QRectF(divider, theme::kTileMiddle - kDayDividerHeight / 2, 1, kDayDividerHeight)),
      canvas.colors().hairline);
  paintDays(canvas, comingDays(content, 2), divider + 2, canvas.width() - kFigureLeastRight);
}

QStringList dayWords(const QList<WeatherFacts::Day>& days) {
  QStringList words;
  for (const WeatherFacts::Day& day : days)
    words << TileWords::tr("%1 %2, %3 to %4").arg(day.name, day.condition, day.lowText, day.highText);
  return words;
}

QStringList forecastWords(const WeatherContent& content) { return dayWords(comingDays(content, 4)); }

QStringList todayWords(const WeatherContent& content) {
  return temperatureWords(content) + QStringList{content.facts.range()} + dayWords(comingDays(content, 2));
}

// --- The condition --------------------------------------------------------------------------------------------------

bool hasCondition(const WeatherContent& content) { return !content.reading.condition.isEmpty(); }

/// The two rows, as even as can be, of words that have no space in one; one where there is no blank.
QStringList inTwo(const TileCanvas& canvas, const QString& words) {
  QStringList best{words};
  double least = canvas.line(words, TextStyle::BodyStrong).width();
  for (qsizetype blank = words.indexOf(u' '); blank >= 0; blank = words.indexOf(u' ', blank + 1)) {
    const QStringList rows{words.left(blank), words.sliced(blank + 1)};
    const double wide = std::max(canvas.line(rows[0], TextStyle::BodyStrong).width(),
                                 canvas.line(rows[1], TextStyle::BodyStrong).width());
    if (wide >= least) continue;
    least = wide;
    best = rows;
  }
  return best;
}

void paintCondition(TileCanvas& canvas, const WeatherContent& content) {
  const WeatherReading& reading = content.reading;
  const double space = canvas.width() - kStatusText - theme::kTextRight / 2;
  paintPicture(canvas, reading.picture, theme::kPictureInset, kStatusPicture);
  TextLine title = canvas.line(reading.condition, TextStyle::Title);
  // The smallest docks have space for a figure where they would cut a word.
  if (!canvas.showsCaption() && title.width() > space) title = canvas.line(reading.temperature, TextStyle::Headline);
  const QString& beside = reading.age.isEmpty() ? reading.place : reading.age;
  const TextLine caption =
      canvas.line(reading.temperature + u" · "_s + beside, TextStyle::Caption).elided(space, Elide::End);
  if (title.width() <= space || !canvas.showsLastRow()) {
    const TextLine whole = title.elided(space, Elide::End);
    const double baseline = canvas.showsCaption() ? theme::kTitleBaseline : TileCanvas::centredBaseline(whole);
    whole.draw(canvas.painter(), {kStatusText, baseline}, inkOf(canvas, content));
    if (canvas.showsCaption())
      caption.draw(canvas.painter(), {kStatusText, theme::kTitleCaptionBaseline}, canvas.colors().secondary);
    return;
  }
  const QStringList rows = inTwo(canvas, reading.condition);
  for (qsizetype i = 0; i < rows.size(); ++i)
    canvas.text(kStatusText, kStatusRows[static_cast<std::size_t>(i)], space, TextStyle::BodyStrong, rows[i],
                inkOf(canvas, content));
  caption.draw(canvas.painter(), {kStatusText, kStatusRows[static_cast<std::size_t>(rows.size())]},
               canvas.colors().secondary);
}

// --- Hours ----------------------------------------------------------------------------------------------------------

bool hasHours(const WeatherContent& content) { return content.facts.hours.size() >= 4; }

/// How many columns of how many hours there is space for.
struct HourColumns {
  qsizetype step = 1;
  qsizetype count = 0;
};

HourColumns hourColumns(const TileCanvas& canvas, const WeatherContent& content, double width) {
  const qsizetype hours = content.facts.hours.size();
  for (const HourColumns columns : {HourColumns{2, 7}, HourColumns{3, 5}, HourColumns{4, 4}}) {
    if (columns.step * (columns.count - 1) >= hours) continue;
    double widest = 0;
    for (qsizetype i = 0; i < columns.count; ++i) {
      const qsizetype hour = i * columns.step;
      widest = std::max({widest, canvas.line(content.facts.hours[hour].text, TextStyle::Caption).width(),
                         canvas.line(content.hourNames[hour], TextStyle::Caption).width()});
    }
    if (widest + kHourGap <= width / static_cast<double>(columns.count - 1)) return columns;
  }
  // Three columns have space for anything, over as many hours as there are.
  return {std::min<qsizetype>(6, (hours - 1) / 2), 3};
}

void paintHourly(TileCanvas& canvas, const WeatherContent& content) {
  const QRectF box(kHoursInset, kHoursTop, canvas.width() - kHoursInset * 2,
                   (canvas.showsLastRow() ? kHoursFoot : kHoursLowFoot) - kHoursTop);
  const HourColumns columns = hourColumns(canvas, content, box.width());
  const QList<WeatherFacts::Hour>& hours = content.facts.hours;
  QList<double> degrees;
  for (qsizetype i = 0; i <= columns.step * (columns.count - 1); ++i) degrees << hours[i].degrees;
  const double column = box.width() / static_cast<double>(columns.count - 1);
  // In the middle of a column, but for a wide word at an edge.
  const auto write = [&](const QString& text, double x, double baseline, const QColor& ink) {
    const TextLine line = canvas.line(text, TextStyle::Caption);
    const double reach = line.width() / 2 + kHourEdge;
    line.drawCentred(canvas.painter(), {std::clamp(x, reach, canvas.width() - reach), baseline}, ink);
  };
  // Time runs to the right for everyone.
  canvas.unmirrored(box.center().x(), [&] {
    paintHours(canvas.painter(), box, degrees, canvas.colors());
    for (qsizetype i = 0; i < columns.count; ++i) {
      const double x = box.left() + column * static_cast<double>(i);
      const qsizetype hour = i * columns.step;
      write(hours[hour].text, x, kHoursTexts, i == 0 ? canvas.colors().primary : canvas.colors().secondary);
      if (canvas.showsLastRow()) write(content.hourNames[hour], x, kHoursNames, canvas.colors().secondary);
    }
  });
}

QStringList hourlyWords(const WeatherContent& content) {
  QStringList words;
  constexpr qsizetype step = 3;
  for (qsizetype i = 0; i < std::min<qsizetype>(content.facts.hours.size(), step * 4 + 1); i += step)
    words << TileWords::tr("%1: %2").arg(content.hourNames[i], content.facts.hours[i].text);
  return words;
}

// --- Wind -----------------------------------------------------------------------------------------------------------

bool hasWind(const WeatherContent& content) { return !content.facts.wind.isEmpty(); }

void paintWind(TileCanvas& canvas, const WeatherContent& content) {
  const WeatherFacts& facts = content.facts;
  canvas.unmirrored(kRoseMiddle, [&] {
    paintRose(canvas.painter(), {kRoseMiddle, theme::kTileMiddle}, kRoseRadius, facts.windDirection, canvas.colors());
  });
  const QStringList captions = captionsOr(content, {facts.windWords(), facts.windFrom});
  const bool captioned = canvas.showsCaption() && !captions.isEmpty();
  const TextLine figure = canvas.line(facts.wind, TextStyle::Headline);
  canvas.figure(kWindLeft, captioned ? theme::kHeadlineBaseline : TileCanvas::centredBaseline(figure),
                TextStyle::Headline, facts.wind, TileWords::tr("km/h"));
  if (captioned)
    Typography::fitting(captions, TextStyle::Caption, canvas.spaceAfter(kWindLeft), Elide::End, canvas.scale())
        .draw(canvas.painter(), {kWindLeft, theme::kCaptionBaseline}, canvas.colors().secondary);
}

QStringList windFacts(const WeatherContent& content) { return {content.facts.windText(), content.facts.windWords()}; }

// --- The sun --------------------------------------------------------------------------------------------------------

bool hasSun(const WeatherContent& content) { return content.facts.sun.has_value(); }

void paintSun(TileCanvas& canvas, const WeatherContent& content) {
  const WeatherFacts& facts = content.facts;
  const bool timed = canvas.showsLastRow();
  const double foot = timed ? kSunFoot : kSunLowFoot;
  const QRectF box(kSunInset, kSunTop, canvas.width() - kSunInset * 2, foot - kSunTop);
  canvas.unmirrored(box.center().x(), [&] {
    paintSunPath(canvas.painter(), box, facts.sun->shareAt(facts.clock), canvas.colors());
    const TextLine left = canvas.line(facts.sunLeft(), TextStyle::Caption);
    if (left.width() < box.width() * 0.75)
      left.drawCentred(canvas.painter(), {box.center().x(), foot - kSunWord}, canvas.colors().primary);
    if (!timed) return;
    canvas.line(content.rise, TextStyle::Caption)
        .draw(canvas.painter(), {theme::kTextLeft, kSunTimes}, canvas.colors().secondary);
    canvas.line(content.set, TextStyle::Caption)
        .drawRight(canvas.painter(), {canvas.width() - theme::kTextRight, kSunTimes}, canvas.colors().secondary);
  });
}

QStringList sunWords(const WeatherContent& content) {
  return {TileWords::tr("sunrise %1").arg(content.rise), TileWords::tr("sunset %1").arg(content.set),
          content.facts.sunLeft()};
}

}  // namespace

void paintTemperature(TileCanvas& canvas, const WeatherContent& content) {
  paintPicture(canvas, content.reading.picture, theme::kPictureInset, kPicture);
  paintFigure(canvas, content, kWideFigureLeft, canvas.spaceAfter(kWideFigureLeft),
              captionsOr(content, {content.reading.condition, content.reading.place}));
}

QStringList temperatureWords(const WeatherContent& content) {
  return {content.reading.temperature, content.reading.condition};
}

namespace weatherLook {

constinit const WeatherLook current{hasAnything, paintCurrent, temperatureWords};
constinit const WeatherLook details{hasDetails, paintDetails, detailWords};
constinit const WeatherLook condition{hasCondition, paintCondition, temperatureWords};
constinit const WeatherLook forecast{hasDays, paintForecast, forecastWords};
constinit const WeatherLook today{hasDays, paintToday, todayWords};
constinit const WeatherLook hourly{hasHours, paintHourly, hourlyWords};
constinit const WeatherLook wind{hasWind, paintWind, windFacts};
constinit const WeatherLook sun{hasSun, paintSun, sunWords};

}  // namespace weatherLook

}  // namespace tarnwick
