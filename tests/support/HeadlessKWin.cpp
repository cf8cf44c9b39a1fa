#include "support/HeadlessKWin.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFile>
#include <QVariantMap>
#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "base/FileDescriptor.h"
#include "fake-input-client.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

HeadlessKWin* currentKWin = nullptr;

// What moves by itself would be in the pictures. Without a graphics card nothing is blurred unless one asks for it.
constexpr std::array kSettings{std::pair{"kdeglobals", "[KDE]\nAnimationDurationFactor=0\n"},
                               std::pair{"kwinrc", "[Plugins]\nblurEnabled=true\n"}};

}  // namespace

HeadlessKWin::HeadlessKWin() {
  currentKWin = this;
  const QString settings = qEnvironmentVariable("HOME") + u"/.config"_s;
  QDir().mkpath(settings);
  for (const auto& [name, text] : kSettings) {
    QFile file(settings + u'/' + QLatin1StringView(name));
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no settings for the compositor");
    file.write(text);
  }

  // The installed file has a capability, which not every machine lets a program have; a copy has none.
  const QString copy = folder_.filePath(u"kwin_wayland"_s);
  if (!QFile::copy(u"/usr/bin/kwin_wayland"_s, copy)) throw std::runtime_error("there is no kwin_wayland");
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) qunsetenv(name);
  const QString display = u"wayland-kwin"_s;
  compositor_ = ChildProcess::start({u"env"_s, u"KWIN_WAYLAND_NO_PERMISSION_CHECKS=1"_s,
                                     u"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS=1"_s, copy, u"--virtual"_s, u"--width"_s,
                                     u"1280"_s, u"--height"_s, u"800"_s, u"--output-count"_s, u"2"_s,
                                     u"--no-lockscreen"_s, u"--socket"_s, display});
  qputenv("WAYLAND_DISPLAY", display.toUtf8());
  const bool answers = VirtualDisplay::waitUntil([&] {
    display_ = wl_display_connect(nullptr);
    return display_ || !compositor_->isRunning();
  });
  if (!answers || !display_) throw std::runtime_error("kwin_wayland did not start");
  connectInput();
}

HeadlessKWin::~HeadlessKWin() {
  wl_display_disconnect(display_);
  compositor_.reset();
  currentKWin = nullptr;
}

HeadlessKWin& HeadlessKWin::current() { return *currentKWin; }

void HeadlessKWin::kill() { compositor_->signal(SIGKILL); }

void HeadlessKWin::connectInput() {
  const wl_registry_listener listener{
      .global =
          [](void* data, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
            if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) != 0) return;
            constexpr uint32_t kVersion = 4;
            *static_cast<org_kde_kwin_fake_input**>(data) = static_cast<org_kde_kwin_fake_input*>(
                wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, kVersion));
          },
      .global_remove = [](void*, wl_registry*, uint32_t) {}};
  wl_registry* registry = wl_display_get_registry(display_);
  wl_registry_add_listener(registry, &listener, &input_);
  wl_display_roundtrip(display_);
  wl_registry_destroy(registry);
  if (!input_) throw std::runtime_error("kwin_wayland takes no input");
  org_kde_kwin_fake_input_authenticate(input_, "tests", "a hand");
  flush();
}

void HeadlessKWin::flush() { wl_display_roundtrip(display_); }

void HeadlessKWin::moveTo(QPoint place) {
  // Of a place that is set KWin passes no motion of a device on, which is what a button holds follows.
  if (isHolding_) {
    const QPoint way = place - place_;
    org_kde_kwin_fake_input_pointer_motion(input_, wl_fixed_from_int(way.x()), wl_fixed_from_int(way.y()));
  } else {
    org_kde_kwin_fake_input_pointer_motion_absolute(input_, wl_fixed_from_int(place.x()), wl_fixed_from_int(place.y()));
  }
  place_ = place;
  flush();
}

void HeadlessKWin::button(bool down, std::uint32_t code) {
  isHolding_ = down;
  org_kde_kwin_fake_input_button(input_, code, down ? 1 : 0);
  flush();
}

void HeadlessKWin::key(std::uint32_t code, bool down) {
  org_kde_kwin_fake_input_keyboard_key(input_, code, down ? 1 : 0);
  flush();
}

void HeadlessKWin::tap(std::uint32_t code) {
  for (const bool down : {true, false}) key(code, down);
}

void HeadlessKWin::touch(QPoint place) {
  org_kde_kwin_fake_input_touch_down(input_, 0, wl_fixed_from_int(place.x()), wl_fixed_from_int(place.y()));
  org_kde_kwin_fake_input_touch_frame(input_);
  flush();
}

void HeadlessKWin::lift() {
  org_kde_kwin_fake_input_touch_up(input_, 0);
  org_kde_kwin_fake_input_touch_frame(input_);
  flush();
}

QImage HeadlessKWin::screenshot(const QString& output) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return {};
  const FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  QDBusMessage call = QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s,
                                                     u"org.kde.KWin.ScreenShot2"_s, u"CaptureScreen"_s);
  call << output << QVariantMap() << QVariant::fromValue(QDBusUnixFileDescriptor(writing.number()));
  const QDBusMessage answer = QDBusConnection::sessionBus().call(call);
  writing.reset();
  if (answer.type() != QDBusMessage::ReplyMessage) return {};
  const auto facts = qdbus_cast<QVariantMap>(answer.arguments().value(0));
  call = {};  // It holds the pipe open.
  QByteArray pixels;
  char part[1 << 16];
  for (ssize_t count = 0; (count = ::read(reading.number(), part, sizeof part)) > 0;) {
    pixels.append(part, static_cast<qsizetype>(count));
  }
  const auto number = [&](const QString& fact) { return facts.value(fact).toInt(); };
  const int stride = number(u"stride"_s);
  const int height = number(u"height"_s);
  if (stride <= 0 || pixels.size() < qsizetype{stride} * height) return {};
  return QImage(reinterpret_cast<const uchar*>(pixels.constData()), number(u"width"_s), height, stride,
                static_cast<QImage::Format>(number(u"format"_s)))
      .copy();
}

}  // namespace tarnwick::testing
