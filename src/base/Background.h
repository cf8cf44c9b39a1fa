#pragma once

#include <functional>

namespace tarnwick {

/// Threads for reading what may stall, such as a folder on a server that does not answer. They are never waited for:
/// work holds only what it shares, and its answer checks whether anybody still wants it. OrderedWork, which is waited
/// for, is done on threads of their own kind.
struct Background {
  enum class Lane {
    Reading,
    Pictures,   ///< One after the other, so that a folder full of them does not take every processor.
    Ordered,    ///< For OrderedWork alone. Each of its queues has at most one thread, and never waits for one.
    Computing,  ///< For work that waits for nothing, such as decoding what was received.
    Patient     ///< One after the other, in order. Its thread ends with the last.
  };

  /// Runs `work` on another thread. Called on the main thread, but for Ordered.
  static void run(Lane lane, std::function<void()> work);
  /// Runs `work` while neither the processors nor the disk have anything else to do, and waits for it. The thread on
  /// which it runs must share no lock with the main thread, which could wait long for it: it answers nothing and starts
  /// nothing. Not on the main thread.
  static void idly(const std::function<void()>& work);
  /// Runs `answer` on the main thread, in a turn of its event loop. Any thread.
  static void answer(std::function<void()> answer);
  /// Gives memory back to the system that was needed for a moment, such as for the pixels of a large picture of which
  /// only a small one is kept. Any thread; worth its time after much of it only.
  static void giveBackMemory();
};

}  // namespace tarnwick
