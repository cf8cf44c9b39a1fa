#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QTimer>
#include <QVariantMap>
#include <functional>
#include <memory>

#include "app/ports/SessionApplication.h"

namespace tarnwick {

/// The program on the session bus, through the interface that desktop entries with DBusActivatable use:
/// org.freedesktop.Application under the name of the desktop entry. When the bus goes while the name is owned, the name
/// is taken again as soon as a bus is there.
class DBusSessionApplication final : public SessionApplication {
  Q_OBJECT
 public:
  /// Makes a new connection of the given name to the session's bus; one that is not connected while there is none.
  using Connect = std::function<QDBusConnection(const QString& name)>;

  explicit DBusSessionApplication(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                                  Connect connectAgain = &connectToSession);
  /// Over a new connection of that name, which is closed with this object.
  explicit DBusSessionApplication(const QString& ownConnection);
  ~DBusSessionApplication() override;

  bool isReachable() const override { return bus_.isConnected(); }
  bool own() override;
  void release() override;
  qint64 otherProcess() const override;
  bool activateOther() override;
  bool openInOther(const QStringList& urls) override;
  bool actInOther(const QString& action, const QVariantList& parameter) override;

 private Q_SLOTS:
  void busWentAway();

 private:
  /// Until a bus that went is looked for, in milliseconds; each pause is twice the one before, up to the longest.
  static constexpr int kFirstPauseMs = 250;
  static constexpr int kLongestPauseMs = 30'000;

  static QDBusConnection connectToSession(const QString& name);
  void lookForBus();
  void dropConnection();
  QString owner() const;
  bool call(const QString& method, const QVariantList& arguments) const;

  QDBusConnection bus_;
  Connect connectAgain_;
  QString ownConnection_;  ///< The name of one that we made; the first one may be another's.
  int connections_ = 0;
  QTimer nextLook_;
  bool listening_ = false;
};

/// Receives the calls of others and forwards them as signals.
class DBusApplicationAdaptor final : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
 public:
  explicit DBusApplicationAdaptor(DBusSessionApplication* application);

 public Q_SLOTS:
  Q_NOREPLY void Activate(const QVariantMap& platformData);
  Q_NOREPLY void Open(const QStringList& uris, const QVariantMap& platformData);
  Q_NOREPLY void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

 private:
  DBusSessionApplication* application_;
};

}  // namespace tarnwick
