#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick::testing {

/// Runs a program to its end; its standard output, or nothing if it failed.
std::optional<QByteArray> output(const QStringList& command);

/// All that a user has in the desktop's settings.
QByteArray dconfDump();

/// Owns a name on the session bus, as a dock that runs does.
class NameOwner {
 public:
  explicit NameOwner(const QString& name);
  ~NameOwner();
  QDBusConnection& bus() { return bus_; }

 private:
  QString name_;
  QDBusConnection bus_;
};

/// Guardians that watch over a folder.
QList<pid_t> guardiansOf(const QString& directory);

}  // namespace tarnwick::testing
