#include <linux/input-event-codes.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <utility>

#include "desktop/CompositorDesk.h"
#include "desktop/ForeignProgram.h"
#include "support/HeadlessKWin.h"

namespace tarnwick::testing {
namespace {

class KWinDesk final : public CompositorDesk {
 public:
  void moveTo(QPoint place) override { kwin_.moveTo(place); }
  void button(bool down, Qt::MouseButton which) override {
    kwin_.button(down, which == Qt::RightButton ? BTN_RIGHT : BTN_LEFT);
  }
  void type(const QList<std::uint32_t>& keys, const QList<std::uint32_t>& held) override {
    for (const std::uint32_t code : held) kwin_.key(code, true);
    for (const std::uint32_t code : keys) kwin_.tap(code);
    for (const std::uint32_t code : held) kwin_.key(code, false);
  }
  // The displays of KWin without hardware have no size in inches, by which terminals may divide.
  std::unique_ptr<TestTerminal> terminal() override {
    moveTo(away());
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/pipe_terminal");
    return std::make_unique<TestTerminal>(QStringList{program, TestTerminal::title()});
  }
  Abilities abilities() const override {
    return {.tellsFrames = true,
            .tellsWorkspaces = true,
            .givesKeys = false,
            .tellsHeldKeys = false,
            .tellsAttention = true};
  }
  // KWin opens windows in the middle of the display with the pointer.
  std::unique_ptr<OtherWindow> film() override {
    moveTo(away());
    return std::make_unique<ForeignProgram>(QStringLiteral("film"), QRect(), ForeignProgram::Size::FullScreen);
  }
  void turnToEmpty(bool empty) override {
    if (empty && !std::exchange(hasTwo_, true)) {
      ask(QStringLiteral("/VirtualDesktopManager"), QStringLiteral("org.kde.KWin.VirtualDesktopManager"),
          QStringLiteral("createDesktop"), {1U, QStringLiteral("empty")});
    }
    ask(QStringLiteral("/KWin"), QStringLiteral("org.kde.KWin"), QStringLiteral("setCurrentDesktop"), {empty ? 2 : 1});
  }
  std::unique_ptr<OtherWindow> source(const QString& file) override {
    moveTo(away());
    return std::make_unique<ForeignProgram>(file, QRect());
  }

 protected:
  QImage screenshot(const QString& display) override { return kwin_.screenshot(display); }

 private:
  static void ask(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.kde.KWin"), path, interface, method);
    call.setArguments(arguments);
    QDBusConnection::sessionBus().call(call);
  }

  bool hasTwo_ = false;
  HeadlessKWin& kwin_ = HeadlessKWin::current();
};

}  // namespace

TestDesk& TestDesk::current() {
  static KWinDesk desk;
  return desk;
}

}  // namespace tarnwick::testing
