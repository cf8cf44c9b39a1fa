// Drives the pointer of a Wayland compositor and measures what is seen of the dock, from outside: each frame of the
// display is compared with the one before, within a rectangle that the pointer itself stays out of.
//
//   measure_layers reveal RUNS X EDGE_Y AWAY_Y LEFT TOP WIDTH HEIGHT      from the edge to the first frame of the dock
//   measure_layers strip FILE X EDGE_Y AWAY_Y LEFT TOP WIDTH HEIGHT       what is seen at each frame, as a PPM
//   measure_layers order RUNS LEFT TOP WIDTH HEIGHT PROGRAM ARG…          from the start of a program that has
//                                                                         something shown, and hidden by the next one
#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "wlr-screencopy-unstable-v1-client.h"
#include "wlr-virtual-pointer-unstable-v1-client.h"

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kStill = std::chrono::milliseconds(1500);  ///< A dock that has drawn nothing for so long is at rest.
constexpr auto kNever = std::chrono::seconds(3);
constexpr auto kBetween = std::chrono::milliseconds(150);  ///< The last frames of a reveal come so far apart at most.
/// As long as a reveal moves by a pixel or more in every frame; after that one frame and the next may look the same.
constexpr auto kMoving = std::chrono::milliseconds(300);
constexpr uint32_t kWidth = 1920;
constexpr uint32_t kHeight = 1080;

struct Place {
  int left, top, width, height;
};

struct Picture {
  std::vector<uint8_t> pixels;  ///< Blue, green, red and nothing, from the top.
  Clock::time_point moment;
};

