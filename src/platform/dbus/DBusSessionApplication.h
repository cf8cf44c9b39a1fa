#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QVariantMap>
#include <memory>

#include "app/ports/SessionApplication.h"

namespace tarnwick {

/// The program on the session bus, through the interface that desktop entries with DBusActivatable use:
/// org.freedesktop.Application under the name of the desktop entry.
class DBusSessionApplication final : public SessionApplication {
  Q_OBJECT
 public:
  explicit DBusSessionApplication(const QDBusConnection& bus = QDBusConnection::sessionBus());
  ~DBusSessionApplication() override;

  bool isReachable() const override { return bus_.isConnected(); }
  bool own() override;
  void release() override;
  qint64 otherProcess() const override;
  bool activateOther() override;
  bool openInOther(const QStringList& urls) override;
  bool actInOther(const QString& action, const QVariantList& parameter) override;

 private:
  QString owner() const;
  bool call(const QString& method, const QVariantList& arguments) const;

  QDBusConnection bus_;
  bool listening_ = false;
};

/// Receives the calls of others and hands them on as signals.
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
