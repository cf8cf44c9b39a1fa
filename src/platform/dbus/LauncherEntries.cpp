#include "platform/dbus/LauncherEntries.h"

#include <QDBusArgument>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/dbus/BusService.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kLauncherEntry = "com.canonical.Unity.LauncherEntry"_L1;
constexpr auto kScheme = "application://"_L1;
constexpr auto kBusName = "org.freedesktop.DBus"_L1;
constexpr auto kBusPath = "/org/freedesktop/DBus"_L1;

QString desktopIdOf(const QString& address) {
  if (!address.startsWith(kScheme)) return {};
  const QString id = address.sliced(kScheme.size());
  return id.endsWith(".desktop"_L1) ? id.chopped(8) : id;
}

LauncherHint hintOf(const QVariantMap& properties) {
  LauncherHint hint;
  if (properties.value(u"count-visible"_s).toBool()) hint.count = properties.value(u"count"_s).toLongLong();
  const double progress = properties.value(u"progress"_s).toDouble();
  if (properties.value(u"progress-visible"_s).toBool() && std::isfinite(progress)) {
    hint.progress = std::clamp(progress, 0.0, 1.0);
  }
  hint.urgent = properties.value(u"urgent"_s).toBool();
  return hint;
}

}  // namespace

void LauncherEntries::start() {
  if (std::exchange(started_, true) || !bus_.isConnected()) return;
  bus_.connect(QString(), QString(), kLauncherEntry, u"Update"_s, this, SLOT(updated(QDBusMessage)));
  bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
               SLOT(busLost()));
}

LauncherHint LauncherEntries::of(const QString& desktopId) const {
  // Of several programs that report for one application the last report counts, and every call for attention.
  LauncherHint result;
  for (const Entry& entry : entries_) {
    if (entry.desktopId != desktopId) continue;
    const LauncherHint hint = hintOf(entry.properties);
    if (hint.count) result.count = hint.count;
    if (hint.progress) result.progress = hint.progress;
    result.urgent = result.urgent || hint.urgent;
  }
  return result;
}

void LauncherEntries::updated(const QDBusMessage& signal) {
  const QVariantList arguments = signal.arguments();
  const QString desktopId = desktopIdOf(arguments.value(0).toString());
  if (desktopId.isEmpty() || arguments.size() < 2) return;
  Entry* said = entry(desktopId, signal.service());
  if (!said) return;
  const LauncherHint before = of(desktopId);
  said->properties.insert(qdbus_cast<QVariantMap>(arguments[1]));
  const auto place = said - entries_.data();
  entries_.move(place, entries_.size() - 1);
  if (of(desktopId) != before) Q_EMIT changed(desktopId);
}

LauncherEntries::Entry* LauncherEntries::entry(const QString& desktopId, const QString& sender) {
  bool isFollowed = false;
  for (Entry& each : entries_) {
    if (each.sender != sender) continue;
    if (each.desktopId == desktopId) return &each;
    isFollowed = true;
  }
  if (entries_.size() >= kMostEntries) return nullptr;
  entries_ << Entry{desktopId, sender, {}};
  if (!isFollowed) follow(sender, true);
  return &entries_.last();
}

void LauncherEntries::follow(const QString& sender, bool follows) {
  if (!follows) {
    bus_.disconnect(kBusName, kBusPath, kBusName, u"NameOwnerChanged"_s, {sender}, QString(), this,
                    SLOT(ownerChanged(QString, QString, QString)));
    return;
  }
  bus_.connect(kBusName, kBusPath, kBusName, u"NameOwnerChanged"_s, {sender}, QString(), this,
               SLOT(ownerChanged(QString, QString, QString)));
  // It may have sent its report and left before we began to follow it.
  auto message = QDBusMessage::createMethodCall(kBusName, kBusPath, kBusName, u"NameHasOwner"_s);
  message << sender;
  ask(bus_, message, this, [this, sender](const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().value(0).toBool()) drop(sender);
  });
}

void LauncherEntries::ownerChanged(const QString& name, const QString& before, const QString& after) {
  Q_UNUSED(before)
  if (after.isEmpty()) drop(name);
}

void LauncherEntries::busLost() {
  const QList<Entry> lost = std::exchange(entries_, {});
  for (const Entry& entry : lost) Q_EMIT changed(entry.desktopId);
}

void LauncherEntries::drop(const QString& sender) {
  QStringList concerned;
  for (const Entry& entry : std::as_const(entries_)) {
    if (entry.sender == sender) concerned << entry.desktopId;
  }
  if (concerned.isEmpty()) return;
  follow(sender, false);
  entries_.removeIf([&](const Entry& entry) { return entry.sender == sender; });
  for (const QString& desktopId : concerned) Q_EMIT changed(desktopId);
}

}  // namespace tarnwick
