#include "store/SettingsChange.h"

#include <QSet>
#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Goes over what differs between two values of a kind, naming it in `fields` and, where `now` is given, giving it its
/// old value there.
struct Walk {
  QStringList* fields = nullptr;

  void differs(const QString& name) const {
    if (fields) fields->append(name);
  }

  template <class T>
  void value(const QString& name, const T& before, const T& after, T* now) const {
    if (before == after) return;
    differs(name);
    if (now && *now == after) *now = before;
  }

  template <class T>
  void value(const QString& name, const QMap<QString, T>& before, const QMap<QString, T>& after,
             QMap<QString, T>* now) const {
    if (before == after) return;
    const auto in = [](const QMap<QString, T>& map, const QString& key) {
      const auto at = map.constFind(key);
      return at == map.constEnd() ? std::optional<T>() : *at;
    };
    QStringList keys = before.keys() + after.keys();
    keys.removeDuplicates();
    for (const QString& key : std::as_const(keys)) {
      const std::optional<T> old = in(before, key);
      if (old == in(after, key)) continue;
      differs(name + u'.' + key);
      if (!now || in(*now, key) != in(after, key)) continue;
      old ? void(now->insert(key, *old)) : void(now->remove(key));
    }
  }

  void value(const QString& name, const DesktopOptions& before, const DesktopOptions& after,
             DesktopOptions* now) const {
    if (before != after) record(name + u'.', before, after, now);
  }

  void value(const QString& name, const QList<DockProfile>& before, const QList<DockProfile>& after,
             QList<DockProfile>* now) const;

  template <class T>
  void record(const QString& prefix, const T& before, const T& after, T* now) const {
    const auto each = [&](const auto& field) {
      value(prefix + field.key, before.*field.member, after.*field.member, now ? &(now->*field.member) : nullptr);
    };
    std::apply([&](const auto&... field) { (each(field), ...); }, T::fields());
  }
};

// --- Profiles -------------------------------------------------------------------------------------------------------

using Profiles = QList<DockProfile>;

qsizetype placeOf(const Profiles& profiles, const QUuid& id) {
  const auto at = std::ranges::find(profiles, id, &DockProfile::id);
  return at == profiles.end() ? -1 : at - profiles.begin();
}

/// The identities that both hold, in the order of the first.
QList<QUuid> shared(const Profiles& order, const Profiles& other) {
  QList<QUuid> ids;
  for (const DockProfile& profile : order)
    if (placeOf(other, profile.id) >= 0) ids << profile.id;
  return ids;
}

QSet<QUuid> tilesOf(const Profiles& profiles) {
  QSet<QUuid> ids;
  for (const DockProfile& profile : profiles)
    for (const DockWidget& widget : profile.widgets) ids << widget.id;
  return ids;
}

void bringBack(Profiles& now, const DockProfile& profile, qsizetype place) {
  if (placeOf(now, profile.id) >= 0 || now.size() >= DockConfiguration::kMostProfiles) return;
  if (tilesOf(now).intersects(tilesOf({profile}))) return;
  now.insert(std::min(place, now.size()), profile);
}

void takeAway(Profiles& now, const DockProfile& profile) {
  const qsizetype at = placeOf(now, profile.id);
  if (at >= 0 && now.size() > 1 && tilesOf({now[at]}) == tilesOf({profile})) now.removeAt(at);
}

/// Those of `ids` take each other's places until they are in that order.
void arrange(Profiles& now, const QList<QUuid>& ids) {
  const Profiles old = now;
  qsizetype next = 0;
  for (DockProfile& slot : now)
    if (ids.contains(slot.id)) slot = old[placeOf(old, ids[next++])];
}

void Walk::value(const QString& name, const Profiles& before, const Profiles& after, Profiles* now) const {
  const QList<QUuid> order = shared(before, after);
  if (const QList<QUuid> later = shared(after, before); order != later) {
    differs(name + ".order"_L1);
    if (now && shared(*now, before) == later) arrange(*now, order);
  }
  for (const DockProfile& profile : after) {
    const qsizetype at = placeOf(before, profile.id);
    const qsizetype there = now ? placeOf(*now, profile.id) : -1;
    const QString place = name + u'.' + profile.id.toString();
    if (at >= 0) {
      value(place + ".name"_L1, before[at].name, profile.name, there < 0 ? nullptr : &(*now)[there].name);
      continue;
    }
    differs(place);
    if (now) takeAway(*now, profile);
  }
  for (qsizetype i = 0; i < before.size(); ++i) {
    if (placeOf(after, before[i].id) >= 0) continue;
    differs(name + u'.' + before[i].id.toString());
    if (now) bringBack(*now, before[i], i);
  }
}

}  // namespace

SettingsChange::SettingsChange(const DockConfiguration& before, const DockConfiguration& after)
    : before_(before), after_(after) {
  Walk{&fields_}.record<DockConfiguration>({}, before_, after_, nullptr);
}

void SettingsChange::goOn(const SettingsChange& later) {
  DockConfiguration before = later.before_;
  takeBack(before);
  *this = SettingsChange(before, later.after_);
}

void SettingsChange::takeBack(DockConfiguration& config) const { Walk{}.record({}, before_, after_, &config); }

}  // namespace tarnwick
