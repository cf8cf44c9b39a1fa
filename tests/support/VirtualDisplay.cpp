#include "support/VirtualDisplay.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xtest.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <array>
#include <cstring>
#include <stdexcept>
#include <string>

namespace tarnwick::testing {
namespace {

constexpr qint64 kDeadline = 30'000;
constexpr int kLookAgain = 5;

VirtualDisplay* currentDisplay = nullptr;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

template <typename T>
Reply<T> reply(T* answer) {
  return Reply<T>(answer);
}

// openbox keeps these for itself by default and would take keys that tests want.
constexpr const char* kWindowManagerSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <placement><policy>Smart</policy></placement>
  <desktops><number>2</number></desktops>
  <keyboard/>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

}  // namespace

VirtualDisplay::VirtualDisplay(const Options& options) {
  currentDisplay = this;
  qputenv("HOME", folder_.path().toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
  qputenv("QT_QPA_PLATFORM", "xcb");
  qunsetenv("WAYLAND_DISPLAY");
  qputenv("QT_XCB_NO_MITSHM", "1");
  startServer(options.size);
  connectToServer();
  if (options.windowManager) startWindowManager();
  if (options.compositor) startCompositor();
}

VirtualDisplay::~VirtualDisplay() {
  compositor_.reset();
  windowManager_.reset();
  if (connection_) xcb_disconnect(connection_);
  server_.reset();
  currentDisplay = nullptr;
}

VirtualDisplay& VirtualDisplay::current() { return *currentDisplay; }

int VirtualDisplay::run(int argc, char** argv, const Options& options,
                        const std::function<int(int&, char**)>& application) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const VirtualDisplay display(options);
  return application(argc, argv);
}

void VirtualDisplay::startServer(const QSize& size) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const QString geometry = QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height());
  const QStringList command{QStringLiteral("Xvfb"),      QStringLiteral("-displayfd"), QString::number(ends[1]),
                            QStringLiteral("-screen"),   QStringLiteral("0"),          geometry,
                            QStringLiteral("-nolisten"), QStringLiteral("tcp"),        QStringLiteral("-noreset")};
  server_ = ChildProcess::start(command, ends[1]);
  ::close(ends[1]);
  // The server writes its number once it takes connections.
  std::string number;
  pollfd waiting{.fd = ends[0], .events = POLLIN, .revents = 0};
  while (number.find('\n') == std::string::npos && poll(&waiting, 1, static_cast<int>(kDeadline)) > 0) {
    std::array<char, 16> buffer{};
    const ssize_t count = read(ends[0], buffer.data(), buffer.size());
    if (count <= 0) break;
    number.append(buffer.data(), static_cast<std::size_t>(count));
  }
  ::close(ends[0]);
  if (number.find('\n') == std::string::npos) throw std::runtime_error("Xvfb did not start");
  name_ = QLatin1Char(':') + QString::fromStdString(number).trimmed();
  qputenv("DISPLAY", name_.toLocal8Bit());
}

