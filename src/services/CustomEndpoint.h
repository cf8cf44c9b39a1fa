#pragma once

#include <QCoroFwd>
#include <QJsonValue>
#include <memory>
#include <stop_token>

#include "config/DockWidget.h"
#include "services/RemoteValue.h"

namespace tarnwick {

class ServiceSession;

/// A widget that shows one field of what an address of the user's own answers.
struct CustomEndpoint {
  /// Asks the widget's `endpoint`, with its credential where one is kept, and reads `field`. Throws DomainError,
  /// ServiceHTTPError and Cancelled.
  static QCoro::Task<RemoteValue> fetch(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                        std::stop_token stop);
  /// What the widget shows of an answer, by its `field`; `updated` is left open. Throws DomainError.
  static RemoteValue shown(const DockWidget& widget, const QJsonValue& answer);
  /// The whole answer. Throws the same as `fetch`.
  static QCoro::Task<QJsonValue> answer(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                        std::stop_token stop);
};

}  // namespace tarnwick
