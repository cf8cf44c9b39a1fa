#pragma once

#include <QVariantList>
#include <vector>

#include "platform_dbus/FakeService.h"

namespace tarnwick {

/// The inhibitor locks of a login manager: gives out the one end of a pipe for each lock and sees by the other whether
/// it is still held. Must not outlive `login`.
class FakeLocks {
 public:
  explicit FakeLocks(FakeService& login);
  ~FakeLocks();
  FakeLocks(const FakeLocks&) = delete;
  FakeLocks& operator=(const FakeLocks&) = delete;

  int held() const;
  /// What was asked for last: what, who, why, mode.
  const QVariantList& last() const { return last_; }

 private:
  std::vector<int> ends_;
  QVariantList last_;
};

}  // namespace tarnwick
