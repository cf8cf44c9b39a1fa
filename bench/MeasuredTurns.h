#pragma once

#include <QtGlobal>
#include <functional>
#include <optional>

namespace tarnwick {

/// The turns of this thread's event loop, each of which a frame would have to wait for: from where the loop looks for
/// events to where it has none left. It is run by this class itself, which looks anew ten thousand times a second, so
/// that no turn begins late. Two figures are kept of the longest: the time that went by, with what was waited for (a
/// lock, the X server, another program that had the processor), and the processor's time of this thread.
class MeasuredTurns {
 public:
  /// Turns until this holds, which is asked between them. False after so many seconds.
  bool waitUntil(const std::function<bool()>& holds, double seconds = 120);
  void reset() { longest_ = mostWork_ = 0; }
  /// In milliseconds.
  double longest() const { return longest_; }
  double mostWork() const { return mostWork_; }

  /// The processor's time of this thread so far, in milliseconds.
  static double worked();

 private:
  double longest_ = 0;
  double mostWork_ = 0;
};

/// The memory of this process, in KiB.
struct MeasuredMemory {
  /// What it has for itself, and its share of what it has with others.
  static qint64 share();
  /// The most that was resident since `resetPeak`, or since the start where the system cannot begin anew.
  static qint64 peak();
  static qint64 resident();
  static void resetPeak();
};

}  // namespace tarnwick
