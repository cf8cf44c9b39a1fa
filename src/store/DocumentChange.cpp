#include "store/DocumentChange.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <span>

#include "base/DomainError.h"
#include "store/DocumentEdits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

/// Goes over what differs between two values of a kind. Each place must hold the new value still; it gets the old one.
struct TakingBack {
  bool stands = true;

  template <class T>
  void value(const T& before, const T& after, T& now) {
    if (before == after) return;
    stands = stands && now == after;
    now = before;
  }

  void value(const QMap<QString, QString>& before, const QMap<QString, QString>& after, QMap<QString, QString>& now) {
    if (before == after) return;
    QStringList keys = before.keys() + after.keys();
    keys.removeDuplicates();
    const auto in = [](const QMap<QString, QString>& map, const QString& key) {
      return map.contains(key) ? std::optional(map.value(key)) : std::nullopt;
    };
    for (const QString& key : std::as_const(keys)) {
      if (in(before, key) == in(after, key)) continue;
      stands = stands && in(now, key) == in(after, key);
      before.contains(key) ? void(now.insert(key, before.value(key))) : void(now.remove(key));
    }
  }

  void value(const DesktopOptions& before, const DesktopOptions& after, DesktopOptions& now) {
    record(before, after, now);
  }

  void value(const QList<DockProfile>& before, const QList<DockProfile>& after, QList<DockProfile>& now) {
    if (before != after) list(before, after, now);
  }
  void value(const QList<DockWidget>& before, const QList<DockWidget>& after, QList<DockWidget>& now) {
    if (before != after) list(before, after, now);
  }
  void value(const QList<TodoItem>& before, const QList<TodoItem>& after, QList<TodoItem>& now) {
    if (before != after) list(before, after, now);
  }

  /// Things with identities. What neither side knows came later and stays, behind the rest.
  template <class T>
  void list(const QList<T>& before, const QList<T>& after, QList<T>& now) {
    const auto find = [](auto& things, const QUuid& id) { return std::ranges::find(things, id, &T::id); };
    QList<T> result;
    for (const T& old : before) {
      const auto brought = find(after, old.id);
      const auto there = find(now, old.id);
      if (brought == after.end()) {
        stands = stands && there == now.end();
        result.append(old);
      } else if (there != now.end()) {
        T merged = *there;
        record(old, *brought, merged);
        result.append(merged);
      } else {
        // It was there on both sides, and was removed since: removed it stays.
        stands = stands && *brought == old;
      }
    }
    QList<QUuid> order;
    for (const T& each : std::as_const(now)) {
      const auto brought = find(after, each.id);
      const bool isOld = find(before, each.id) != before.end();
      if (brought != after.end()) order.append(each.id);
      if (isOld) continue;
      if (brought == after.end()) {
        result.append(each);
      } else {
        stands = stands && *brought == each;
      }
    }
    for (const T& brought : after) {
      const bool isGone = find(now, brought.id) == now.end();
      stands = stands && !(isGone && find(before, brought.id) == before.end());
    }
    if (std::ranges::equal(before, after, {}, &T::id, &T::id)) {
      // Nothing came, went or moved with the change: the order is as it stands there.
      std::ranges::stable_sort(result, {}, [&](const T& each) { return find(now, each.id) - now.begin(); });
    } else {
      stands = stands && keepsOrder(after, order);
    }
    now = result;
  }

  template <class T>
  static bool keepsOrder(const QList<T>& list, const QList<QUuid>& order) {
    qsizetype at = 0;
    for (const QUuid& id : order) {
      const auto found = std::find_if(list.begin() + at, list.end(), [&](const T& each) { return each.id == id; });
      if (found == list.end()) return false;
      at = found - list.begin() + 1;
    }
    return true;
  }

  template <class T>
  void record(const T& before, const T& after, T& now) {
    const auto each = [&](const auto& field) { value(before.*field.member, after.*field.member, now.*field.member); };
    std::apply([&](const auto&... field) { (each(field), ...); }, T::fields());
  }
};

// --- What goes on by itself -----------------------------------------------------------------------------------------

/// Options that mean something together only.
using Group = std::span<const QLatin1StringView>;
constexpr std::array kRunning{option::deadline, option::remaining, option::started,
                              option::elapsed,  option::phase,     option::sessions};
