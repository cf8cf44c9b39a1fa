#pragma once

#include <QtGlobal>

namespace tarnwick {

/// Which way a switch between two profiles moves, the profiles lying on a ring.
struct ProfileDirection {
  /// Whether the shorter way from one index to the other of `count` leads forward. Where both ways are as long, the
  /// larger index lies forward; no way at all counts as forward.
  static bool isForward(qsizetype from, qsizetype to, qsizetype count);
};

}  // namespace tarnwick
