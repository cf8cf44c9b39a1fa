#pragma once

#include <QDBusConnection>
#include <QObject>

namespace tarnwick {

/// Whether the desktop has a tray for status notifier items, the kind that is reached over the session bus.
class StatusNotifierWatch final : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Looks for a tray and goes on looking: `found` comes at once where there is one and each time that one comes,
  /// `missing` once where there is none at the beginning, from within this call where there is no bus.
  void start(QDBusConnection bus = QDBusConnection::sessionBus());

 Q_SIGNALS:
  void found();
  void missing();
};

}  // namespace tarnwick
