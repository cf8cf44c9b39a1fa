#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

/// The display as a person at it has it, for programs that measure others from outside: a mouse, a keyboard, and what
/// is seen. Coordinates are pixels of the display.
class MeasuredDesktop {
 public:
  using Clock = std::chrono::steady_clock;
  template <class T>
  using Reply = std::unique_ptr<T, decltype(&std::free)>;
  template <class T>
  static Reply<T> own(T* reply) {
    return {reply, &std::free};
  }

  MeasuredDesktop();
  ~MeasuredDesktop();
  MeasuredDesktop(const MeasuredDesktop&) = delete;
  MeasuredDesktop& operator=(const MeasuredDesktop&) = delete;

  xcb_connection_t* connection() const { return connection_; }
  xcb_window_t root() const { return root_; }

  /// Moves as a mouse does, which tells ways and not places.
  void moveTo(int x, int y) const;
  void moveBy(int x, int y) const;
  void click(int x, int y) const;
  /// Presses a key by its number of the keyboard, while another is held if one is told.
  void tap(uint8_t key, uint8_t held = 0) const;

  /// From now on what is drawn on the window is told.
  void watchDrawing(xcb_window_t window) const;
  bool isDrawing(const xcb_generic_event_t& event) const { return (event.response_type & 0x7f) == damageNotify_; }
  /// The next event, or none within the time.
  Reply<xcb_generic_event_t> nextEvent(Clock::time_point end) const;

  xcb_atom_t atom(const char* name) const;
  std::vector<uint32_t> words(xcb_window_t window, const char* name) const;
  bool belongsTo(xcb_window_t window, const std::string& pid) const;
  /// The program's windows that the window manager knows.
  std::vector<xcb_window_t> windowsOf(const std::string& pid) const;

 private:
  void fake(uint8_t type, uint8_t detail) const;

  xcb_connection_t* connection_;
  xcb_window_t root_;
  int damageNotify_;
};
