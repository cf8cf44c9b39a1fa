#include "store/DocumentChange.h"

#include <algorithm>

#include "base/DomainError.h"

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

}  // namespace

bool DocumentChange::stands(const DockConfiguration& config) const {
  TakingBack walk;
  DockConfiguration there = config;
  walk.record(before_, after_, there);
  return walk.stands;
}

std::optional<DockConfiguration> DocumentChange::takenBack(const DockConfiguration& config) const {
  TakingBack walk;
  DockConfiguration there = config;
  walk.record(before_, after_, there);
  if (!walk.stands) return std::nullopt;
  try {
    there.validate();
  } catch (const DomainError&) {
    return std::nullopt;
  }
  return there;
}

}  // namespace tarnwick
