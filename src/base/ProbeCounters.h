#pragma once

#include <QMap>
#include <QString>
#include <atomic>

namespace tarnwick {

/// How often the expensive paths of the program ran, by name. Off unless the program measures itself, and then a call
/// costs one test of a flag. Callable from every thread.
class ProbeCounters {
 public:
  /// Adds one to the counter of a name. `name` is a literal.
  static void count(const char* name) {
    if (armed_.load(std::memory_order_relaxed)) bump(name);
  }

  static void setArmed(bool armed) { armed_.store(armed, std::memory_order_relaxed); }
  static bool isArmed() { return armed_.load(std::memory_order_relaxed); }
  /// Sets every counter to 0; the names stay.
  static void reset();
  static QMap<QString, qint64> snapshot();

 private:
  static void bump(const char* name);

  static inline std::atomic<bool> armed_{false};
};

}  // namespace tarnwick
