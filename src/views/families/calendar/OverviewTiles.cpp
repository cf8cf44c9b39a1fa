#include "views/families/calendar/OverviewTiles.h"

#include <algorithm>

#include "views/families/calendar/CalendarTiles.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kCell = 70;
constexpr double kCellDivider = 74;
constexpr double kCellDividerHeight = 32;
constexpr double kAfterDivider = 12;
constexpr double kSymbolGap = 5;

/// Where cells begin and where the lines between them are.
struct Cells {
  QList<double> lefts;
  QList<double> dividers;
};

/// At their usual places, or, where a word has no space then, with equal gaps between the words.
Cells cellsOf(const TileCanvas& canvas, const OverviewContent& content) {
  Cells usual;
  Cells close;
  double words = 0;
  bool fits = true;
  const double end = canvas.width() - theme::kPictureInset;
  const qsizetype count = content.figures.size();
  QList<double> widths;
  for (qsizetype i = 0; i < count; ++i) {
    const double divider = kCellDivider + kCell * static_cast<double>(i - 1);
    usual.lefts << (i == 0 ? theme::kTextLeft : divider + kAfterDivider);
    if (i > 0) usual.dividers << divider;
    widths << canvas.line(content.figures[i].label, TextStyle::Caption).width();
    words += widths.last();
    fits = fits && usual.lefts.last() + widths.last() <= (i + 1 < count ? divider + kCell - 2 : end);
  }
  if (fits || count < 2 || !canvas.showsCaption()) return usual;
  const double gap = (end - theme::kTextLeft - words) / static_cast<double>(count - 1);
  double x = theme::kTextLeft;
  for (qsizetype i = 0; i < count; ++i) {
    close.lefts << x;
    if (i > 0) close.dividers << x - gap / 2;
    x += widths[i] + gap;
  }
  return close;
}

}  // namespace

OverviewContent makeTodayOverview(const TileRequest& request) {
  const TileSources& sources = request.sources;
  const CalendarDigest& digest = digestOf(sources);
  const auto figure = [&](qint64 count, const QString& symbol, const QString& one, const QString& many) {
    return OverviewContent::Figure{sources.locale.toString(count), count == 1 ? one : many, symbol};
  };
  OverviewContent content;
  if (request.sources.calendar && digest.calendarMessage.isEmpty())
    content.figures << figure(digest.today.size(), u"calendar"_s, TileWords::tr("Event"), TileWords::tr("Events"));
  content.figures << figure(std::ranges::count(sources.todos, false, &TodoItem::completed), u"checkmark.square"_s,
                            TileWords::tr("To-do"), TileWords::tr("To-dos"));
  if (sources.calendar && digest.reminderMessage.isEmpty())
    content.figures << figure(digest.dueToday.size(), u"checklist"_s, TileWords::tr("Reminder"),
                              TileWords::tr("Reminders"));
  return content;
}

TileText describe(const OverviewContent& content, const QString& name) {
  QStringList parts;
  for (const OverviewContent::Figure& figure : content.figures) parts << figure.figure + u' ' + figure.label;
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const OverviewContent& content) {
  using namespace theme;
  const Cells cells = cellsOf(canvas, content);
  for (const double divider : cells.dividers)
    canvas.painter().fillRect(
        canvas.snapped(QRectF(divider, kTileMiddle - kCellDividerHeight / 2, 1, kCellDividerHeight)),
        canvas.colors().hairline);
  for (qsizetype i = 0; i < content.figures.size(); ++i) {
    const OverviewContent::Figure& cell = content.figures[i];
    const TextLine figure = canvas.line(cell.figure, TextStyle::Headline);
    const double x = cells.lefts[i];
    if (!canvas.showsCaption()) {
      // Figures alone would not say of what.
      canvas.symbol(cell.symbol, {x + kSymbolSize / 2, kTileMiddle}, kSymbolSize, canvas.accent());
      figure.drawFromInk(canvas.painter(), {x + kSymbolSize + kSymbolGap, TileCanvas::centredBaseline(figure)},
                         canvas.colors().primary);
      continue;
    }
    figure.drawFromInk(canvas.painter(), {x, kHeadlineBaseline}, canvas.colors().primary);
    const double end = i < cells.dividers.size() ? cells.dividers[i] - 2 : canvas.width() - kPictureInset;
    canvas.text(x, kCaptionBaseline, end - x, TextStyle::Caption, cell.label, canvas.colors().secondary);
  }
}

}  // namespace tarnwick
