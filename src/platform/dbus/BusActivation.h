#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>

#include "apps/ports/ApplicationActivation.h"

namespace tarnwick {

/// Applications that take org.freedesktop.Application on the session bus, which starts them when they do not run.
class BusActivation final : public QObject, public ApplicationActivation {
  Q_OBJECT
 public:
  using Bus = std::function<QDBusConnection()>;

  /// `bus`: the session bus; asked when it is first needed.
  explicit BusActivation(Bus bus = &QDBusConnection::sessionBus) : bus_(std::move(bus)) {}

  bool activate(const QString& application, const LaunchRequest& request, std::function<void()> unreachable) override;

 private:
  Bus bus_;
};

}  // namespace tarnwick
