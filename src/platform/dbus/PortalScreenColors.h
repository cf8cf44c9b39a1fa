#pragma once

#include <QDBusConnection>
#include <QPointer>

#include "desktop/ScreenColors.h"
#include "platform/dbus/BusService.h"

namespace tarnwick {

/// The desktop portal's picker, which each desktop draws its own way. A portal that isn't running yet is started by the
/// first picking.
class PortalScreenColors final : public ScreenColors {
  Q_OBJECT
 public:
  explicit PortalScreenColors(const QDBusConnection& session, QObject* parent = nullptr);

  void pick(QObject* context, std::function<void(const QString& hex)> picked,
            std::function<void(const QString& sentence)> failed) override;

 private:
  void responded(const QDBusMessage& response);
  void fail();

  QDBusConnection session_;
  BusService portal_;
  int count_ = 0;
  QString request_;  ///< The path of the picking that goes on; empty while none does.
  QPointer<QObject> context_;
  std::function<void(const QString&)> picked_;
  std::function<void(const QString&)> failed_;
};

}  // namespace tarnwick
