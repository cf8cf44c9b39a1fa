#include "desktop/CompositorDesk.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandQueue.h"

namespace tarnwick::testing {
namespace {

/// To another set of adapters what this one keeps free is a stranger's.
struct Bar final : OtherWindow {
  explicit Bar(int thickness) : panel(panels.make(std::make_unique<QWidget>())) {
    panel->place({.screen = screens.mainId(), .rectangle = QRect(0, 0, 1, 1), .margins = {}});
    panel->reserve(Edge::Bottom, thickness);
    panel->setShown(true);
  }
  WaylandSession session;
  WaylandScreens screens{session};
  WaylandPanels panels{session, screens};
  std::unique_ptr<Panel> panel;
};

}  // namespace

QRect CompositorDesk::display(int number) {
  const QScreen* screen = QGuiApplication::screens().value(number);
  return screen ? screen->geometry() : QRect();
}

void CompositorDesk::settle() {
  const WaylandSession session;
  EXPECT_TRUE(WaylandQueue(session.display()).waitForAnswers());
  QCoreApplication::processEvents();
}

bool CompositorDesk::isPainted(QPoint place) {
  const QScreen* screen = QGuiApplication::screenAt(place);
  if (!screen) return false;
  const QImage picture = screenshot(screen->name());
  const QPoint within = (place - screen->geometry().topLeft()) * screen->devicePixelRatio();
  return picture.valid(within) && picture.pixelColor(within) != picture.pixelColor(5, 5);
}

// Only the compositor knows, and it tells whom the pointer is over.
bool CompositorDesk::takesClicks(QPoint place, QWidget& window) {
  moveTo(place);
  settle();
  return window.underMouse();
}

std::unique_ptr<OtherWindow> CompositorDesk::bar(int thickness) { return std::make_unique<Bar>(thickness); }

}  // namespace tarnwick::testing