class Desktop {
 public:
  Desktop() : display_(wl_display_connect(nullptr)) {
    if (!display_) return;
    static constexpr wl_registry_listener kListener{
        .global = [](void* data, wl_registry* registry, uint32_t name, const char* interface,
                     uint32_t version) { static_cast<Desktop*>(data)->bind(registry, name, interface, version); },
        .global_remove = [](void*, wl_registry*, uint32_t) {}};
    wl_registry_add_listener(wl_display_get_registry(display_), &kListener, this);
    wl_display_roundtrip(display_);
    if (isComplete()) pointer_ = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers_, nullptr);
    wl_display_roundtrip(display_);
  }
  bool isComplete() const { return display_ && shm_ && output_ && copies_ && pointers_; }

  void moveTo(int x, int y) {
    zwlr_virtual_pointer_v1_motion_absolute(pointer_, ++time_, static_cast<uint32_t>(x), static_cast<uint32_t>(y),
                                            kWidth, kHeight);
    zwlr_virtual_pointer_v1_frame(pointer_);
    wl_display_flush(display_);
  }

  /// The next frame in which anything of the display changed; nothing when none comes in time.
  std::optional<Picture> next(const Place& place, Clock::duration patience) {
    if (!frame_) ask(place);
    const auto end = Clock::now() + patience;
    while (!isReady_) {
      while (wl_display_prepare_read(display_) != 0) wl_display_dispatch_pending(display_);
      wl_display_flush(display_);
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
      pollfd ready{wl_display_get_fd(display_), POLLIN, 0};
      if (left.count() <= 0 || poll(&ready, 1, static_cast<int>(left.count())) <= 0) {
        wl_display_cancel_read(display_);
        return std::nullopt;
      }
      wl_display_read_events(display_);
      wl_display_dispatch_pending(display_);
    }
    zwlr_screencopy_frame_v1_destroy(frame_);
    frame_ = nullptr;
    Picture picture{{}, Clock::now()};
    const auto row = static_cast<std::ptrdiff_t>(place.width) * 4;
    for (int y = 0; y < place.height; ++y) {
      const int from = isUpsideDown_ ? place.height - 1 - y : y;
      const uint8_t* start = memory_ + static_cast<std::ptrdiff_t>(from) * stride_;
      picture.pixels.insert(picture.pixels.end(), start, start + row);
    }
    return picture;
  }

  /// The next frame in which something changed within the place.
  std::optional<Picture> nextChange(const Place& place, std::vector<uint8_t>& known, Clock::duration patience) {
    const auto end = Clock::now() + patience;
    while (auto picture = next(place, end - Clock::now())) {
      if (std::exchange(known, picture->pixels) != known) return picture;
    }
    return std::nullopt;
  }

 private:
  void bind(wl_registry* registry, uint32_t name, const char* interface, uint32_t version) {
    const auto is = [&](const wl_interface& wanted) { return std::strcmp(interface, wanted.name) == 0; };
    const auto take = [&](const wl_interface& wanted, uint32_t greatest) {
      return wl_registry_bind(registry, name, &wanted, std::min(version, greatest));
    };
    if (is(wl_shm_interface)) shm_ = static_cast<wl_shm*>(take(wl_shm_interface, 1));
    if (is(wl_output_interface) && !output_) output_ = static_cast<wl_output*>(take(wl_output_interface, 1));
    if (is(zwlr_screencopy_manager_v1_interface)) {
      copies_ = static_cast<zwlr_screencopy_manager_v1*>(take(zwlr_screencopy_manager_v1_interface, 2));
    }
    if (is(zwlr_virtual_pointer_manager_v1_interface)) {
      pointers_ = static_cast<zwlr_virtual_pointer_manager_v1*>(take(zwlr_virtual_pointer_manager_v1_interface, 1));
    }
  }

  void ask(const Place& place) {
    isReady_ = false;
    frame_ = zwlr_screencopy_manager_v1_capture_output_region(copies_, 0, output_, place.left, place.top, place.width,
                                                              place.height);
    static constexpr zwlr_screencopy_frame_v1_listener kListener{
        .buffer = [](void* data, zwlr_screencopy_frame_v1* frame, uint32_t format, uint32_t width, uint32_t height,
                     uint32_t stride) { static_cast<Desktop*>(data)->copy(frame, format, width, height, stride); },
        .flags =
            [](void* data, zwlr_screencopy_frame_v1*, uint32_t flags) {
              static_cast<Desktop*>(data)->isUpsideDown_ = (flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT) != 0;
            },
        .ready = [](void* data, zwlr_screencopy_frame_v1*, uint32_t, uint32_t,
                    uint32_t) { static_cast<Desktop*>(data)->isReady_ = true; },
        .failed =
            [](void*, zwlr_screencopy_frame_v1*) {
              std::fputs("the compositor gives no pictures\n", stderr);
              std::exit(1);
            },
        .damage = [](void*, zwlr_screencopy_frame_v1*, uint32_t, uint32_t, uint32_t, uint32_t) {},
        .linux_dmabuf = [](void*, zwlr_screencopy_frame_v1*, uint32_t, uint32_t, uint32_t) {},
        .buffer_done = [](void*, zwlr_screencopy_frame_v1*) {}};
    zwlr_screencopy_frame_v1_add_listener(frame_, &kListener, this);
    wl_display_roundtrip(display_);
  }

  void copy(zwlr_screencopy_frame_v1* frame, uint32_t format, uint32_t width, uint32_t height, uint32_t stride) {
    if (!buffer_) {
      const size_t size = static_cast<size_t>(stride) * height;
      const int file = memfd_create("frames", MFD_CLOEXEC);
      if (ftruncate(file, static_cast<off_t>(size)) != 0) std::exit(1);
      memory_ = static_cast<uint8_t*>(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0));
      wl_shm_pool* pool = wl_shm_create_pool(shm_, file, static_cast<int32_t>(size));
      buffer_ = wl_shm_pool_create_buffer(pool, 0, static_cast<int32_t>(width), static_cast<int32_t>(height),
                                          static_cast<int32_t>(stride), format);
      wl_shm_pool_destroy(pool);
      close(file);
      stride_ = stride;
    }
    zwlr_screencopy_frame_v1_copy_with_damage(frame, buffer_);
  }

  wl_display* display_;
  wl_shm* shm_ = nullptr;
  wl_output* output_ = nullptr;
  zwlr_screencopy_manager_v1* copies_ = nullptr;
  zwlr_virtual_pointer_manager_v1* pointers_ = nullptr;
  zwlr_virtual_pointer_v1* pointer_ = nullptr;
  zwlr_screencopy_frame_v1* frame_ = nullptr;
  wl_buffer* buffer_ = nullptr;
  uint8_t* memory_ = nullptr;
  std::ptrdiff_t stride_ = 0;
  bool isReady_ = false;
  bool isUpsideDown_ = false;
  uint32_t time_ = 0;
};

/// The pointer is away and the dock at rest out of sight; gives what is seen then.
std::vector<uint8_t> hide(Desktop& desktop, const Place& place, int x, int away) {
  std::vector<uint8_t> known;
  desktop.moveTo(x, away);
  while (desktop.nextChange(place, known, kStill)) {
  }
  return known;
}

