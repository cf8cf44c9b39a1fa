// How soon the command bar is there after its key, and its list after a letter. From outside: keys are the display's,
// and a window counts as painted when the server has been given every pixel of it.
//
//   measure_bar PROGRAM RUNS                 Control+Space must be the bar's key
//   measure_bar --rival RUNS PROGRAM ARG…    a launcher that is started for each opening
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "MeasuredDesktop.h"

namespace {

using namespace std::chrono_literals;
using Clock = MeasuredDesktop::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPatience = 20s;
constexpr auto kStartIsOver = 6s;  // The first readings, icons and services have come by then.
constexpr auto kCalm = 400ms;      // What is drawn before such a rest belongs to one answer.
constexpr uint8_t kControl = 37;
constexpr uint8_t kSpace = 65;
constexpr uint8_t kEscape = 9;
constexpr uint8_t kLetters[] = {28, 26, 27};  // t, e, r

struct Figures {
  std::vector<double> painted, letters;
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void print(const char* what, const std::vector<double>& values) {
  if (values.empty()) return;
  std::printf("%s: %.1f ms (median of %zu), %.1f (worst)\n", what, median(values), values.size(),
              *std::ranges::max_element(values));
}

class Display : public MeasuredDesktop {
 public:
  Display() {
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection());
  }
  void rest(Clock::duration time) const {
    const auto end = Clock::now() + time;
    while (nextEvent(end)) {
    }
  }

  /// Waits until a new window is painted whole, and gives it; `milliseconds` since the moment given.
  xcb_window_t waitForWindow(Clock::time_point since, double& milliseconds) const {
    xcb_window_t window = 0;
    double missing = 0;
    while (const auto event = nextEvent(since + kPatience)) {
      const Milliseconds after = Clock::now() - since;
      if ((event->response_type & 0x7f) == XCB_CREATE_NOTIFY)
        watchDrawing(reinterpret_cast<const xcb_create_notify_event_t&>(*event).window);
      if (!isDrawing(*event)) continue;
      const auto& drawn = reinterpret_cast<const xcb_damage_notify_event_t&>(*event);
      // Helper windows of a pixel are created and drawn on too.
      if (drawn.geometry.width < 100) continue;
      if (window != drawn.drawable) {
        window = drawn.drawable;
        missing = double(drawn.geometry.width) * drawn.geometry.height;
      }
      missing -= double(drawn.area.width) * drawn.area.height;
      if (missing > 0) continue;
      milliseconds = after.count();
      return window;
    }
    throw std::runtime_error("no window comes");
  }

  /// Types the letters one after the other, each once the answer to the one before is drawn.
  void type(xcb_window_t window, std::vector<double>& took) const {
    for (const uint8_t letter : kLetters) {
      rest(kCalm);
      const auto pressed = Clock::now();
      tap(letter);
      while (const auto event = nextEvent(pressed + kPatience)) {
        if (!isDrawing(*event) || reinterpret_cast<const xcb_damage_notify_event_t&>(*event).drawable != window)
          continue;
        took.push_back(Milliseconds(Clock::now() - pressed).count());
        break;
      }
    }
  }

  void closeByEscape(xcb_window_t window) const {
    rest(kCalm);
    tap(kEscape);
    while (const auto event = nextEvent(Clock::now() + kPatience)) {
      const int type = event->response_type & 0x7f;
      if (type == XCB_UNMAP_NOTIFY && reinterpret_cast<const xcb_unmap_notify_event_t&>(*event).window == window) break;
      if (type == XCB_DESTROY_NOTIFY && reinterpret_cast<const xcb_destroy_notify_event_t&>(*event).window == window)
        break;
    }
    rest(kCalm);
  }
};

pid_t start(char* const* command) {
  const pid_t pid = fork();
  if (pid != 0) return pid;
  execvp(command[0], command);
  _exit(127);
}

void measureBar(char* program, int runs) {
  const Display display;
  Figures cold, warm;
  for (int run = 0; run < runs; ++run) {
    char* const command[] = {program, nullptr};
    const pid_t pid = start(command);
    display.rest(kStartIsOver);
    for (int time = 0; time < 5; ++time) {
      Figures& figures = time == 0 ? cold : warm;
      const auto pressed = Clock::now();
      display.tap(kSpace, kControl);
      double painted = 0;
      const xcb_window_t window = display.waitForWindow(pressed, painted);
      figures.painted.push_back(painted);
      display.type(window, figures.letters);
      display.closeByEscape(window);
    }
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    display.rest(kCalm);
  }
  print("key to painted bar, the first time", cold.painted);
  print("key to painted bar, later", warm.painted);
  print("letter to drawn list, the first time", cold.letters);
  print("letter to drawn list, later", warm.letters);
}

void measureRival(char* const* command, int runs) {
  const Display display;
  Figures figures;
  for (int run = 0; run < runs; ++run) {
    const auto started = Clock::now();
    const pid_t pid = start(command);
    double painted = 0;
    const xcb_window_t window = display.waitForWindow(started, painted);
    figures.painted.push_back(painted);
    display.type(window, figures.letters);
    display.closeByEscape(window);
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
  }
  print("start to painted window", figures.painted);
  print("letter to drawn list", figures.letters);
}

}  // namespace

int main(int argc, char** argv) {
  const bool isRival = argc > 3 && std::strcmp(argv[1], "--rival") == 0;
  const int runs = argc > 2 ? std::atoi(argv[2]) : 0;
  if (runs <= 0) {
    std::fputs("usage: measure_bar PROGRAM RUNS\n       measure_bar --rival RUNS PROGRAM ARG…\n", stderr);
    return 2;
  }
  try {
    isRival ? measureRival(argv + 3, runs) : measureBar(argv[1], runs);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
