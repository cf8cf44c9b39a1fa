#include "views/families/notes/NoteTiles.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/QuickNotes.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kRowBaselines = {20.0, 36.0, 52.0};
constexpr double kCircleX = 18;
constexpr double kCircleRadius = 5.5;
constexpr double kCircleRise = 4;  ///< Of its centre over the baseline.
constexpr double kOpenStroke = 1.4;
constexpr double kTodoLeft = 31;
constexpr double kCircleReach = 9;
constexpr double kCountGap = 8;

constexpr double kBarWidth = 3;
constexpr double kNoteBarHeight = 40;
constexpr double kNoteLeft = 24;
constexpr double kNoteFirst = 28.5;
constexpr double kNoteSecond = 44.5;

void paintCircle(TileCanvas& canvas, QPointF centre, bool done) {
  QPainter& painter = canvas.painter();
  if (!done) {
    painter.setPen(QPen(canvas.colors().tertiary, kOpenStroke));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, kCircleRadius - kOpenStroke / 2, kCircleRadius - kOpenStroke / 2);
    return;
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(canvas.accent());
  painter.drawEllipse(centre, kCircleRadius, kCircleRadius);
  canvas.symbol(u"checkmark"_s, centre, kCircleRadius * 1.5, canvas.colors().inkOnAccent);
}

void paintTodo(TileCanvas& canvas, const TodosContent::Item& item, double baseline, double space) {
  paintCircle(canvas, {kCircleX, baseline - kCircleRise}, item.done);
  const TextLine line = canvas.line(item.text, TextStyle::ListRow).elided(space, Elide::End);
  const QColor ink = item.done ? canvas.colors().tertiary : canvas.colors().primary;
  line.draw(canvas.painter(), {kTodoLeft, baseline}, ink);
  if (item.done)
    canvas.painter().fillRect(canvas.snapped(QRectF(kTodoLeft, baseline - kCircleRise, line.width(), 1)), ink);
}

/// The rows that a tile has space for.
qsizetype rowsFor(double scale, qsizetype items) {
  const qsizetype most = scale >= theme::kCompactScale ? TodosContent::kRows : scale >= theme::kBareScale ? 2 : 1;
  return std::min(most, items);
}

/// A tile with space for fewer rows leaves out what is done first.
qsizetype firstRow(const TodosContent& content, qsizetype rows) {
  return rows < content.items.size() && content.items.first().done ? 1 : 0;
}

double rowBaseline(qsizetype row, qsizetype rows) {
  constexpr double pitch = kRowBaselines[1] - kRowBaselines[0];
  return kRowBaselines[1] + (static_cast<double>(row) - static_cast<double>(rows - 1) / 2) * pitch;
}

/// The text on at most `rows` lines of `width`, broken between words and where the user broke it.
QStringList wrapped(const QString& text, double width, qsizetype rows, const TileCanvas& canvas) {
  QStringList lines;
  const auto fits = [&](const QString& line) { return canvas.line(line, TextStyle::Body).width() <= width; };
  for (const QString& paragraph : text.split(u'\n')) {
    QString line;
    for (const QString& word : paragraph.split(u' ', Qt::SkipEmptyParts)) {
      const QString longer = line.isEmpty() ? word : line + u' ' + word;
      if (line.isEmpty() || lines.size() + 1 >= rows || fits(longer)) {
        line = longer;  // All that is left goes on the last line, which is then elided.
        continue;
      }
      lines.append(line);
      line = word;
    }
    if (line.isEmpty()) continue;
    if (lines.size() == rows) {
      lines.last() += u' ' + line;
    } else {
      lines.append(line);
    }
  }
  return lines;
}

}  // namespace

TodosContent makeTodos(const TileRequest& request) {
  const QList<TodoItem>& todos = request.sources.todos;
  TodosContent content;
  content.total = todos.size();
  content.done = std::ranges::count(todos, true, &TodoItem::completed);
  const auto item = [&](qsizetype i) {
    return TodosContent::Item{QuickNotes::shortened(todos[i].text.simplified()), todos[i].completed,
                              static_cast<int>(i)};
  };
  const qsizetype firstOpen = std::ranges::find(todos, false, &TodoItem::completed) - todos.begin();
  if (firstOpen == todos.size()) {
    for (qsizetype i = std::max<qsizetype>(0, todos.size() - TodosContent::kRows); i < todos.size(); ++i)
      content.items.append(item(i));
    return content;
  }
  if (firstOpen > 0) content.items.append(item(firstOpen - 1));
  for (qsizetype i = firstOpen; i < todos.size() && content.items.size() < TodosContent::kRows; ++i)
    if (!todos[i].completed) content.items.append(item(i));
  return content;
}

