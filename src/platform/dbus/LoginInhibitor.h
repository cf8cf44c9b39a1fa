#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include "platform/dbus/BusService.h"

namespace tarnwick {

/// A lock at the login manager, held while a file descriptor is open: it goes away with this object, and with the
/// program however that ends.
class LoginInhibitor final : public QObject {
  Q_OBJECT
 public:
  /// `what`, `why` and `mode` as the login manager words them ("idle:sleep", "block" or "delay"). `login` must outlive
  /// this object.
  LoginInhibitor(BusService& login, const QString& what, const QString& why, const QString& mode,
                 QObject* parent = nullptr);

  bool isHeld() const { return descriptor_.isValid(); }
  /// Asks for the lock; `changed` follows when it is held or refused.
  void take();
  void release();

 Q_SIGNALS:
  void changed();

 private:
  BusService& login_;
  QString what_;
  QString why_;
  QString mode_;
  QDBusUnixFileDescriptor descriptor_;
  int generation_ = 0;
};

}  // namespace tarnwick
