#pragma once

#include <QString>
#include <functional>

#include "apps/LaunchRequest.h"

namespace tarnwick {

/// Reaches applications that can be started and brought forward by a message, in place of a command. Main thread only.
class ApplicationActivation {
 public:
  ApplicationActivation() = default;
  virtual ~ApplicationActivation() = default;
  ApplicationActivation(const ApplicationActivation&) = delete;
  ApplicationActivation& operator=(const ApplicationActivation&) = delete;

  /// Sends `request`, whose startup id is filled in, to the application of that desktop entry. False where nothing can
  /// be sent; after true, `unreachable` is called when it turns out that no program was there to take it, and never
  /// once this object is gone.
  virtual bool activate(const QString& application, const LaunchRequest& request,
                        std::function<void()> unreachable) = 0;
};

/// For places without a session bus: every application is started by its command.
class NoActivation final : public ApplicationActivation {
 public:
  bool activate(const QString&, const LaunchRequest&, std::function<void()>) override { return false; }
};

}  // namespace tarnwick
