#include "views/families/windows/RunningTiles.h"

#include <QPainterPath>
#include <algorithm>
#include <array>

#include "base/LocalFigures.h"
#include "views/theme/Glass.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString namesOf(const QList<RunningFacts>& apps, qsizetype more = 0) {
  QStringList names;
  for (const RunningFacts& app : apps) names.append(app.name);
  if (more > 0) names.append(TileWords::tr("%1 more").arg(LocalFigures::number(more)));
  return names.isEmpty() ? TileWords::tr("No apps are open") : names.join(u", "_s);
}

/// What a tile of applications shows while none runs.
void paintNone(TileCanvas& canvas, const QString& symbol) {
  const bool words = canvas.showsCaption();
  canvas.symbol(symbol, {canvas.width() / 2, words ? 24 : theme::kTileMiddle}, theme::kSymbolSize,
                canvas.colors().tertiary);
  if (words) canvas.centredText(49, TextStyle::Caption, TileWords::tr("No apps"), canvas.colors().secondary);
}

constexpr double kRowIcon = 34;
constexpr double kRowPitch = 40.5;
constexpr double kRowTop = 11;
constexpr double kRowDotTop = 53.5;
constexpr double kRowCorner = 9;
constexpr qsizetype kRowPlaces = 4;

double rowLeft(qsizetype places, double width) {
  return (width - kRowPitch * static_cast<double>(places - 1) - kRowIcon) / 2;
}

QRectF rowPlace(qsizetype index, qsizetype places, double width) {
  return {rowLeft(places, width) + kRowPitch * static_cast<double>(index), kRowTop, kRowIcon, kRowIcon};
}

qsizetype placesOf(const RunningAppsContent& content) { return content.apps.size() + (content.more > 0 ? 1 : 0); }

struct StackPlace {
  double left;
  double size;
};
constexpr std::array kStackOfOne = {StackPlace{30, 40}};
constexpr std::array kStackOfTwo = {StackPlace{17, 40}, StackPlace{47, 36}};
constexpr std::array kStackOfThree = {StackPlace{14, 40}, StackPlace{38, 34}, StackPlace{58, 28}};
constexpr double kStackWidth = 100;

constexpr QRectF kWindow{10, 13, 54, 38};
constexpr double kWindowCorner = 6;
constexpr double kWindowText = 74;

/// A window as a drawing, for one whose picture cannot be had.
void paintDrawnWindow(TileCanvas& canvas) {
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  constexpr double bar = 9;
  drawRounded(painter, kWindow, kWindowCorner, colors.well);
  painter.save();
  painter.setClipRect(QRectF(kWindow.topLeft(), QSizeF(kWindow.width(), bar)), Qt::IntersectClip);
  drawRounded(painter, kWindow, kWindowCorner, colors.tab);
  painter.restore();
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.secondary);
  for (const double x : {5.0, 9.5}) painter.drawEllipse(kWindow.topLeft() + QPointF(x, bar / 2), 1.4, 1.4);
  const QPointF page = kWindow.topLeft() + QPointF(6, bar + 5);
  drawRounded(painter, QRectF(page, QSizeF(26, 2.5)), 1.25, canvas.accent());
  drawRounded(painter, QRectF(page + QPointF(0, 7.5), QSizeF(40, 2.5)), 1.25, colors.track);
  drawRounded(painter, QRectF(page + QPointF(0, 14), QSizeF(32, 2.5)), 1.25, colors.track);
}

