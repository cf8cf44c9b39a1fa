#include "app/BubblePlace.h"

#include <algorithm>
#include <array>

#include "dock/DockController.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {
namespace {

constexpr int kAboveTheDock = 10;
constexpr int kBesideAPanel = 8;

void moveInto(const QRect& bounds, QRect& place) {
  place.moveLeft(std::max(bounds.left(), std::min(place.left(), bounds.right() + 1 - place.width())));
  place.moveTop(std::max(bounds.top(), std::min(place.top(), bounds.bottom() + 1 - place.height())));
}

}  // namespace

PanelPlacement bubblePlacement(const MessageBubble& bubble, const BubbleSurroundings& around) {
  const QStringList displays = around.dock.displays();
  const QList<Screen> all = around.screens.all();
  const QString first = displays.isEmpty() ? around.screens.mainId() : displays.first();
  const QString wanted = displays.contains(around.display) ? around.display : first;
  const auto found = std::ranges::find(all, wanted, &Screen::id);
  const Screen& screen = found == all.end() ? all.first() : *found;

  QRectF place = around.dock.frame(screen.id);
  if (place.isEmpty()) place = QRectF(screen.usable.left(), screen.usable.bottom(), screen.usable.width(), 0);
  const QSize size = bubble.bubbleSize();
  const int away = kAboveTheDock + around.raised;
  const bool dockIsOnTop = place.center().y() < screen.frame.center().y();
  const double y = dockIsOnTop ? place.bottom() + away : place.top() - away - size.height();
  QRect rectangle(QPointF(place.center().x() - size.width() / 2.0, y).toPoint(), size);
  QRect bounds = screen.usable.toRect().adjusted(kBesideAPanel, 0, -kBesideAPanel, 0);
  // A floating dock may be in a corner, where the bubble is wider than what is left beside it.
  moveInto(bounds, rectangle);
  const QRect panel = around.panel ? around.panel(screen.id) : QRect();
  if (!panel.isEmpty()) {
    dockIsOnTop ? bounds.setTop(rectangle.top()) : bounds.setBottom(rectangle.bottom());
    rectangle = clearOf(panel, rectangle, bounds);
  }
  return {screen.id, rectangle.translated(-screen.frame.topLeft().toPoint()), bubble.margins()};
}

QRect clearOf(const QRect& taken, const QRect& wanted, const QRect& bounds) {
  const QRect shunned = taken.marginsAdded(QMargins(kBesideAPanel, kBesideAPanel, kBesideAPanel, kBesideAPanel));
  if (!wanted.intersects(shunned)) return wanted;
  QRect left = wanted;
  QRect right = wanted;
  QRect above = wanted;
  QRect below = wanted;
  left.moveRight(shunned.left() - 1);
  right.moveLeft(shunned.right() + 1);
  above.moveBottom(shunned.top() - 1);
  below.moveTop(shunned.bottom() + 1);
  const auto way = [&wanted](const QRect& place) { return (place.topLeft() - wanted.topLeft()).manhattanLength(); };
  std::array places{left, right, above, below};
  std::ranges::stable_sort(places.begin(), places.begin() + 2, {}, way);
  for (const QRect& place : places)
    if (bounds.contains(place)) return place;
  for (QRect& place : places) moveInto(bounds, place);
  const auto covered = [&taken](const QRect& place) {
    const QRect hidden = place & taken;
    return hidden.width() * hidden.height();
  };
  return *std::ranges::min_element(places, {}, covered);
}

Backdrop backdropOf(const Panels& panels) {
  if (!panels.isComposited()) return Backdrop::Opaque;
  return panels.canBlur() ? Backdrop::Blurred : Backdrop::Plain;
}

}  // namespace tarnwick
