#pragma once

#include <QCalendar>
#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <QUuid>
#include <optional>

#include "config/DockProfile.h"
#include "config/ProfileRule.h"

namespace tarnwick {

/// When a profile becomes active by itself. Pure. Weekdays are numbered from Sunday, which is 1, to Saturday, 7, as in
/// the settings file.
struct ProfileRules {
  /// A moment as rules see it.
  struct Components {
    int weekday = 1;
    int minutes = 0;  ///< After midnight.

    bool operator==(const Components&) const = default;
  };

  /// In the date's own time zone.
  static Components components(const QDateTime& date, const QCalendar& calendar = QCalendar());

  /// A rule in one line for Settings, the days in the order of their numbers and named as the locale does.
  static QString describe(const ProfileRule& rule, const QLocale& locale = QLocale());

  /// The profile of the first rule that holds now; nothing where none does, which leaves the active profile alone.
  /// The weekday is that of `now` also in the part of a window that lies after midnight. A rule whose profile is gone
  /// is passed over.
  static std::optional<QUuid> matching(const QList<ProfileRule>& rules, const QList<DockProfile>& profiles,
                                       const Components& now);
};

}  // namespace tarnwick
