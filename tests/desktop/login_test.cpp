// The program and the window manager are started together when somebody logs in, and either may be the first.
#include <gtest/gtest.h>
#include <signal.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <map>

#include "config/Persistence.h"
#include "desktop/Program.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using tarnwick::testing::Program;
using tarnwick::testing::VirtualDisplay;

/// A window manager that is just coming up: requests to map windows reach it, and it loses the first ones of each.
class BusyManager {
 public:
  enum class Answer { Shows, Minimises, Keeps };

  explicit BusyManager(int loses)
      : loses_(loses), connection_(xcb_connect(display_.name().toLatin1().constData(), nullptr)) {
    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(connection_, display_.root(), XCB_CW_EVENT_MASK, &mask);
    sync();
  }
  ~BusyManager() {
    announce({});
    xcb_disconnect(connection_);
  }

  void answer(xcb_window_t window, Answer how) { answers_[window] = how; }
  /// How often a window was asked for up to now.
  int requests(xcb_window_t window) {
    work();
    return requests_[window];
  }
  QList<xcb_window_t> shown() {
    work();
    QList<xcb_window_t> windows;
    for (const auto& [window, count] : requests_) {
      if (isMapped(window)) windows << window;
    }
    return windows;
  }
  bool isMapped(xcb_window_t window) {
    work();
    const auto cookie = xcb_get_window_attributes(connection_, window);
    const std::unique_ptr<xcb_get_window_attributes_reply_t, decltype(&std::free)> reply(
        xcb_get_window_attributes_reply(connection_, cookie, nullptr), &std::free);
    return reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
  }
  void unmap(xcb_window_t window) { xcb_unmap_window(connection_, window); }
  /// What it says that it looks after. As a new one, another has taken its place.
  void announce(const QList<quint32>& clients, bool asNew = false) {
    setWords(display_.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, clients);
    if (asNew) setWords(display_.root(), "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {display_.root()});
    sync();
  }

 private:
  void work() {
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
      const quint8 kind = event->response_type & 0x7f;
      if (kind == XCB_MAP_REQUEST) manage(reinterpret_cast<xcb_map_request_event_t*>(event)->window);
      if (kind == XCB_CONFIGURE_REQUEST) place(*reinterpret_cast<xcb_configure_request_event_t*>(event));
      std::free(event);
    }
    sync();
  }
  void manage(xcb_window_t window) {
    const Answer how = answers_.contains(window) ? answers_[window] : Answer::Shows;
    if (++requests_[window] <= loses_ && how == Answer::Shows) return;
    if (how == Answer::Minimises) setWords(window, "WM_STATE", display_.atom("WM_STATE"), {3, XCB_WINDOW_NONE});
    if (how == Answer::Keeps) announce({window});
    if (how == Answer::Shows) xcb_map_window(connection_, window);
  }
  /// Until the server has processed all requests.
  void sync() { std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)); }
  void place(const xcb_configure_request_event_t& request) {
    const qint32 values[] = {request.x, request.y, request.width, request.height};
    constexpr quint16 kPlace =
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    xcb_configure_window(connection_, request.window, kPlace, values);
  }
  void setWords(xcb_window_t window, const char* property, xcb_atom_t type, const QList<quint32>& words) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, display_.atom(property), type, 32,
                        static_cast<quint32>(words.size()), words.constData());
  }

  VirtualDisplay& display_ = VirtualDisplay::current();
  int loses_;
  xcb_connection_t* connection_;
  std::map<xcb_window_t, Answer> answers_;
  std::map<xcb_window_t, int> requests_;
};

TEST(Login, TheDockComesThoughTheWindowManagerLosesItsFirstRequests) {
  BusyManager manager(2);
  QTemporaryDir home;
  DockConfiguration config;
  config.onboardingComplete = true;
  Persistence::save(config, home.filePath(u"Tarnwick/config.json"_s));
  Program program(home.path());
  const VirtualDisplay& display = VirtualDisplay::current();
  const QList<quint32> dock{display.atom("_NET_WM_WINDOW_TYPE_DOCK")};
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    return std::ranges::any_of(
        manager.shown(), [&](xcb_window_t window) { return display.words(window, "_NET_WM_WINDOW_TYPE") == dock; });
  }));
  program.signal(SIGTERM);
  EXPECT_EQ(program.end(), 0);
}

/// Windows of this process, which has the adapters that the program has.
class LoginWindows : public ::testing::Test {
 protected:
  static xcb_window_t show(QWidget& window) {
    window.resize(200, 100);
    window.winId();
    window.show();
    return static_cast<xcb_window_t>(window.winId());
  }
  bool comes(xcb_window_t window) {
    return VirtualDisplay::waitUntil([&] { return manager.isMapped(window); });
  }

  BusyManager manager{1};
  X11Events events;
};

TEST_F(LoginWindows, AllThatAreToBeSeenAreAskedForAgainAndNoOthers) {
  QWidget minimised;
  QWidget kept;
  QWidget hidden;
  minimised.winId();
  kept.winId();
  manager.answer(static_cast<xcb_window_t>(minimised.winId()), BusyManager::Answer::Minimises);
  manager.answer(static_cast<xcb_window_t>(kept.winId()), BusyManager::Answer::Keeps);
  const xcb_window_t first = show(minimised);
  const xcb_window_t second = show(kept);
  const xcb_window_t third = show(hidden);
  hidden.hide();
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return manager.requests(first) == 1 && manager.requests(second) == 1; }));

  X11Screens screens(events);
  X11Panels panels(events, screens);
  auto content = std::make_unique<QWidget>();
  QWidget& inside = *content;
  const auto panel = panels.make(std::move(content));
  panel->place({.screen = screens.mainId(), .rectangle = QRect(100, 700, 400, 60), .margins = {}});
  panel->setShown(true);
  QWidget window;
  const xcb_window_t fourth = show(window);
  EXPECT_TRUE(comes(fourth));
  EXPECT_TRUE(comes(static_cast<xcb_window_t>(inside.winId())));
  EXPECT_EQ(manager.requests(first), 1) << "what is minimised";
  EXPECT_EQ(manager.requests(second), 1) << "what the window manager keeps elsewhere";
  EXPECT_EQ(manager.requests(third), 1) << "what was hidden again";
}

TEST_F(LoginWindows, AreAskedForAnewWhenAnotherWindowManagerTakesOver) {
  QWidget window;
  const xcb_window_t id = show(window);
  ASSERT_TRUE(comes(id));
  manager.announce({id});
  manager.unmap(id);
  // The look that follows the one by which the window came is over when this is: timers run in the order of their ends.
  bool isOver = false;
  QTimer::singleShot(1000, &window, [&] { isOver = true; });
  ASSERT_TRUE(VirtualDisplay::waitUntil([&] { return isOver; }));
  manager.announce({});
  const int before = manager.requests(id);
  manager.announce({}, true);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return manager.requests(id) > before; }));
  EXPECT_TRUE(comes(id));
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  using tarnwick::testing::VirtualDisplay;
  const VirtualDisplay::Options options{.size = {1600, 900}, .windowManager = false};
  return VirtualDisplay::run(argc, argv, options, [](int& count, char** arguments) {
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    const tarnwick::testing::SessionBus bus;
    return RUN_ALL_TESTS();
  });
}
