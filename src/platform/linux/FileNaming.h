#pragma once

#include <QString>

namespace tarnwick {

/// Names for files whose own name is taken.
struct FileNaming {
  /// Most file systems allow so many bytes in a name.
  static constexpr qsizetype kMostBytes = 255;
  /// After so many names that were taken something else is wrong.
  static constexpr int kMostAttempts = 10'000;

  /// The name to try at the `attempt`-th time, from 1 on: the name itself, then "name (2).ext", "name (3).ext"; one
  /// that ends in a number already counts on from it. A name above `most` bytes loses letters before its ending.
  static QString candidate(const QString& name, bool isFolder, int attempt, qsizetype most = kMostBytes);
};

}  // namespace tarnwick
