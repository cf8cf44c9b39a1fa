// How soon Settings and the library are there after their entry in the dock's menu was chosen, and what is left of
// them in memory once they are closed. From outside: the key is the display's, and a window counts as painted when
// the server has been given every pixel of it.
//
//   measure_windows PROGRAM RUNS
//
// Each run starts the program anew and opens each window first cold and then several times more. Which of the two comes
// first changes from run to run: what the first one loads, the second finds.
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "MeasuredDesktop.h"

namespace {

using namespace std::chrono_literals;
using Clock = MeasuredDesktop::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPatience = 20s;
constexpr auto kStartIsOver = 6s;  // The first readings, icons and services have come by then.
constexpr auto kCalm = 400ms;      // What is drawn before such a rest belongs to the opening.
constexpr auto kClosed = 3s;       // What is deleted and given back later has been by then.
constexpr int kWarmTimes = 4;
constexpr uint8_t kControl = 37;
constexpr uint8_t kF10 = 76;
constexpr uint8_t kDown = 116;
constexpr uint8_t kReturn = 36;

struct Target {
  const char* name;
  int entry;  // In the dock's menu, from its beginning.
  std::vector<double> cold, coldSettled, warm, warmSettled;
};

struct Opening {
  xcb_window_t window = 0;
  double painted = 0;  // Milliseconds after the choice.
  double settled = 0;  // When the last of what came by and by was drawn.
};

double pssOf(const std::string& pid) {
  std::ifstream file("/proc/" + pid + "/smaps_rollup");
  for (std::string word; file >> word;) {
    double kibibytes = 0;
    if (word == "Pss:" && file >> kibibytes) return kibibytes / 1024;
  }
  return 0;
}

class Run {
 public:
  Run(const MeasuredDesktop& desktop, const char* program) : desktop_(desktop), program_(program), child_(start({})) {
    pid_ = std::to_string(child_);
    waitFor([&] { return !desktop_.windowsOf(pid_).empty(); });
    rest(kStartIsOver);
  }
  ~Run() {
    kill(child_, SIGTERM);
    waitpid(child_, nullptr, 0);
    while (!desktop_.windowsOf(pid_).empty()) rest(20ms);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  double memory() const { return pssOf(pid_); }

  Opening open(int entry) const {
    chooseWithTheMenu(entry);
    Opening opening;
    const auto click = Clock::now();
    double area = 0;
    double missing = 0;
    auto end = click + kPatience;
    while (const auto event = desktop_.nextEvent(end)) {
      const Milliseconds after = Clock::now() - click;
      if (const auto* made = as<xcb_create_notify_event_t>(*event, XCB_CREATE_NOTIFY); made && !made->override_redirect)
        desktop_.watchDrawing(made->window);
      if (!desktop_.isDrawing(*event)) continue;
      const auto& drawn = reinterpret_cast<const xcb_damage_notify_event_t&>(*event);
      // The window manager's frame is created and drawn too.
      if (opening.window == 0) {
        if (!desktop_.belongsTo(drawn.drawable, pid_)) continue;
        opening.window = drawn.drawable;
        area = double(drawn.geometry.width) * drawn.geometry.height;
        missing = area;
      }
      if (drawn.drawable != opening.window) continue;
      missing -= double(drawn.area.width) * drawn.area.height;
      if (missing <= 0 && opening.painted == 0) opening.painted = after.count();
      opening.settled = after.count();
      if (opening.painted > 0) end = std::min(end, Clock::now() + kCalm);
    }
    if (opening.painted == 0) throw std::runtime_error("a window did not come");
    return opening;
  }

  void close(xcb_window_t window) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = desktop_.atom("WM_PROTOCOLS");
    message.data.data32[0] = desktop_.atom("WM_DELETE_WINDOW");
    xcb_send_event(desktop_.connection(), 0, window, 0, reinterpret_cast<const char*>(&message));
    waitFor([&] { return std::ranges::count(desktop_.windowsOf(pid_), window) == 0; });
    rest(500ms);
  }

