#pragma once

#include <QDBusConnection>
#include <chrono>

#include "services/ports/LocationSource.h"

namespace tarnwick {

/// Where GeoClue says that the machine is, to the accuracy of a city. It starts the service where that can be started,
/// and has a client there only while something is asked.
class GeoClueLocation final : public LocationSource {
 public:
  static constexpr std::chrono::seconds kPatience{15};

  /// `system`: the system bus.
  explicit GeoClueLocation(const QDBusConnection& system, std::chrono::milliseconds patience = kPatience)
      : system_(system), patience_(patience) {}

  QCoro::Task<Coordinate> locate(std::stop_token stop) override;

 private:
  QDBusConnection system_;
  std::chrono::milliseconds patience_;
};

}  // namespace tarnwick
