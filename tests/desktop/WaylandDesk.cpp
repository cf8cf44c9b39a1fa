#include <linux/input-event-codes.h>

#include <QHash>

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

QString nameOf(std::uint32_t code) {
  static const QHash<std::uint32_t, QString> names{
      {KEY_2, u"2"_s},         {KEY_KPPLUS, u"KP_Add"_s}, {KEY_ENTER, u"Return"_s}, {KEY_ESC, u"Escape"_s},
      {KEY_TAB, u"Tab"_s},     {KEY_UP, u"Up"_s},         {KEY_DOWN, u"Down"_s},    {KEY_C, u"c"_s},
      {KEY_Q, u"q"_s},         {KEY_R, u"r"_s},           {KEY_V, u"v"_s},          {KEY_X, u"x"_s},
      {KEY_Z, u"z"_s},         {KEY_A, u"a"_s},           {KEY_D, u"d"_s},          {KEY_LEFTCTRL, u"ctrl"_s},
      {KEY_LEFTALT, u"alt"_s}, {KEY_SPACE, u"space"_s},   {KEY_COMPOSE, u"Menu"_s}, {KEY_END, u"End"_s}};
  return names.value(code);
}

class WaylandDesk final : public CompositorDesk {
 public:
  void moveTo(QPoint place) override { sway_.moveTo(place); }
  void button(bool down, Qt::MouseButton which) override {
    sway_.button(down, which == Qt::RightButton ? BTN_RIGHT : BTN_LEFT);
  }
  // The first key of a new keyboard gets lost.
  void type(const QList<std::uint32_t>& keys, const QList<std::uint32_t>& held) override {
    QStringList arguments{u"-k"_s, u"Shift_L"_s};
    for (const std::uint32_t code : held) arguments << u"-M"_s << nameOf(code);
    for (const std::uint32_t code : keys) arguments << u"-k"_s << nameOf(code);
    for (const std::uint32_t code : held) arguments << u"-m"_s << nameOf(code);
    sway_.type(arguments);
  }
  void write(const QString& text) override { sway_.type({u"-k"_s, u"Shift_L"_s, text}); }
  std::unique_ptr<TestTerminal> terminal() override {
    sway_.order(u"focus output HEADLESS-1"_s);
    return std::make_unique<TestTerminal>(QStringList{u"foot"_s, u"--title"_s, TestTerminal::title(), u"-o"_s,
                                                      u"key-bindings.clipboard-paste=Control+v"_s});
  }
  Abilities abilities() const override {
    return {.tellsFrames = false,
            .tellsWorkspaces = false,
            .givesKeys = false,
            .tellsHeldKeys = false,
            .tellsAttention = false};
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