 private:
  pid_t start(const char* argument) const {
    const pid_t pid = fork();
    if (pid == 0) {
      execl(program_, program_, argument, nullptr);
      _exit(127);
    }
    return pid;
  }

  template <class T>
  static const T* as(const xcb_generic_event_t& event, int type) {
    return (event.response_type & 0x7f) == type ? reinterpret_cast<const T*>(&event) : nullptr;
  }

  void rest(Clock::duration time) const {
    const auto end = Clock::now() + time;
    while (desktop_.nextEvent(end)) {
    }
  }

  template <class Predicate>
  void waitFor(const Predicate& predicate) const {
    const auto end = Clock::now() + kPatience;
    while (!predicate()) {
      if (Clock::now() > end) throw std::runtime_error("the program does not do what it is asked");
      rest(5ms);
    }
  }

  /// Gives the dock the keyboard, opens its menu and chooses one of the entries.
  void chooseWithTheMenu(int entry) const {
    waitpid(start("--focus"), nullptr, 0);
    waitFor([&] {
      const auto focus = MeasuredDesktop::own(
          xcb_get_input_focus_reply(desktop_.connection(), xcb_get_input_focus(desktop_.connection()), nullptr));
      const std::vector<xcb_window_t> ours = desktop_.windowsOf(pid_);
      return std::ranges::count(ours, focus->focus) > 0;
    });
    rest(100ms);
    desktop_.tap(kF10, kControl);
    const auto end = Clock::now() + kPatience;
    bool isOpen = false;
    while (const auto event = desktop_.nextEvent(end)) {
      const auto* shown = as<xcb_map_notify_event_t>(*event, XCB_MAP_NOTIFY);
      isOpen = shown && shown->override_redirect && desktop_.belongsTo(shown->window, pid_);
      if (isOpen) break;
    }
    if (!isOpen) throw std::runtime_error("the menu of the dock does not come");
    rest(300ms);
    for (int step = 0; step <= entry; ++step) desktop_.tap(kDown);
    rest(100ms);
    desktop_.tap(kReturn);
  }

  const MeasuredDesktop& desktop_;
  const char* program_;
  pid_t child_;
  std::string pid_;
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

void print(const char* window, const char* how, const std::vector<double>& painted,
           const std::vector<double>& settled) {
  std::printf("%-9s %s: painted after %.1f ms (median of %zu), %.1f (worst); all drawn after %.1f (median)\n", window,
              how, median(painted), painted.size(), *std::ranges::max_element(painted), median(settled));
}

void measure(const char* program, int runs) {
  const MeasuredDesktop desktop;
  const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(desktop.connection(), desktop.root(), XCB_CW_EVENT_MASK, &mask);
  std::array<Target, 2> targets{Target{"Settings", 1, {}, {}, {}, {}}, Target{"library", 0, {}, {}, {}, {}}};
  std::vector<double> left;
  for (int number = 0; number < runs; ++number) {
    const Run run(desktop, program);
    const double before = run.memory();
    for (int turn = 0; turn < 2; ++turn) {
      Target& target = targets[static_cast<std::size_t>((number + turn) % 2)];
      for (int time = 0; time <= kWarmTimes; ++time) {
        const Opening opening = run.open(target.entry);
        (time == 0 ? target.cold : target.warm).push_back(opening.painted);
        (time == 0 ? target.coldSettled : target.warmSettled).push_back(opening.settled);
        run.close(opening.window);
      }
    }
    usleep(static_cast<useconds_t>(std::chrono::microseconds(kClosed).count()));
    left.push_back(run.memory() - before);
  }
  for (const Target& target : targets) {
    print(target.name, "cold", target.cold, target.coldSettled);
    print(target.name, "warm", target.warm, target.warmSettled);
  }
  std::printf("after closing all: PSS %.1f MiB more than before (median), %.1f (worst)\n", median(left),
              *std::ranges::max_element(left));
}

}  // namespace

int main(int argc, char** argv) {
  const int runs = argc > 2 ? std::atoi(argv[2]) : 0;
  if (runs <= 0) {
    std::fputs("usage: measure_windows PROGRAM RUNS\n", stderr);
    return 2;
  }
  try {
    measure(argv[1], runs);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
