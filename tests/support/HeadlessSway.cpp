#include "support/HeadlessSway.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

HeadlessSway* currentSway = nullptr;

constexpr const char* kHeadless = R"(output HEADLESS-1 resolution 1280x800 position 0 0
output HEADLESS-2 resolution 1280x800 scale 2 position 1280 0
)";

// The displays of a nested one are windows of the outer one. One that is covered would be given no frames.
constexpr const char* kOuter = R"(output HEADLESS-1 resolution 2600x800 position 0 0
for_window [title=".* WL-.*"] floating enable, move position 1300 0
for_window [title=".* WL-1"] move position 0 0
)";

constexpr const char* kCommon = R"(output * background #204060 solid_color
default_border none
focus_follows_mouse no
mouse_warping none
xwayland disable
)";

QString findFocused(const QJsonObject& node) {
  if (node.value(QLatin1String("focused")).toBool()) return node.value(QLatin1String("app_id")).toString();
  for (const char* list : {"nodes", "floating_nodes"}) {
    for (const QJsonValue& child : node.value(QLatin1String(list)).toArray()) {
      if (const QString found = findFocused(child.toObject()); !found.isEmpty()) return found;
    }
  }
  return {};
}

}  // namespace

HeadlessSway::HeadlessSway(Kind kind) {
  currentSway = this;
  qputenv("HOME", folder_.path().toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
  qputenv("WLR_LIBINPUT_NO_DEVICES", "1");
  qputenv("WLR_RENDERER", "pixman");
  qputenv("WLR_BACKENDS", "headless");
  qputenv("WLR_HEADLESS_OUTPUTS", kind == Kind::Nested ? "1" : "2");
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) qunsetenv(name);
  if (kind == Kind::Nested) {
    outer_ = startCompositor("outer", kOuter);
    outerSocket_ = qEnvironmentVariable("SWAYSOCK");
    qputenv("WLR_BACKENDS", "wayland");
    compositor_ = startCompositor("inner", "");
  } else {
    compositor_ = startCompositor("plain", kHeadless);
  }
  plugPointer(true);
  // A seat has a keyboard only as long as somebody can type; this one waits for a day before it would.
  keyboard_ = ChildProcess::start({QStringLiteral("wtype"), QStringLiteral("-s"), QStringLiteral("86400000")});
}

HeadlessSway::~HeadlessSway() {
  keyboard_.reset();
  pointer_.reset();
  compositor_.reset();
  outer_.reset();
  currentSway = nullptr;
}

std::unique_ptr<ChildProcess> HeadlessSway::startCompositor(const char* name, const char* settings) {
  const QString path = folder_.filePath(QLatin1String(name));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("no settings for the compositor");
  file.write(settings);
  file.write(kCommon);
  file.write("exec sh -c 'printf \"%s\\n%s\\n\" \"$SWAYSOCK\" \"$WAYLAND_DISPLAY\" > new && mv new ready'\n");
  file.close();

  QStringList command{QStringLiteral("env"), QStringLiteral("-C"), folder_.path()};
  // It refuses to run as root; within a name space of its own it does not see that it is.
  if (::geteuid() == 0) command << QStringLiteral("unshare") << QStringLiteral("--user");
  command << QStringLiteral("sway") << QStringLiteral("-c") << path;
  auto compositor = ChildProcess::start(command);
  QFile ready(folder_.filePath(QStringLiteral("ready")));
  if (!VirtualDisplay::waitUntil([&] { return ready.exists() || !compositor->isRunning(); }) ||
      !ready.open(QIODevice::ReadOnly)) {
    throw std::runtime_error("sway did not start");
  }
  qputenv("SWAYSOCK", ready.readLine().trimmed());
  qputenv("WAYLAND_DISPLAY", ready.readLine().trimmed());
  ready.remove();
  return compositor;
}

HeadlessSway::Another HeadlessSway::another() {
  const QByteArray socket = qgetenv("SWAYSOCK");
  const QByteArray display = qgetenv("WAYLAND_DISPLAY");
  Another another;
  another.process = startCompositor("another", "");
  another.display = qEnvironmentVariable("WAYLAND_DISPLAY");
  qputenv("SWAYSOCK", socket);
  qputenv("WAYLAND_DISPLAY", display);
  return another;
}

