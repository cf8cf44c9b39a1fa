// Drives the pointer as a mouse does and measures what the running dock makes of it, from outside: time and wake-ups by
// the kernel's counters, frames by the server's word that the dock's window was drawn on.
//
//   measure_shell rest PID SECONDS
//   measure_shell move PID SECONDS X0 X1 Y               to and fro along a line
//   measure_shell reveal PID RUNS X EDGE_Y AWAY_Y        from the pointer at the edge to frames of the dock
//   measure_shell hover PID RUNS X0 X1 Y TIP_Y AWAY_Y    from the pointer on a tile, and on its neighbour, to its name
//   measure_shell dodge PID RUNS X Y W H AWAY_Y          from a window moved there to the next frame of the dock
//   measure_shell strip PID X EDGE_Y AWAY_Y FILE X Y W H what is seen there at each frame of a reveal, as a PPM
#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "MeasuredDesktop.h"

namespace {

using Clock = MeasuredDesktop::Clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kMousePeriod = std::chrono::milliseconds(8);
constexpr auto kStill = std::chrono::milliseconds(1500);  ///< A dock that has drawn nothing for so long is at rest.
constexpr auto kOneFrame = std::chrono::milliseconds(5);  ///< What is drawn within it belongs to one frame.

/// What all threads of a process have used so far.
struct Usage {
  double cpuMilliseconds = 0;
  double wakeUps = 0;
};

Usage usageOf(const std::string& pid) {
  Usage usage;
  const std::string folder = "/proc/" + pid + "/task/";
  DIR* tasks = opendir(folder.c_str());
  while (const dirent* task = tasks ? readdir(tasks) : nullptr) {
    if (task->d_name[0] == '.') continue;
    double nanoseconds = 0;
    std::ifstream(folder + task->d_name + "/schedstat") >> nanoseconds;
    usage.cpuMilliseconds += nanoseconds / 1e6;
    std::ifstream status(folder + task->d_name + "/status");
    for (std::string word; status >> word;) {
      if (word == "voluntary_ctxt_switches:" && status >> word) usage.wakeUps += std::stod(word);
    }
  }
  if (tasks) closedir(tasks);
  return usage;
}

class Desktop : public MeasuredDesktop {
 public:
  /// From now on what is drawn on the windows of the process is told.
  void watch(const std::string& pid) const {
    for (const xcb_window_t window : windowsOf(pid)) watchDrawing(window);
  }
  /// Whether something was drawn within the time.
  bool waitForDrawing(Clock::duration patience) const {
    const auto end = Clock::now() + patience;
    while (const auto event = nextEvent(end)) {
      if (isDrawing(*event)) return true;
    }
    return false;
  }
  void waitUntilStill() const {
    while (waitForDrawing(kStill)) {
    }
  }

  std::vector<uint8_t> picture(int x, int y, int width, int height) const {
    const auto cookie =
        xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<int16_t>(x), static_cast<int16_t>(y),
                      static_cast<uint16_t>(width), static_cast<uint16_t>(height), ~0U);
    const auto image = own(xcb_get_image_reply(connection(), cookie, nullptr));
    const uint8_t* pixels = xcb_get_image_data(image.get());
    std::vector<uint8_t> colours;
    for (int i = 0; i < width * height; ++i) {
      for (const int channel : {2, 1, 0}) colours.push_back(pixels[i * 4 + channel]);
    }
    return colours;
  }
};

void print(const char* what, const Usage& before, const Usage& after, double seconds) {
  std::printf("%s: CPU %.2f %% of a core, %.2f wake-ups a second\n", what,
              (after.cpuMilliseconds - before.cpuMilliseconds) / seconds / 10,
              (after.wakeUps - before.wakeUps) / seconds);
}

void rest(const std::string& pid, double seconds) {
  const Usage before = usageOf(pid);
  usleep(static_cast<useconds_t>(seconds * 1e6));
  print("at rest", before, usageOf(pid), seconds);
}

