#include <QList>
#include <QPointF>
#include <QStringList>
#include <optional>

#include "views/families/toggles/TogglesRoom.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/ToggleChoice.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPuckRadius = 16.5;
constexpr double kPitch = 37.3;
constexpr double kPuckSymbol = 18;
constexpr double kPuckRing = 1.5;

struct ToggleMark {
  Toggle toggle = Toggle::WiFi;
  bool on = false;
  bool available = true;
  QString reason;  ///< Why it is not available.

  bool operator==(const ToggleMark&) const = default;
};

struct TogglesContent {
  QList<ToggleMark> marks;

  bool operator==(const TogglesContent&) const = default;
};

QPointF centreOf(qsizetype index, qsizetype count, double width) {
  const double first = (width - kPitch * static_cast<double>(count - 1)) / 2;
  return {first + kPitch * static_cast<double>(index), theme::kTileMiddle};
}

const ToggleMark* markAt(const TogglesContent& content, const TileClick& point) {
  for (qsizetype i = 0; i < content.marks.size(); ++i) {
    const QPointF away = point.point - centreOf(i, content.marks.size(), point.width);
    if (QPointF::dotProduct(away, away) <= kPuckRadius * kPuckRadius) return &content.marks[i];
  }
  return nullptr;
}

TileText describe(const TogglesContent& content, const QString& name) {
  QStringList on;
  QStringList missing;
  for (const ToggleMark& mark : content.marks) {
    const QString toggle = ToggleChoice::name(mark.toggle);
    if (mark.on) on.append(toggle);
    if (!mark.available && !mark.reason.isEmpty()) missing.append(u"%1: %2"_s.arg(toggle, mark.reason));
  }
  if (!on.isEmpty()) missing.prepend(on.join(u", "_s));
  return {name, missing.join(u" · "_s)};
}

/// A switch that this desktop hasn't got is a ring without a disc; what it would be can be read.
void paintMissing(TileCanvas& canvas, Toggle toggle, QPointF centre) {
  const double radius = kPuckRadius - kPuckRing / 2;
  canvas.painter().setBrush(Qt::NoBrush);
  canvas.painter().setPen(QPen(canvas.colors().track, kPuckRing));
  canvas.painter().drawEllipse(centre, radius, radius);
  canvas.symbol(ToggleChoice::symbol(toggle), centre, kPuckSymbol, canvas.colors().secondary);
}

void paint(TileCanvas& canvas, const TogglesContent& content) {
  QPainter& painter = canvas.painter();
  for (qsizetype i = 0; i < content.marks.size(); ++i) {
    const ToggleMark& mark = content.marks[i];
    const QPointF centre = centreOf(i, content.marks.size(), canvas.width());
    if (!mark.available) {
      paintMissing(canvas, mark.toggle, centre);
      continue;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.on ? canvas.accent() : canvas.colors().toggleOff);
    painter.drawEllipse(centre, kPuckRadius, kPuckRadius);
    canvas.symbol(ToggleChoice::symbol(mark.toggle), centre, kPuckSymbol,
                  mark.on ? canvas.colors().inkOnAccent : canvas.colors().primary);
  }
}

/// The switch under a point, unless this desktop hasn't got it.
std::optional<int> partAt(const TogglesContent& content, const TileClick& click) {
  const ToggleMark* mark = markAt(content, click);
  return mark && mark->available ? std::optional(static_cast<int>(mark->toggle)) : std::nullopt;
}

/// The same with those that it hasn't got, which say why.
std::optional<TilePart> namedPart(const TogglesContent& content, const TileClick& point) {
  const ToggleMark* mark = markAt(content, point);
  if (!mark) return std::nullopt;
  const QPointF centre = centreOf(mark - content.marks.constData(), content.marks.size(), point.width);
  const QString name = ToggleChoice::name(mark->toggle);
  return TilePart{static_cast<int>(mark->toggle),
                  mark->available || mark->reason.isEmpty() ? name : u"%1: %2"_s.arg(name, mark->reason),
                  QRectF(centre - QPointF(kPuckRadius, kPuckRadius), QSizeF(kPuckRadius, kPuckRadius) * 2)};
}

}  // namespace

TileContent makeToggles(const TileRequest& request) {
  TogglesContent content;
  for (const Toggle toggle : ToggleChoice::of(request.widget.options.value(ToggleChoice::key()))) {
    const auto state = request.sources.toggles.constFind(toggle);
    const bool known = state != request.sources.toggles.constEnd();
    content.marks.append({toggle, known && state->on, known && state->capability.available,
                          known ? state->capability.reason : QString()});
  }
  return content;
}

}  // namespace tarnwick
