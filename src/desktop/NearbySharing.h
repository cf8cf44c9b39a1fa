#pragma once

#include <QList>
#include <QUrl>

namespace tarnwick {

/// Sends files to devices nearby. Main thread only.
class NearbySharing {
 public:
  virtual ~NearbySharing() = default;

  /// Whether this desktop can; the same for the whole run.
  virtual bool isAvailable() const = 0;
  /// Hands files over, to a window that asks for the device. Gives whether that has begun; never where it cannot.
  virtual bool send(const QList<QUrl>& files) = 0;
};

}  // namespace tarnwick
