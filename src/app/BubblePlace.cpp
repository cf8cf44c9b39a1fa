#include "app/BubblePlace.h"

#include <algorithm>

#include "dock/DockController.h"
#include "views/dock/MessageBubble.h"

namespace tarnwick {
namespace {

constexpr int kAboveTheDock = 10;

}  // namespace

PanelPlacement bubblePlacement(const MessageBubble& bubble, const DockController& dock, const Screens& screens,
                               int raised, const QString& display) {
  const QStringList displays = dock.displays();
  const QList<Screen> all = screens.all();
  const QString first = displays.isEmpty() ? screens.mainId() : displays.first();
  const QString wanted = displays.contains(display) ? display : first;
  const auto found = std::ranges::find(all, wanted, &Screen::id);
  const Screen& screen = found == all.end() ? all.first() : *found;

  QRectF place = dock.frame(screen.id);
  if (place.isEmpty()) place = QRectF(screen.usable.left(), screen.usable.bottom(), screen.usable.width(), 0);
  const QSize size = bubble.bubbleSize();
  const int away = kAboveTheDock + raised;
  const bool dockIsOnTop = place.center().y() < screen.frame.center().y();
  const double y = dockIsOnTop ? place.bottom() + away : place.top() - away - size.height();
  const QPointF corner = QPointF(place.center().x() - size.width() / 2.0, y) - screen.frame.topLeft();
  return {screen.id, QRect(corner.toPoint(), size), bubble.margins()};
}

Backdrop backdropOf(const Panels& panels) {
  if (!panels.isComposited()) return Backdrop::Opaque;
  return panels.canBlur() ? Backdrop::Blurred : Backdrop::Plain;
}

}  // namespace tarnwick
