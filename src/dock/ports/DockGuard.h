#pragma once

#include <QString>

namespace tarnwick {

/// Stands by while settings of the system's dock are changed, and gives them back at once if the program dies without
/// doing so. A second safety: without one, the next start gives them back.
class DockGuard {
 public:
  virtual ~DockGuard() = default;

  /// From now on a recovery file in this folder means that something is changed. Again is harmless. Never throws.
  virtual void watch(const QString& directory) = 0;
  /// Everything has been given back.
  virtual void release() = 0;
};

}  // namespace tarnwick
