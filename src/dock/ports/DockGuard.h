#pragma once

#include <QString>

namespace tarnwick {

/// Stands by while settings of the system's dock are changed, and gives them back at once if the program dies without
/// doing so. A second safety: without one, the next start gives them back.
class DockGuard {
 public:
  virtual ~DockGuard() = default;

  /// From now on this recovery file, as it is there now, says what to give back. Again is harmless; a new file under
  /// the same name takes the place of the earlier one. Never throws.
  virtual void watch(const QString& recoveryFile) = 0;
  /// Everything has been given back.
  virtual void release() = 0;
};

/// Where none stands by.
class NoGuard final : public DockGuard {
 public:
  void watch(const QString&) override {}
  void release() override {}
  /// It holds nothing, so one is enough for all.
  static NoGuard& shared() {
    static NoGuard guard;
    return guard;
  }
};

}  // namespace tarnwick