void reveal(Desktop& desktop, int runs, int x, int edge, int away, const Place& place) {
  std::vector<double> first;
  double longestWait = 0;
  int frames = 0;
  for (int run = 0; run < runs; ++run) {
    std::vector<uint8_t> known = hide(desktop, place, x, away);
    const auto start = Clock::now();
    desktop.moveTo(x, edge);
    std::optional<Clock::time_point> begin;
    std::optional<Clock::time_point> last;
    while (const auto picture = desktop.nextChange(place, known, last ? Clock::duration(kBetween) : kNever)) {
      if (!last) {
        begin = picture->moment;
        first.push_back(Milliseconds(picture->moment - start).count());
      } else if (picture->moment - *begin < kMoving) {
        longestWait = std::max(longestWait, Milliseconds(picture->moment - *last).count());
      }
      last = picture->moment;
      ++frames;
    }
  }
  if (first.size() < 2) {
    std::puts("the dock did not come");
    return;
  }
  // The toolkit loads the shapes of the pointer when it first meets a window of the program.
  const double veryFirst = first.front();
  first.erase(first.begin());
  std::ranges::sort(first);
  std::printf(
      "reveal, %zu times: first frame after %.1f ms (median), %.1f (worst), %.1f (once before); %.0f frames each, at "
      "most %.1f ms apart while it moves\n",
      first.size(), first[first.size() / 2], first.back(), veryFirst, static_cast<double>(frames) / runs, longestWait);
}

void strip(Desktop& desktop, const char* path, int x, int edge, int away, const Place& place) {
  std::vector<uint8_t> known = hide(desktop, place, x, away);
  desktop.moveTo(x, edge);
  std::vector<uint8_t> all;
  while (const auto picture = desktop.nextChange(place, known, all.empty() ? Clock::duration(kNever) : kBetween)) {
    for (size_t at = 0; at + 3 < picture->pixels.size(); at += 4) {
      for (const size_t channel : {2, 1, 0}) all.push_back(picture->pixels[at + channel]);
    }
  }
  const auto rows = all.size() / 3 / static_cast<size_t>(place.width);
  std::ofstream file(path, std::ios::binary);
  file << "P6 " << place.width << ' ' << rows << " 255\n";
  file.write(reinterpret_cast<const char*>(all.data()), static_cast<std::streamsize>(all.size()));
  std::printf("%zu frames\n", rows / static_cast<size_t>(place.height));
}

pid_t start(char* const* command) {
  const pid_t pid = fork();
  if (pid != 0) return pid;
  execvp(command[0], command);
  _exit(127);
}

void order(Desktop& desktop, int runs, const Place& place, char* const* command) {
  std::vector<double> took;
  for (int run = 0; run < runs; ++run) {
    std::vector<uint8_t> known = hide(desktop, place, kWidth / 4, kHeight / 4);
    const auto begin = Clock::now();
    const pid_t shows = start(command);
    const auto picture = desktop.nextChange(place, known, kNever);
    if (picture) took.push_back(Milliseconds(picture->moment - begin).count());
    waitpid(shows, nullptr, 0);
    const pid_t hides = start(command);
    waitpid(hides, nullptr, 0);
  }
  if (took.size() < 2) {
    std::puts("nothing came");
    return;
  }
  const double first = took.front();
  took.erase(took.begin());
  std::ranges::sort(took);
  std::printf("order, %zu times: seen after %.1f ms (median), %.1f (worst), %.1f (once before)\n", took.size(),
              took[took.size() / 2], took.back(), first);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc >= 8 ? argv[1] : "";
  const bool isOfPointer = argc == 10 && (mode == "reveal" || mode == "strip");
  if (!isOfPointer && mode != "order") {
    std::fputs(
        "usage: measure_layers reveal|strip RUNS|FILE X EDGE_Y AWAY_Y LEFT TOP WIDTH HEIGHT\n"
        "       measure_layers order RUNS LEFT TOP WIDTH HEIGHT PROGRAM ARG…\n",
        stderr);
    return 2;
  }
  const auto number = [&](int at) { return std::atoi(argv[at]); };
  Desktop desktop;
  if (!desktop.isComplete()) {
    std::fputs("no Wayland compositor that gives pictures and takes a pointer\n", stderr);
    return 1;
  }
  if (mode == "order") {
    order(desktop, number(2), {number(3), number(4), number(5), number(6)}, argv + 7);
    return 0;
  }
  const Place place{number(6), number(7), number(8), number(9)};
  if (mode == "reveal") {
    reveal(desktop, number(2), number(3), number(4), number(5), place);
  } else {
    strip(desktop, argv[2], number(3), number(4), number(5), place);
  }
}
