#pragma once

#include <QString>

namespace tarnwick {

/// Whether this desktop has a facility, asked at run time. Where it hasn't, one finished sentence says why.
struct Capability {
  bool available = true;
  QString reason;  ///< Empty when available.

  static Capability yes() { return {}; }
  static Capability no(const QString& why) { return {false, why}; }
  explicit operator bool() const { return available; }
  bool operator==(const Capability&) const = default;
};

}  // namespace tarnwick