constexpr std::array kDrunk{option::glasses, option::day};
constexpr std::array kReminded{option::lastReminder};
constexpr std::array kWallpaper{option::lastWallpaperChange};
constexpr std::array kGroups{Group(kRunning), Group(kDrunk), Group(kReminded), Group(kWallpaper)};
/// Lists of days.
constexpr std::array kDays{option::history, option::completedDays};

bool agree(const DockWidget& one, const DockWidget& other, Group keys) {
  return std::ranges::all_of(keys, [&](QLatin1StringView key) {
    return one.options.contains(key) == other.options.contains(key) &&
           one.options.value(key) == other.options.value(key);
  });
}

void take(DockWidget& widget, const DockWidget& from, QLatin1StringView key) {
  if (from.options.contains(key))
    widget.options.insert(key, from.options.value(key));
  else
    widget.options.remove(key);
}

QSet<QString> daysOf(const DockWidget& widget, QLatin1StringView key) {
  const QStringList days = widget.options.value(key).split(u',', Qt::SkipEmptyParts);
  return {days.begin(), days.end()};
}

/// Gives both sides of a change what has gone on since, so that it is none of what differs between them.
void goOn(DockWidget* before, DockWidget& after, const DockWidget& now) {
  for (const QLatin1StringView key : kDays) {
    if (agree(after, now, std::array{key})) continue;
    if (before) {
      const QSet<QString> brought = daysOf(after, key);
      const QSet<QString> there = daysOf(now, key);
      const QSet<QString> days = daysOf(*before, key) + (there - brought) - (brought - there);
      QStringList sorted(days.begin(), days.end());
      sorted.sort();
      before->options.insert(key, sorted.join(u','));
    }
    take(after, now, key);
  }
  for (const Group& group : kGroups) {
    if (agree(after, now, group)) continue;
    for (const QLatin1StringView key : group) {
      if (before) take(*before, now, key);
      take(after, now, key);
    }
    // What runs on does so by the duration that it has.
    if (before && before->options.value(option::minutes) != after.options.value(option::minutes))
      for (const QLatin1StringView key : {option::deadline, option::remaining}) before->options.remove(key);
  }
}

/// Whether a rule of that document may have chosen a profile.
bool isRuled(const DockConfiguration& config, const std::optional<QUuid>& profile) {
  return std::ranges::any_of(config.desktop.profileRules,
                             [&](const ProfileRule& rule) { return rule.enabled && rule.profileID == profile; });
}

}  // namespace

/// The change as if it had brought what has gone on since.
DocumentChange DocumentChange::goneOn(const DockConfiguration& config) const {
  DocumentChange change = *this;
  for (const DockProfile& profile : config.profiles) {
    for (const DockWidget& now : profile.widgets) {
      const DockWidget* after = DocumentEdits::find(after_, now.id);
      if (!after || after->options == now.options) continue;
      goOn(DocumentEdits::find(change.before_, now.id), *DocumentEdits::find(change.after_, now.id), now);
    }
  }
  const auto leads = [&](const DockConfiguration& rules) { return isRuled(rules, config.activeProfileID); };
  if (config.activeProfileID != after_.activeProfileID && (leads(config) || leads(before_) || leads(after_)))
    change.before_.activeProfileID = change.after_.activeProfileID = config.activeProfileID;
  return change;
}

bool DocumentChange::stands(const DockConfiguration& config) const {
  TakingBack walk;
  DockConfiguration there = config;
  const DocumentChange change = goneOn(config);
  walk.record(change.before_, change.after_, there);
  return walk.stands;
}

std::optional<DockConfiguration> DocumentChange::takenBack(const DockConfiguration& config) const {
  TakingBack walk;
  DockConfiguration there = config;
  const DocumentChange change = goneOn(config);
  walk.record(change.before_, change.after_, there);
  if (!walk.stands) return std::nullopt;
  // The one that a rule chose may have gone with what is taken back.
  if (std::ranges::find(there.profiles, there.activeProfileID, &DockProfile::id) == there.profiles.end())
    there.activeProfileID = before_.activeProfileID;
  try {
    there.validate();
  } catch (const DomainError&) {
    return std::nullopt;
  }
  return there;
}

}  // namespace tarnwick
