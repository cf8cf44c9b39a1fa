#pragma once

#include "services/Connections.h"

namespace tarnwick {

/// Connections of the pictures of windows: widgets in each state that one can be in, and a service that answers at
/// once. Made up.
class SnapshotConnections final : public Connections {
 public:
  /// The widgets that it knows.
  static QList<DockWidget> widgets();

  std::optional<RemoteReading> reading(QUuid widget) const override;
  std::optional<QDateTime> nextRefresh(QUuid widget) const override;
  QCoro::Task<Capability> keepsCredentials() const override;
  QCoro::Task<bool> hasCredential(DockWidget widget, std::stop_token stop) const override;
  QCoro::Task<QJsonValue> answer(DockWidget widget, std::optional<QString> credential, std::stop_token stop) override;
};

}  // namespace tarnwick