void VirtualDisplay::connectToServer() {
  connection_ = xcb_connect(name_.toLocal8Bit().constData(), nullptr);
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("Xvfb takes no connection");
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

void VirtualDisplay::startWindowManager() {
  const QString settings = folder_.filePath(QStringLiteral("rc.xml"));
  QFile file(settings);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no window manager settings");
  file.write(kWindowManagerSettings);
  file.close();
  windowManager_ = ChildProcess::start(
      {QStringLiteral("openbox"), QStringLiteral("--sm-disable"), QStringLiteral("--config-file"), settings});
  // The name comes last: then the manager manages.
  if (!waitUntil([this] {
        const QList<quint32> check = words(root(), "_NET_SUPPORTING_WM_CHECK");
        return !check.isEmpty() && !words(root(), "_NET_CURRENT_DESKTOP").isEmpty();
      })) {
    throw std::runtime_error("openbox did not start");
  }
}

void VirtualDisplay::startCompositor() {
  const QString settings = folder_.filePath(QStringLiteral("picom.conf"));
  QFile file(settings);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no compositor settings");
  file.write("shadow = false; fading = false;\n");
  file.close();
  compositor_ = ChildProcess::start({QStringLiteral("picom"), QStringLiteral("--backend"), QStringLiteral("xrender"),
                                     QStringLiteral("--no-vsync"), QStringLiteral("--config"), settings});
  if (!waitUntil([this] { return selectionOwner("_NET_WM_CM_S0") != XCB_WINDOW_NONE; })) {
    throw std::runtime_error("picom did not start");
  }
}

void VirtualDisplay::stopCompositor() { compositor_.reset(); }

xcb_atom_t VirtualDisplay::atom(const char* name) const {
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<quint16>(std::strlen(name)), name);
  return reply(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

QList<quint32> VirtualDisplay::words(xcb_window_t window, const char* property) const {
  const auto cookie = xcb_get_property(connection_, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
  const auto answer = reply(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!answer || answer->format != 32) return {};
  const auto* first = static_cast<const quint32*>(xcb_get_property_value(answer.get()));
  return QList<quint32>(first, first + answer->value_len);
}

QRect VirtualDisplay::frame(xcb_window_t window) const {
  const auto size = xcb_get_geometry(connection_, window);
  const auto place = xcb_translate_coordinates(connection_, window, root(), 0, 0);
  const auto sizeAnswer = reply(xcb_get_geometry_reply(connection_, size, nullptr));
  const auto placeAnswer = reply(xcb_translate_coordinates_reply(connection_, place, nullptr));
  if (!sizeAnswer || !placeAnswer) return {};
  return QRect(placeAnswer->dst_x, placeAnswer->dst_y, sizeAnswer->width, sizeAnswer->height);
}

xcb_window_t VirtualDisplay::topLevelAt(QPoint place) const {
  const auto cookie = xcb_translate_coordinates(connection_, root(), root(), static_cast<qint16>(place.x()),
                                                static_cast<qint16>(place.y()));
  const auto answer = reply(xcb_translate_coordinates_reply(connection_, cookie, nullptr));
  return answer ? answer->child : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_window_t VirtualDisplay::focus() const {
  return reply(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr))->focus;
}

xcb_window_t VirtualDisplay::selectionOwner(const char* selection) const {
  const auto cookie = xcb_get_selection_owner(connection_, atom(selection));
  const auto answer = reply(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return answer ? answer->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void VirtualDisplay::setMonitor(const QString& monitor, const QRect& frame, const QString& output) {
  const QString geometry =
      QStringLiteral("%1/300x%2/200+%3+%4").arg(frame.width()).arg(frame.height()).arg(frame.left()).arg(frame.top());
  if (!execute({QStringLiteral("xrandr"), QStringLiteral("--setmonitor"), monitor, geometry, output})) {
    throw std::runtime_error("xrandr --setmonitor failed");
  }
}

void VirtualDisplay::deleteMonitor(const QString& monitor) {
  if (!execute({QStringLiteral("xrandr"), QStringLiteral("--delmonitor"), monitor})) {
    throw std::runtime_error("xrandr --delmonitor failed");
  }
}

bool VirtualDisplay::execute(const QStringList& command) {
  const auto program = ChildProcess::start(command);
  return waitUntil([&] { return !program->isRunning(); }) && program->exitCode() == 0;
}

void VirtualDisplay::fake(quint8 type, quint8 detail, QPoint place) {
  xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root(), static_cast<qint16>(place.x()),
                      static_cast<qint16>(place.y()), 0);
  reply(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void VirtualDisplay::key(quint8 code, bool down) { fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code); }

void VirtualDisplay::tap(quint8 code, const QList<quint8>& held) {
  for (const quint8 modifier : held) key(modifier, true);
  key(code, true);
  key(code, false);
  for (auto modifier = held.crbegin(); modifier != held.crend(); ++modifier) key(*modifier, false);
}

void VirtualDisplay::moveTo(QPoint place) { fake(XCB_MOTION_NOTIFY, 0, place); }

void VirtualDisplay::moveBy(QPoint way) { fake(XCB_MOTION_NOTIFY, 1, way); }

void VirtualDisplay::button(quint8 number, bool down) { fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number); }

void VirtualDisplay::click(QPoint place, quint8 number) {
  moveTo(place);
  button(number, true);
  button(number, false);
}

QImage VirtualDisplay::screenshot() const {
  const QRect all = frame(root());
  const auto cookie = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), 0, 0,
                                    static_cast<quint16>(all.width()), static_cast<quint16>(all.height()), ~0U);
  const auto answer = reply(xcb_get_image_reply(connection_, cookie, nullptr));
  if (!answer) return {};
  return QImage(xcb_get_image_data(answer.get()), all.width(), all.height(), all.width() * 4, QImage::Format_RGB32)
      .copy();
}

QColor VirtualDisplay::pixel(QPoint place) const { return screenshot().pixelColor(place); }

bool VirtualDisplay::waitUntil(const std::function<bool()>& predicate) {
  QElapsedTimer clock;
  clock.start();
  while (!predicate()) {
    if (clock.hasExpired(kDeadline)) return false;
    if (!QCoreApplication::instance()) {
      poll(nullptr, 0, kLookAgain);
      continue;
    }
    // What is waited for may happen in another program, which wakes nobody here.
    QTimer::singleShot(kLookAgain, Qt::PreciseTimer, QCoreApplication::instance(), [] {});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

void VirtualDisplay::settle() {
  struct Mark final : QAbstractNativeEventFilter {
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
      const auto* event = static_cast<const xcb_property_notify_event_t*>(message);
      isSeen = isSeen || ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && event->atom == atom);
      return false;
    }
    xcb_atom_t atom = XCB_ATOM_NONE;
    bool isSeen = false;
  } mark;
  mark.atom = atom("TARNWICK_TEST_MARK");
  QCoreApplication::instance()->installNativeEventFilter(&mark);
  const quint32 value = 0;
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, root(), mark.atom, XCB_ATOM_CARDINAL, 32, 1, &value);
  xcb_flush(connection_);
  EXPECT_TRUE(waitUntil([&] { return mark.isSeen; }));
  QCoreApplication::instance()->removeNativeEventFilter(&mark);
  QCoreApplication::processEvents();
}

int VirtualDisplay::clicksOn(xcb_window_t window) {
  while (const auto event = reply(xcb_poll_for_event(connection_))) {
    if ((event->response_type & 0x7f) != XCB_BUTTON_PRESS) continue;
    ++clicks_[reinterpret_cast<const xcb_button_press_event_t*>(event.get())->event];
  }
  return clicks_.value(window);
}

}  // namespace tarnwick::testing
