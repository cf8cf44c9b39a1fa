#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QApplication>

#include "desktop/ForeignProgram.h"
#include "desktop/TestDesk.h"
#include "support/ForeignWindow.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

constexpr QRect kWhole(0, 0, 1600, 900);
constexpr QRect kLeft(0, 0, 1000, 900);
constexpr QRect kRight(1000, 0, 600, 900);

struct Foreign final : OtherWindow {
  explicit Foreign(const QRect& frame) : window(VirtualDisplay::current(), frame) {}
  ForeignWindow window;
};

class X11Desk final : public TestDesk {
 public:
  void showTwo() override {
    if (isTwo_) return;
    screen_.setMonitor(u"L"_s, kLeft, u"screen"_s);
    screen_.setMonitor(u"R"_s, kRight, u"none"_s);
    isTwo_ = true;
  }
  void showOne() override {
    if (!isTwo_) return;
    screen_.deleteMonitor(u"R"_s);
    screen_.deleteMonitor(u"L"_s);
    isTwo_ = false;
  }
  QRect display(int number) override {
    if (!isTwo_) return kWhole;
    return number == 0 ? kLeft : kRight;
  }
  QPoint away() const override { return {800, 300}; }

  void moveTo(QPoint place) override { screen_.moveTo(place); }
  void button(bool down, Qt::MouseButton which) override {
    screen_.button(which == Qt::RightButton ? XCB_BUTTON_INDEX_3 : XCB_BUTTON_INDEX_1, down);
  }
  void type(const QList<std::uint32_t>& keys, const QList<std::uint32_t>& held) override {
    QList<quint8> modifiers;
    for (const std::uint32_t code : held) modifiers << fromKernel(code);
    for (const std::uint32_t code : keys) screen_.tap(fromKernel(code), modifiers);
  }
  std::unique_ptr<TestTerminal> terminal() override {
    return std::make_unique<TestTerminal>(
        QStringList{u"xterm"_s, u"-T"_s, TestTerminal::title(), u"-geometry"_s, u"80x24+500+150"_s, u"-xrm"_s,
                    u"*VT100.translations: #override Ctrl<Key>v: insert-selection(CLIPBOARD)"_s, u"-e"_s});
  }
  bool passesClicksOn() const override { return true; }
  void settle() override { screen_.settle(); }

  bool isPainted(QPoint place) override {
    const QImage picture = screen_.screenshot();
    return picture.pixelColor(place) != picture.pixelColor(5, 5);
  }
  bool takesClicks(QPoint place, QWidget& window) override { return QApplication::topLevelAt(place) == &window; }

  std::unique_ptr<OtherWindow> bar(int thickness) override {
    const QRect place(0, kWhole.height() - thickness, kLeft.width(), thickness);
    auto bar = std::make_unique<Foreign>(place);
    bar->window.setWords("_NET_WM_WINDOW_TYPE", "ATOM", {screen_.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    bar->window.setWords(
        "_NET_WM_STRUT_PARTIAL", "CARDINAL",
        {0, 0, 0, static_cast<quint32>(thickness), 0, 0, 0, 0, 0, 0, 0, static_cast<quint32>(kLeft.width()) - 1});
    bar->window.show();
    return bar;
  }
  std::unique_ptr<OtherWindow> film() override {
    auto film = std::make_unique<Foreign>(QRect(100, 100, 300, 200));
    film->window.setWords("_NET_WM_DESKTOP", "CARDINAL", {0});  // Said by it, no window manager has to guess.
    film->window.show();
    film->window.addState("_NET_WM_STATE_FULLSCREEN");
    return film;
  }
  void turnToEmpty(bool empty) override {
    EXPECT_TRUE(screen_.execute({u"xdotool"_s, u"set_desktop"_s, empty ? u"1"_s : u"0"_s}));
  }
  std::unique_ptr<OtherWindow> source(const QString& file) override {
    return std::make_unique<ForeignProgram>(file, QRect(away() - QPoint(100, 100), QSize(200, 200)));
  }

 private:
  static quint8 fromKernel(std::uint32_t code) { return static_cast<quint8>(code + 8); }

  VirtualDisplay& screen_ = VirtualDisplay::current();
  bool isTwo_ = false;
};

}  // namespace

TestDesk& TestDesk::current() {
  static X11Desk desk;
  return desk;
}

}  // namespace tarnwick::testing