void move(const Desktop& desktop, const std::string& pid, double seconds, int x0, int x1, int y) {
  constexpr int kStep = 8;
  desktop.moveTo(x0, y);
  usleep(500'000);
  const Usage before = usageOf(pid);
  const auto start = Clock::now();
  int x = x0;
  int step = kStep;
  while (Clock::now() - start < std::chrono::duration<double>(seconds)) {
    if (x + step > std::max(x0, x1) || x + step < std::min(x0, x1)) step = -step;
    desktop.moveBy(step, 0);
    x += step;
    usleep(static_cast<useconds_t>(std::chrono::microseconds(kMousePeriod).count()));
  }
  print("moving", before, usageOf(pid), seconds);
}

void reveal(const Desktop& desktop, const std::string& pid, int runs, int x, int edge, int away) {
  std::vector<double> first;
  double longestWait = 0;
  std::vector<double> works;
  desktop.watch(pid);
  for (int run = 0; run < runs; ++run) {
    desktop.moveTo(x, away);
    desktop.waitUntilStill();
    double used = usageOf(pid).cpuMilliseconds;
    const auto start = Clock::now();
    desktop.moveTo(x, edge);
    auto last = start;
    // The frames of the reveal follow each other without a break; the tiles' own come once a second.
    while (desktop.waitForDrawing(last == start ? Clock::duration(std::chrono::seconds(2)) : 8 * kOneFrame)) {
      const auto now = Clock::now();
      if (last != start && now - last < kOneFrame) continue;
      const double usedNow = usageOf(pid).cpuMilliseconds;
      if (last == start) {
        first.push_back(Milliseconds(now - start).count());
      } else {
        longestWait = std::max(longestWait, Milliseconds(now - last).count());
      }
      works.push_back(usedNow - used);
      used = usedNow;
      last = now;
    }
  }
  if (first.empty()) {
    std::puts("the dock did not come");
    return;
  }
  std::ranges::sort(first);
  std::ranges::sort(works);
  std::printf(
      "reveal, %d times: first frame after %.1f ms (median), %.1f (worst); %.0f frames each, at most %.1f ms apart; a "
      "frame is %.1f ms of work (median), %.1f (longest)\n",
      runs, first[first.size() / 2], first.back(), static_cast<double>(works.size()) / runs, longestWait,
      works[works.size() / 2], works.back());
}

void print(const char* what, std::vector<double> milliseconds, int runs) {
  std::ranges::sort(milliseconds);
  if (milliseconds.empty())
    std::printf("%s: never of %d times\n", what, runs);
  else
    std::printf("%s, %zu of %d times: after %.1f ms (median), %.1f (worst)\n", what, milliseconds.size(), runs,
                milliseconds[milliseconds.size() / 2], milliseconds.back());
}

void hover(const Desktop& desktop, int runs, int x0, int x1, int y, int tip, int away) {
  std::vector<double> first;
  std::vector<double> next;
  const auto pointAt = [&](int x, std::vector<double>& after) {
    const auto seen = [&] { return desktop.picture(x - 16, tip - 4, 32, 8); };
    const auto before = seen();
    const auto start = Clock::now();
    desktop.moveTo(x, y);
    while (Clock::now() - start < kStill) {
      if (seen() != before) {
        after.push_back(Milliseconds(Clock::now() - start).count());
        return;
      }
      usleep(1000);
    }
  };
  for (int run = 0; run < runs; ++run) {
    desktop.moveTo(x0, away);
    usleep(1'000'000);
    pointAt(x0, first);
    usleep(300'000);
    pointAt(x1, next);
  }
  print("name of a tile", first, runs);
  print("name of its neighbour", next, runs);
}

void dodge(const Desktop& desktop, const std::string& pid, int runs, const xcb_rectangle_t& onto, int away) {
  xcb_connection_t* const connection = desktop.connection();
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, desktop.root(), onto.x, static_cast<int16_t>(away),
                    onto.width, onto.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_map_window(connection, window);
  desktop.moveTo(0, 0);
  desktop.watch(pid);
  std::vector<double> first;
  const auto moveTo = [&](int y) {
    const uint32_t place[] = {static_cast<uint32_t>(onto.x), static_cast<uint32_t>(y)};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
    xcb_flush(connection);
  };
  for (int run = 0; run < runs; ++run) {
    moveTo(away);
    desktop.waitUntilStill();
    const auto start = Clock::now();
    moveTo(onto.y);
    if (desktop.waitForDrawing(kStill)) first.push_back(Milliseconds(Clock::now() - start).count());
    desktop.waitUntilStill();
  }
  print("first frame of a dock that makes room", first, runs);
}

void strip(const Desktop& desktop, char** words) {
  const auto number = [&](int at) { return std::atoi(words[at]); };
  const int width = number(7);
  const int height = number(8);
  desktop.watch(words[0]);
  desktop.moveTo(number(1), number(3));
  desktop.waitUntilStill();
  desktop.moveTo(number(1), number(2));
  std::vector<uint8_t> pixels;
  while (desktop.waitForDrawing(20 * kOneFrame)) {
    const std::vector<uint8_t> picture = desktop.picture(number(5), number(6), width, height);
    pixels.insert(pixels.end(), picture.begin(), picture.end());
    while (desktop.waitForDrawing(kOneFrame)) {
    }
  }
  std::ofstream file(words[4], std::ios::binary);
  const auto rows = static_cast<int>(pixels.size()) / 3 / width;
  file << "P6 " << width << ' ' << rows << " 255\n";
  file.write(reinterpret_cast<const char*>(pixels.data()), static_cast<std::streamsize>(pixels.size()));
  std::printf("%d frames\n", rows / height);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 2 ? argv[1] : "";
  const auto number = [&](int at) { return std::atoi(argv[at]); };
  if (mode == "rest" && argc == 4) {
    rest(argv[2], number(3));
  } else if (mode == "move" && argc == 7) {
    move(Desktop(), argv[2], number(3), number(4), number(5), number(6));
  } else if (mode == "reveal" && argc == 7) {
    reveal(Desktop(), argv[2], number(3), number(4), number(5), number(6));
  } else if (mode == "hover" && argc == 9) {
    hover(Desktop(), number(3), number(4), number(5), number(6), number(7), number(8));
  } else if (mode == "dodge" && argc == 9) {
    const xcb_rectangle_t onto{static_cast<int16_t>(number(4)), static_cast<int16_t>(number(5)),
                               static_cast<uint16_t>(number(6)), static_cast<uint16_t>(number(7))};
    dodge(Desktop(), argv[2], number(3), onto, number(8));
  } else if (mode == "strip" && argc == 11) {
    strip(Desktop(), argv + 2);
  } else {
    std::fputs("usage: measure_shell rest|move|reveal|hover|dodge|strip PID …\n", stderr);
    return 2;
  }
}
