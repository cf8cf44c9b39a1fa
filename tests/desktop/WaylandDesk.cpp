#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "desktop/ForeignProgram.h"
#include "desktop/TestDesk.h"
#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandQueue.h"
#include "support/HeadlessSway.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

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

struct Film final : OtherWindow {
  Film() {
    HeadlessSway& sway = HeadlessSway::current();
    sway.order(u"focus output HEADLESS-1"_s);
    terminal = sway.terminal(u"film"_s);
    sway.order(u"[app_id=film] fullscreen enable"_s);
  }
  std::unique_ptr<ChildProcess> terminal;
};

class WaylandDesk final : public TestDesk {
 public:
  void showTwo() override {}
  void showOne() override {}
  QRect display(int number) override {
    const QScreen* screen = QGuiApplication::screens().value(number);
    return screen ? screen->geometry() : QRect();
  }
  QPoint away() const override { return {640, 300}; }

  void moveTo(QPoint place) override { sway_.moveTo(place); }
  void button(bool down, Qt::MouseButton which) override {
    sway_.button(down, which == Qt::RightButton ? BTN_RIGHT : BTN_LEFT);
  }
  void settle() override {
    const WaylandSession session;
    EXPECT_TRUE(WaylandQueue(session.display()).waitForAnswers());
    QCoreApplication::processEvents();
  }

  bool isPainted(QPoint place) override {
    const QScreen* screen = QGuiApplication::screenAt(place);
    if (!screen) return false;
    const QImage picture = sway_.screenshot(screen->name());
    const QPoint within = (place - screen->geometry().topLeft()) * screen->devicePixelRatio();
    return picture.valid(within) && picture.pixelColor(within) != picture.pixelColor(5, 5);
  }
  // Only the compositor knows, and it tells whom the pointer is over.
  bool takesClicks(QPoint place, QWidget& window) override {
    moveTo(place);
    settle();
    return window.underMouse();
  }

  std::unique_ptr<OtherWindow> bar(int thickness) override { return std::make_unique<Bar>(thickness); }
  std::unique_ptr<OtherWindow> film() override { return std::make_unique<Film>(); }
  std::unique_ptr<OtherWindow> source(const QString& file) override {
    sway_.order(u"focus output HEADLESS-1"_s);
    return std::make_unique<ForeignProgram>(file, QRect());
  }

 private:
  HeadlessSway& sway_ = HeadlessSway::current();
};

}  // namespace

TestDesk& TestDesk::current() {
  static WaylandDesk desk;
  return desk;
}

}  // namespace tarnwick::testing