/// As much of it as fits, from its top.
void paintPicture(QPainter& painter, const QImage& image, const Palette& colors) {
  const QSizeF whole = image.size();
  const QSizeF part = kWindow.size().scaled(whole, Qt::KeepAspectRatio);
  QPainterPath outline;
  outline.addRoundedRect(kWindow, kWindowCorner, kWindowCorner);
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setClipPath(outline, Qt::IntersectClip);
  painter.drawImage(kWindow, image, QRectF(QPointF((whole.width() - part.width()) / 2, 0), part));
  painter.restore();
  painter.setPen(QPen(colors.separator, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(outline);
}

}  // namespace

RunningAppsContent makeRunningApps(const TileRequest& request) {
  const QList<RunningFacts>& running = request.sources.running;
  if (running.size() <= kRowPlaces) return {running, 0};
  return {running.mid(0, kRowPlaces - 1), running.size() - (kRowPlaces - 1)};
}

TileText describe(const RunningAppsContent& content, const QString& name) {
  return {name, namesOf(content.apps, content.more)};
}

void paint(TileCanvas& canvas, const RunningAppsContent& content) {
  if (content.apps.isEmpty()) {
    paintNone(canvas, u"macwindow.on.rectangle"_s);
    return;
  }
  const Palette& colors = canvas.colors();
  QPainter& painter = canvas.painter();
  const qsizetype places = placesOf(content);
  for (qsizetype i = 0; i < content.apps.size(); ++i) {
    const RunningFacts& app = content.apps[i];
    const QRectF box = rowPlace(i, places, canvas.width());
    drawAppIcon(canvas, box, app.icon, app.name);
    painter.setPen(Qt::NoPen);
    painter.setBrush(app.front ? colors.accent(Accent::Blue) : colors.secondary);
    painter.drawEllipse(QPointF(box.center().x(), kRowDotTop), theme::kAppDotRadius, theme::kAppDotRadius);
  }
  if (content.more <= 0) return;
  const QRectF box = rowPlace(content.apps.size(), places, canvas.width());
  drawRounded(painter, box, kRowCorner, colors.tab);
  const TextLine count = canvas.line(u'+' + LocalFigures::number(content.more), TextStyle::Title);
  count.drawCentred(painter, {box.center().x(), TileCanvas::centredBaseline(count, box.center().y())}, colors.primary);
}

std::optional<int> partAt(const RunningAppsContent& content, const TileClick& click) {
  for (qsizetype i = 0; i < content.apps.size(); ++i) {
    const QRectF box = rowPlace(i, placesOf(content), click.width);
    if (click.point.x() >= box.left() && click.point.x() <= box.right()) return static_cast<int>(i);
  }
  return std::nullopt;
}

std::optional<TilePart> namedPart(const RunningAppsContent& content, const TileClick& point) {
  const auto part = partAt(content, point);
  if (!part) return std::nullopt;
  return TilePart{*part, content.apps[*part].name, rowPlace(*part, placesOf(content), point.width)};
}

SwitcherContent makeSwitcher(const TileRequest& request) {
  SwitcherContent content{request.sources.running, request.definition.symbol};
  std::ranges::stable_partition(content.apps, &RunningFacts::front);
  content.apps = content.apps.mid(0, static_cast<qsizetype>(kStackOfThree.size()));
  return content;
}

TileText describe(const SwitcherContent& content, const QString& name) { return {name, namesOf(content.apps)}; }

void paint(TileCanvas& canvas, const SwitcherContent& content) {
  if (content.apps.isEmpty()) {
    paintNone(canvas, content.symbol);
    return;
  }
  const auto place = [&content](qsizetype i) {
    const auto index = static_cast<std::size_t>(i);
    if (content.apps.size() == 1) return kStackOfOne[index];
    return content.apps.size() == 2 ? kStackOfTwo[index] : kStackOfThree[index];
  };
  const double shift = (canvas.width() - kStackWidth) / 2;
  for (qsizetype i = content.apps.size() - 1; i >= 0; --i) {
    const auto [left, size] = place(i);
    const QRectF box(left + shift, theme::kTileMiddle - size / 2, size, size);
    drawAppIcon(canvas, box, content.apps[i].icon, content.apps[i].name);
  }
}

PinnedWindowContent makePinnedWindow(const TileRequest& request) {
  const auto& options = request.widget.options;
  return {options.value(option::windowTitle), options.value(option::appName),
          request.sources.readings.pinnedWindows.value(request.widget.id)};
}

TileText describe(const PinnedWindowContent& content, const QString&) { return {content.title, content.app}; }

void paint(TileCanvas& canvas, const PinnedWindowContent& content) {
  using namespace theme;
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  const double space = canvas.spaceAfter(kWindowText);
  const TextLine title = canvas.name(content.title, TextStyle::Title, space);
  const bool alone = title.text().isEmpty();
  painter.save();
  if (alone) painter.translate(canvas.width() / 2 - kWindow.center().x(), 0);
  content.picture.image.isNull() ? paintDrawnWindow(canvas) : paintPicture(painter, content.picture.image, colors);
  painter.restore();

  if (!canvas.showsCaption()) {
    title.draw(painter, {kWindowText, TileCanvas::centredBaseline(title)}, colors.primary);
    return;
  }
  title.draw(painter, {kWindowText, kTitleBaseline}, colors.primary);
  canvas.text(kWindowText, kTitleCaptionBaseline, space, TextStyle::Caption, content.app, colors.secondary);
}

}  // namespace tarnwick
