#pragma once

#include <QString>
#include <functional>

#include "desktop/Capability.h"

namespace tarnwick {

/// The desktop's notification bubbles. Posting never blocks and never fails towards the caller.
class Notifications {
 public:
  virtual ~Notifications() = default;
  virtual Capability capability() const = 0;
  /// `unseen` is called, soon and once, when no service took it, so that it is not shown; it may be empty.
  virtual void post(const QString& title, const QString& body, std::function<void()> unseen) = 0;
};

}  // namespace tarnwick
