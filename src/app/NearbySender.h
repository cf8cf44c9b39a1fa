#pragma once

#include <QString>

#include "apps/AppEnvironment.h"
#include "apps/LaunchEnvironment.h"
#include "desktop/NearbySharing.h"

namespace tarnwick {

/// Passes files to the program with which this desktop sends them; available where one is installed.
class NearbySender final : public NearbySharing {
 public:
  /// `variables` are what the program is started with.
  NearbySender(const AppEnvironment& environment, LaunchEnvironment variables);

  bool isAvailable() const override { return !program_.isEmpty(); }
  bool send(const QList<QUrl>& files) override;

 private:
  QString program_;
  LaunchEnvironment variables_;
};

}  // namespace tarnwick
