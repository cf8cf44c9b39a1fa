#include <linux/input-event-codes.h>

#include "desktop/CompositorDesk.h"
#include "desktop/ForeignProgram.h"
#include "support/HeadlessSway.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

struct Film final : OtherWindow {
  Film() {
    HeadlessSway& sway = HeadlessSway::current();
    sway.order(u"focus output HEADLESS-1"_s);
    terminal = sway.terminal(u"film"_s);
    sway.order(u"[app_id=film] fullscreen enable"_s);
  }
  std::unique_ptr<ChildProcess> terminal;
};

class WaylandDesk final : public CompositorDesk {
 public:
  void moveTo(QPoint place) override { sway_.moveTo(place); }
  void button(bool down, Qt::MouseButton which) override {
    sway_.button(down, which == Qt::RightButton ? BTN_RIGHT : BTN_LEFT);
  }
  std::unique_ptr<OtherWindow> film() override { return std::make_unique<Film>(); }
  void turnToEmpty(bool empty) override {
    sway_.order(u"focus output HEADLESS-1"_s);
    sway_.order(empty ? u"workspace empty"_s : u"workspace back_and_forth"_s);
  }
  std::unique_ptr<OtherWindow> source(const QString& file) override {
    sway_.order(u"focus output HEADLESS-1"_s);
    return std::make_unique<ForeignProgram>(file, QRect());
  }

 protected:
  QImage screenshot(const QString& display) override { return sway_.screenshot(display); }

 private:
  HeadlessSway& sway_ = HeadlessSway::current();
};

}  // namespace

TestDesk& TestDesk::current() {
  static WaylandDesk desk;
  return desk;
}

}  // namespace tarnwick::testing
