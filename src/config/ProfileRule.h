#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <array>
#include <optional>

#include "base/RawValues.h"
#include "base/RecordCodec.h"

namespace tarnwick {

/// When to switch to a profile by itself.
struct ProfileRule {
  enum class Trigger { Schedule, Focus };

  QUuid id;
  QUuid profileID;  ///< The profile to switch to.
  Trigger trigger = Trigger::Schedule;
  bool enabled = false;
  QList<int> days;       ///< Weekdays, 1 to 7 in the calendar's numbering.
  int startMinutes = 0;  ///< Minutes after midnight.
  int endMinutes = 0;    ///< Minutes after midnight.
  std::optional<QString> focusIdentifier;

  static constexpr auto fields();
  bool operator==(const ProfileRule&) const = default;
};

template <>
struct RawValues<ProfileRule::Trigger> {
  static constexpr std::array<RawValue<ProfileRule::Trigger>, 2> table{{
      {ProfileRule::Trigger::Schedule, "schedule"},
      {ProfileRule::Trigger::Focus, "focus"},
  }};
};

constexpr auto ProfileRule::fields() {
  return std::tuple(field::required("id", &ProfileRule::id), field::required("profileID", &ProfileRule::profileID),
                    field::required("trigger", &ProfileRule::trigger),
                    field::required("enabled", &ProfileRule::enabled), field::required("days", &ProfileRule::days),
                    field::required("startMinutes", &ProfileRule::startMinutes),
                    field::required("endMinutes", &ProfileRule::endMinutes),
                    field::optional("focusIdentifier", &ProfileRule::focusIdentifier));
}

}  // namespace tarnwick
