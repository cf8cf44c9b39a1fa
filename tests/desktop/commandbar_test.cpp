// The command bar over windows of other programs, on every window system alike: where it opens, which keys it takes,
// and to whom the keyboard and the click that closes it belong.
#include <linux/input-event-codes.h>

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QUrl>
#include <algorithm>

#include "app/CommandBarHost.h"
#include "desktop/ShellTest.h"
#include "desktop/TestTerminal.h"
#include "platform_dbus/FakeService.h"
#include "views/commandbar/CommandBarPane.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

class CommandBarScenario : public ShellTest {
 protected:
  ~CommandBarScenario() override {
    if (!entry.isEmpty()) QFile::remove(entry);
  }

  /// An app whose name nothing else has.
  void installApp() {
    const QString home = qEnvironmentVariable("HOME") + u"/.local/share"_s;
    const QString place = qEnvironmentVariable("XDG_DATA_HOME", home) + u"/applications"_s;
    ASSERT_TRUE(QDir().mkpath(place));
    entry = place + u"/zqx.desktop"_s;
    QFile file(entry);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=Zqx\nExec=true\n");
  }

  CommandBarHost& bar() { return delegate->commandBar(); }
  /// By its key where nobody must confirm it, else as a second copy of the program asks for it.
  void call() {
    if (adapters->services().hotKeys.unasked()) {
      desk.type({KEY_SPACE}, {KEY_LEFTALT});
    } else {
      Q_EMIT adapters->session().actionRequested(u"command-bar"_s, {});
    }
  }
  bool opens() {
    call();
    return comesTrue([&] { return bar().pane() && bar().pane()->isActiveWindow(); });
  }
  /// Waits until it is hidden and the keyboard is with whoever has it then.
  bool closes() {
    const bool closed = comesTrue([&] { return !bar().isShown(); });
    desk.settle();
    return closed;
  }
  std::unique_ptr<TestTerminal> focusedTerminal() {
    auto terminal = desk.terminal();
    EXPECT_TRUE(comesTrue([&] {
      const QList<ClientWindow> all = adapters->services().windows.all();
      return std::ranges::any_of(
          all, [](const ClientWindow& each) { return each.active && each.title == TestTerminal::title(); });
    }));
    return terminal;
  }
  /// The glass without its list.
  QRect field() {
    const CommandBarPane* pane = bar().pane();
    const QRect glass = pane->window()->geometry().marginsRemoved(pane->margins());
    return {glass.topLeft(), QSize(glass.width(), 58)};
  }

  QString entry;
};

TEST_F(CommandBarScenario, TakesTheKeyboardAndGivesItBackHoweverItIsClosed) {
  start(DockConfiguration());
  const auto terminal = focusedTerminal();
  ASSERT_TRUE(opens());
  desk.type({KEY_2, KEY_KPPLUS, KEY_2});
  ASSERT_TRUE(comesTrue([&] { return bar().model()->query() == u"2+2"_s; }));
  desk.type({KEY_ENTER});
  ASSERT_TRUE(closes());
  desk.type({KEY_V}, {KEY_LEFTCTRL});
  EXPECT_TRUE(comesTrue([&] { return terminal->typed() == "4"; })) << terminal->typed().constData();

  const struct {
    const char* name;
    std::function<void()> close;
  } ways[] = {{"Escape", [&] { desk.type({KEY_ESC}); }},
              {"a second call", [&] { call(); }},
              {"a click on the terminal", [&] { desk.click(desk.away() - QPoint(0, 100)); }}};
  QByteArray typed = "4";
  for (const auto& [name, close] : ways) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(opens());
    close();
    ASSERT_TRUE(closes());
    desk.type({KEY_Q});
    typed += 'q';
    EXPECT_TRUE(comesTrue([&] { return terminal->typed() == typed; })) << terminal->typed().constData();
  }
  // A window manager may hold a click back for a while, and no key.
  EXPECT_TRUE(comesTrue([&] { return terminal->clicks() == (desk.passesClicksOn() ? 1 : 0); }));
}