HeadlessSway& HeadlessSway::current() { return *currentSway; }

int HeadlessSway::run(int argc, char** argv, Kind kind, const std::function<int(int&, char**)>& application) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  HeadlessSway sway(kind);
  sway.endWith(application(argc, argv));
}

/// The toolkit calls _exit(1) once it sees that the compositor goes. So this process goes first, and a child that waits
/// for it ends the compositor.
void HeadlessSway::endWith(int status) {
  keyboard_.reset();
  pointer_.reset();
  folder_.remove();
  std::fflush(nullptr);
  int ends[2];
  if (::pipe(ends) == 0 && ::fork() == 0) {
    // A child of many threads: system calls only.
    char none = 0;
    ::close(ends[1]);
    while (::read(ends[0], &none, 1) < 0 && errno == EINTR) {
    }
    for (const auto* compositor : {&compositor_, &outer_})
      if (*compositor) ::kill((*compositor)->pid(), SIGKILL);
    ::_exit(0);
  }
  ::_exit(status);
}

QByteArray HeadlessSway::run(const QStringList& command) {
  QProcess process;
  process.start(command.first(), command.mid(1));
  if (!process.waitForFinished() || process.exitCode() != 0) return {};
  return process.readAllStandardOutput();
}

bool HeadlessSway::order(const QString& command) {
  return run({QStringLiteral("swaymsg"), QStringLiteral("--"), command}).contains("\"success\": true");
}

bool HeadlessSway::unplug(const QString& output) {
  return run({QStringLiteral("swaymsg"), QStringLiteral("-s"), outerSocket_, QStringLiteral("--"),
              QStringLiteral("[title=\".* %1\"] kill").arg(output)})
      .contains("\"success\": true");
}

QJsonDocument HeadlessSway::ask(const QString& question) {
  return QJsonDocument::fromJson(
      run({QStringLiteral("swaymsg"), QStringLiteral("-r"), QStringLiteral("-t"), question}));
}

QString HeadlessSway::focused() { return findFocused(ask(QStringLiteral("get_tree")).object()); }

std::unique_ptr<ChildProcess> HeadlessSway::terminal(const QString& applicationId) {
  auto terminal = ChildProcess::start({QStringLiteral("foot"), QStringLiteral("--app-id"), applicationId,
                                       QStringLiteral("sleep"), QStringLiteral("1000")});
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return focused() == applicationId; }));
  return terminal;
}

void HeadlessSway::type(const QStringList& arguments) { run(QStringList(QStringLiteral("wtype")) + arguments); }

void HeadlessSway::moveTo(QPoint place) {
  // What a button holds follows the motion of a device alone.
  if (isHolding_) {
    pointer_->moveBy(place - place_);
  } else {
    // It counts in shares of the whole desktop, and on the corner of a pixel may come out just before it.
    constexpr double kWithin = 0.25;
    EXPECT_TRUE(order(QStringLiteral("seat - cursor set %1 %2").arg(place.x() + kWithin).arg(place.y() + kWithin)));
  }
  place_ = place;
}

void HeadlessSway::button(bool down, std::uint32_t code) {
  isHolding_ = down;
  pointer_->button(code, down);
}

void HeadlessSway::click(QPoint place) {
  moveTo(place);
  button(true);
  button(false);
}

void HeadlessSway::plugPointer(bool in) {
  pointer_.reset();
  if (in) pointer_ = std::make_unique<VirtualPointer>();
}

QImage HeadlessSway::screenshot(const QString& output) {
  return QImage::fromData(run({QStringLiteral("grim"), QStringLiteral("-t"), QStringLiteral("ppm"),
                               QStringLiteral("-o"), output, QStringLiteral("-")}));
}

QColor HeadlessSway::pixel(QPoint place, const QString& output) {
  const QImage picture = screenshot(output);
  return picture.valid(place) ? picture.pixelColor(place) : QColor();
}

}  // namespace tarnwick::testing
