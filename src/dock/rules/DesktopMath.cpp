#include "dock/rules/DesktopMath.h"

#include <QHash>

namespace tarnwick {
namespace {

/// Older identity to the current one.
using Identities = QHash<QString, QString>;

Identities identitiesOf(const QList<Screen>& screens) {
  Identities identities;
  for (const Screen& screen : screens) {
    if (!screen.legacyId.isEmpty() && screen.legacyId != screen.id) identities.insert(screen.legacyId, screen.id);
  }
  return identities;
}

bool rename(QString& identity, const Identities& identities) {
  const auto current = identities.constFind(identity);
  if (current == identities.constEnd()) return false;
  identity = *current;
  return true;
}

bool rename(QStringList& list, const Identities& identities) {
  bool changed = false;
  for (QString& identity : list) changed = rename(identity, identities) || changed;
  if (changed) list.removeDuplicates();
  return changed;
}

template <typename Value>
bool renameKeys(QMap<QString, Value>& map, const Identities& identities) {
  bool changed = false;
  for (auto identity = identities.cbegin(); identity != identities.cend(); ++identity) {
    const auto old = map.constFind(identity.key());
    if (old == map.constEnd()) continue;
    const Value value = *old;
    map.remove(identity.key());
    if (!map.contains(identity.value())) map.insert(identity.value(), value);
    changed = true;
  }
  return changed;
}

}  // namespace

QStringList DesktopMath::selectedDisplays(const QString& choice, const QStringList& connected,
                                          const QStringList& attached, const QString& fallback) {
  if (choice == QLatin1String("all")) return connected;
  if (choice == QLatin1String("attached")) {
    for (const QString& remembered : attached) {
      if (connected.contains(remembered)) return {remembered};
    }
    return {};
  }
  if (connected.contains(choice)) return {choice};
  if (connected.isEmpty()) return {};
  return {fallback.isEmpty() ? connected.first() : fallback};
}

bool DesktopMath::covers(const QRectF& frame, const QRectF& screen) {
  constexpr double by = kCoverTolerance;
  return frame.contains(screen.adjusted(by, by, -by, -by));
}

std::optional<DockConfiguration> DesktopMath::migrated(const DockConfiguration& config, const QList<Screen>& screens) {
  const Identities identities = identitiesOf(screens);
  if (identities.isEmpty()) return std::nullopt;
  DockConfiguration current = config;
  bool changed = rename(current.display, identities);
  changed = renameKeys(current.floatingPositions, identities) || changed;
  changed = rename(current.desktop.attachedDisplays, identities) || changed;
  changed = renameKeys(current.desktop.displayNames, identities) || changed;
  changed = renameKeys(current.desktop.displayProfiles, identities) || changed;
  if (!changed) return std::nullopt;
  return current;
}

QStringList DesktopMath::remembered(const QStringList& attached, const QList<Screen>& screens) {
  QStringList all = attached;
  for (const Screen& screen : screens) {
    if (!all.contains(screen.id)) all.append(screen.id);
  }
  return all;
}

}  // namespace tarnwick
