// What it takes to look at windows of other programs and to move them, on the display that DISPLAY names, which needs a
// window manager (see scripts/virtual-desktop):
//
//   measure_others            100 windows listed; pictures of 20 of 1920 by 1080; 40 moved aside and back
//   measure_others --windows N WIDTH HEIGHT
//                             the other program: opens so many windows, says so in a line and stays
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "MeasuredTurns.h"
#include "platform/linux/ProcessLaunch.h"
#include "platform/x11/X11WindowFrames.h"
#include "platform/x11/X11WindowPictures.h"
#include "windows/WindowKeeper.h"

namespace tarnwick {
namespace {

using namespace std::chrono_literals;

int beOther(int count, int width, int height) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
  const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const auto atom = [connection](const std::string& name) {
    auto* reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr);
    const xcb_atom_t found = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    std::free(reply);
    return found;
  };
  const xcb_atom_t pidName = atom("_NET_WM_PID");
  const auto pid = static_cast<uint32_t>(::getpid());
  for (int i = 0; i < count; ++i) {
    const xcb_window_t window = xcb_generate_id(connection);
    const uint32_t values[] = {0x304050U + static_cast<uint32_t>(i) * 4, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, static_cast<uint16_t>(width),
                      static_cast<uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, pidName, XCB_ATOM_CARDINAL, 32, 1, &pid);
    xcb_map_window(connection, window);
  }
  xcb_flush(connection);
  for (int seen = 0; seen < count;) {
    xcb_generic_event_t* const event = xcb_wait_for_event(connection);
    if (!event) return 1;
    if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) ++seen;
    std::free(event);
  }
  std::printf("ready\n");
  std::fflush(stdout);
  for (;;) ::pause();
}

/// The other program, until it goes.
class Other {
 public:
  Other(const char* program, int count, const QSize& size) {
    int ends[2];
    if (::pipe(ends) != 0) std::abort();
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(ends[1], STDOUT_FILENO);
      ::execl(program, program, "--windows", std::to_string(count).c_str(), std::to_string(size.width()).c_str(),
              std::to_string(size.height()).c_str(), static_cast<char*>(nullptr));
      ::_exit(127);
    }
    ::close(ends[1]);
    char byte = 0;
    while (::read(ends[0], &byte, 1) == 1 && byte != '\n') {
    }
    ::close(ends[0]);
  }
  Q_DISABLE_COPY_MOVE(Other)
  ~Other() {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
  pid_t pid() const { return pid_; }

 private:
  pid_t pid_;
};

double since(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

QList<WindowFrames::Window> windowsOf(WindowFrames& frames, pid_t pid) {
  auto all = frames.all(1s).value_or(QList<WindowFrames::Window>());
  all.removeIf([pid](const WindowFrames::Window& window) { return window.pid != pid; });
  return all;
}

void measureList(const char* program) {
  const Other other(program, 100, {300, 200});
  X11WindowFrames frames;
  frames.all(1s);
  QElapsedTimer timer;
  timer.start();
  constexpr int kTimes = 20;
  qsizetype count = 0;
  for (int i = 0; i < kTimes; ++i) count = windowsOf(frames, other.pid()).size();
  std::printf("%lld windows listed: %.2f ms\n", static_cast<long long>(count), since(timer) / kTimes);
}

void measurePictures(const char* program) {
  const Other other(program, 20, {1920, 1080});
  X11WindowFrames frames;
  const auto windows = windowsOf(frames, other.pid());
  const qint64 before = MeasuredMemory::resident();
  MeasuredMemory::resetPeak();
  X11WindowPictures pictures;
  QElapsedTimer timer;
  timer.start();
  QList<quint64> ids;
  for (const auto& window : windows) ids.append(window.number);
  pictures.hold(ids);
  const double held = since(timer);
  QList<QImage> taken;
  for (const quint64 id : ids) taken.append(pictures.take(id));
  const auto good = std::ranges::count_if(taken, [](const QImage& image) { return !image.isNull(); });
  std::printf(
      "%lld pictures of 1920 by 1080: %.0f ms, of which %.0f ms for programs to paint; at the most %.1f MiB more\n",
      static_cast<long long>(good), since(timer), held, static_cast<double>(MeasuredMemory::peak() - before) / 1024);
  taken.clear();
  pictures.rest();
  std::printf("given back: %.1f MiB more than before\n",
              static_cast<double>(MeasuredMemory::resident() - before) / 1024);
}

void measureMoves(const char* program) {
  const Other other(program, 40, {300, 200});
  X11WindowFrames frames;
  QRectF all;
  for (const auto& window : windowsOf(frames, other.pid())) all |= window.frame;
  const QTemporaryDir folder;
  WindowReservationJournal journal(folder.path(), 0ms);
  WindowKeeper keeper(frames, journal, &processLaunch, ::getpid());
  // A dock over the lower half of where they stand.
  const ReservedSpace space{QRectF(all.left(), all.center().y(), all.width(), all.height()),
                            QRectF(0, 0, 4000, all.bottom() + 100), 1};
  QElapsedTimer timer;
  timer.start();
  const QString failure = keeper.reserve({space});
  const double there = since(timer);
  const auto moved = journal.records().size();
  timer.restart();
  keeper.restore();
  std::printf("%lld windows moved aside: %.0f ms, and back: %.0f ms %s\n", static_cast<long long>(moved), there,
              since(timer), qPrintable(failure));
}

}  // namespace
}  // namespace tarnwick

int main(int argc, char** argv) {
  if (argc == 5 && std::string(argv[1]) == "--windows")
    return tarnwick::beOther(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
  const QCoreApplication application(argc, argv);
  tarnwick::measureList(argv[0]);
  tarnwick::measurePictures(argv[0]);
  tarnwick::measureMoves(argv[0]);
  return 0;
}
