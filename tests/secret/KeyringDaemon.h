#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include "platform_dbus/PrivateBus.h"

namespace tarnwick::test {

/// A real GNOME keyring daemon on a private bus, with no program that could ask a user anything.
class KeyringDaemon {
 public:
  explicit KeyringDaemon(PrivateBus& bus) : connection_(bus.connection()) {}
  explicit KeyringDaemon(const QDBusConnection& bus) : connection_(bus) {}
  ~KeyringDaemon() { kill(); }

  /// With keyrings that exist or none.
  void start();
  /// The same with a keyring of the login, made where it is missing, that is unlocked.
  void startUnlocked();
  void kill();
  /// It answers nobody from here on, though it is there.
  void hang();
  void lock();
  void unlock();

  /// What the keyring says of the items that have this account, as any other program sees them.
  QList<QVariantMap> itemsOf(const QString& account);

 private:
  void run(const QStringList& options);
  QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments);

  QDBusConnection connection_;
  QTemporaryDir control_;
  QProcess daemon_;
};

}  // namespace tarnwick::test
