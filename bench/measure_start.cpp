// Starts a program several times and measures the time from exec to its first mapped top-level window, by the server's own
// notification. The window manager reparents, so a mapped client is looked for in the client list.
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

bool waitForDock(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t clientList) {
  const xcb_get_property_cookie_t cookie =
      xcb_get_property(connection, 0, root, clientList, XCB_ATOM_WINDOW, 0, 64);
  xcb_get_property_reply_t* reply = xcb_get_property_reply(connection, cookie, nullptr);
  const bool there = reply && xcb_get_property_value_length(reply) > 0;
  std::free(reply);
  return there;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection) != 0) return 1;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  constexpr const char* kName = "_NET_CLIENT_LIST";
  const auto atomCookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(std::strlen(kName)), kName);
  xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(connection, atomCookie, nullptr);
  const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
  xcb_flush(connection);

  std::vector<double> times;
  for (int run = 0; run < 10; ++run) {
    const auto start = Clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
      execv(argv[1], argv + 1);
      _exit(127);
    }
    // The window manager announces a client once it is mapped; each announcement wakes us.
    while (!waitForDock(connection, root, atom->atom)) std::free(xcb_wait_for_event(connection));
    times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    while (waitForDock(connection, root, atom->atom)) std::free(xcb_wait_for_event(connection));
  }
  times.erase(times.begin());  // The first start reads the program from the disk.
  std::ranges::sort(times);
  std::printf("start to first mapped window: median %.1f ms, best %.1f, worst %.1f (%zu warm starts)\n",
              times[times.size() / 2], times.front(), times.back(), times.size());
  std::free(atom);
  xcb_disconnect(connection);
}