TileText describe(const TodosContent& content, const QString& name) {
  if (content.total == 0) return {name, TileWords::tr("Nothing to do")};
  QStringList parts{
      TileWords::tr("%1 of %2 done").arg(LocalFigures::number(content.done), LocalFigures::number(content.total))};
  for (const TodosContent::Item& item : content.items)
    if (!item.done) parts.append(item.text);
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const TodosContent& content) {
  using namespace theme;
  if (content.items.isEmpty()) {
    canvas.symbol(u"checklist"_s, {kTextLeft + kSymbolSize / 2, kTileMiddle}, kSymbolSize, canvas.accent());
    const TextLine words = canvas.line(TileWords::tr("Nothing to do"), TextStyle::Body)
                               .elided(canvas.spaceAfter(kTextAfterSymbol), Elide::End);
    words.draw(canvas.painter(), {kTextAfterSymbol, TileCanvas::centredBaseline(words)}, canvas.colors().secondary);
    return;
  }
  const qsizetype rows = rowsFor(canvas.scale(), content.items.size());
  const qsizetype first = firstRow(content, rows);
  const TextLine count =
      canvas.line(LocalFigures::number(content.done) + u'/' + LocalFigures::number(content.total), TextStyle::Caption);
  for (qsizetype row = 0; row < rows; ++row) {
    const double baseline = rowBaseline(row, rows);
    double space = canvas.spaceAfter(kTodoLeft);
    if (row == 0) {
      space -= count.width() + kCountGap;
      count.drawRight(canvas.painter(), {canvas.width() - kTextRight, baseline}, canvas.colors().secondary);
    }
    paintTodo(canvas, content.items[first + row], baseline, space);
  }
}

std::optional<int> partAt(const TodosContent& content, const TileClick& click) {
  const qsizetype rows = rowsFor(click.scale, content.items.size());
  for (qsizetype row = 0; row < rows; ++row) {
    const QPointF away = click.point - QPointF(kCircleX, rowBaseline(row, rows) - kCircleRise);
    if (std::abs(away.x()) <= kCircleReach && std::abs(away.y()) < (kRowBaselines[1] - kRowBaselines[0]) / 2)
      return content.items[firstRow(content, rows) + row].place;
  }
  return std::nullopt;
}

NoteContent makeNote(const TileRequest& request) {
  return {QuickNotes::shortened(request.widget.options.value(option::text).trimmed())};
}

TileText describe(const NoteContent& content, const QString& name) {
  return {name, content.text.isEmpty() ? TileWords::tr("Nothing written yet") : content.text};
}

void paint(TileCanvas& canvas, const NoteContent& content) {
  using namespace theme;
  const double space = canvas.spaceAfter(kNoteLeft);
  drawRounded(canvas.painter(), QRectF(kTextLeft, kTileMiddle - kNoteBarHeight / 2, kBarWidth, kNoteBarHeight),
              kBarWidth / 2, canvas.accent());
  const qsizetype rows = canvas.showsLastRow() ? 2 : 1;
  QStringList lines = wrapped(content.text, space, rows, canvas);
  const bool empty = lines.isEmpty();
  if (empty) lines.append(TileWords::tr("Write a note…"));
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const TextLine line = canvas.line(lines[i], TextStyle::Body).elided(space, Elide::End);
    const double baseline = lines.size() == 1 ? TileCanvas::centredBaseline(line) : i == 0 ? kNoteFirst : kNoteSecond;
    const QColor& ink = empty ? canvas.colors().tertiary : canvas.colors().primary;
    // What the user wrote begins at the side that it is read from.
    if (!empty && lines[i].isRightToLeft() != canvas.isMirrored())
      line.drawRight(canvas.painter(), {canvas.width() - kTextRight, baseline}, ink);
    else
      line.draw(canvas.painter(), {kNoteLeft, baseline}, ink);
  }
}

LatestNoteContent makeLatestNote(const TileRequest& request) {
  if (const auto& note = request.sources.latestNote) return {note->title, note->text};
  return {request.title(), TileWords::tr("No notes yet")};
}

TileText describe(const LatestNoteContent& content, const QString& name) {
  return {name, content.text.isEmpty() ? content.title : u"%1, %2"_s.arg(content.title, content.text)};
}

void paint(TileCanvas& canvas, const LatestNoteContent& content) {
  using namespace theme;
  canvas.symbol(u"note.text"_s, {kTextLeft + kSymbolSize / 2, kTileMiddle}, kSymbolSize, canvas.accent());
  const double space = canvas.spaceAfter(kTextAfterSymbol);
  const TextLine title = canvas.line(content.title, TextStyle::Title).elided(space, Elide::End);
  const bool captioned = canvas.showsCaption() && !content.text.isEmpty();
  title.draw(canvas.painter(), {kTextAfterSymbol, captioned ? kTitleBaseline : TileCanvas::centredBaseline(title)},
             canvas.colors().primary);
  if (captioned)
    canvas.text(kTextAfterSymbol, kTitleCaptionBaseline, space, TextStyle::Caption, content.text,
                canvas.colors().secondary);
}

}  // namespace tarnwick