TEST_F(CommandBarScenario, TakesTheKeyboardFromAPanelThatIsOpen) {
  DockConfiguration config;
  config.clipboardEnabled = true;
  config.profiles[0].widgets = {DockWidget{QUuid::createUuid(), QString(kind::clipboard), {}, {}}};
  startShown(config);
  desk.click(tile(0).center());
  ASSERT_TRUE(comesTrue([&] { return isOpen(); }));
  ASSERT_TRUE(opens());
  EXPECT_TRUE(comesTrue([&] { return !isOpen(); }));
  desk.type({KEY_2});
  EXPECT_TRUE(comesTrue([&] { return bar().model()->query() == u"2"_s; }));
  desk.type({KEY_ESC});
  EXPECT_TRUE(closes());
}

TEST_F(CommandBarScenario, ItsKeysChooseCopyAndReveal) {
  installApp();
  FakeService manager(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"file manager"_s),
                      u"org.freedesktop.FileManager1"_s);
  QStringList revealed;
  manager.answer(u"ShowItems"_s, [&](const QDBusMessage& message) {
    revealed += message.arguments().value(0).toStringList();
    return QVariantList();
  });
  start(DockConfiguration());
  const auto terminal = focusedTerminal();
  ASSERT_TRUE(opens());
  desk.type({KEY_Z, KEY_Q, KEY_X});
  const auto chosen = [&] { return bar().model()->selection(); };
  ASSERT_TRUE(comesTrue([&] { return bar().model()->results().value(0).path == entry; }));
  const auto last = static_cast<int>(bar().model()->results().size()) - 1;
  ASSERT_GT(last, 0);
  const struct {
    std::uint32_t key;
    int row;
  } moves[] = {{KEY_DOWN, 1}, {KEY_UP, 0}, {KEY_TAB, 1}, {KEY_UP, 0}};
  for (const auto& [key, row] : moves) {
    desk.type({key});
    EXPECT_TRUE(comesTrue([&, row = row] { return chosen() == row; })) << key;
  }
  desk.type({KEY_C}, {KEY_LEFTCTRL});
  desk.type({KEY_R}, {KEY_LEFTCTRL});
  ASSERT_TRUE(closes());
  EXPECT_TRUE(comesTrue([&] { return !revealed.isEmpty(); }));
  EXPECT_EQ(revealed, QStringList(QUrl::fromLocalFile(entry).toString()));
  desk.type({KEY_V}, {KEY_LEFTCTRL});
  EXPECT_TRUE(comesTrue([&] { return terminal->typed() == entry.toUtf8(); })) << terminal->typed().constData();
}

TEST_F(CommandBarScenario, OpensOnTheDisplayThatIsInUseAndOverAFullScreenWindow) {
  desk.showTwo();
  start(DockConfiguration());
  for (const int number : {1, 0}) {
    SCOPED_TRACE(number);
    const QRect display = desk.display(number);
    desk.click(display.center() - QPoint(0, display.height() / 4));
    desk.settle();
    ASSERT_TRUE(opens());
    EXPECT_NEAR(field().top(), display.top() + display.height() / 3.0, 1);
    EXPECT_NEAR(field().center().x(), display.center().x(), 1);
    EXPECT_TRUE(comesTrue([&] { return isPainted(field().center()); }));
    desk.type({KEY_ESC});
    ASSERT_TRUE(closes());
  }
  const auto film = desk.film();
  ASSERT_TRUE(comesTrue([&] {
    const QList<ClientWindow> all = adapters->services().windows.all();
    return std::ranges::any_of(all, &ClientWindow::fullscreen);
  }));
  const auto seen = [&] { return desk.isPainted({field().right() - 40, field().center().y()}); };
  ASSERT_TRUE(opens());
  EXPECT_TRUE(comesTrue(seen));
  desk.type({KEY_ESC});
  EXPECT_TRUE(closes());
}

}  // namespace
}  // namespace tarnwick::testing
