#pragma once

#include <QString>

#include "desktop/Capability.h"

namespace tarnwick {

/// The desktop's notification bubbles. Posting never blocks and never fails towards the caller.
class Notifications {
 public:
  virtual ~Notifications() = default;
  virtual Capability capability() const = 0;
  virtual void post(const QString& title, const QString& body) = 0;
};

}  // namespace tarnwick
