#include "services/CustomEndpoint.h"

#include <QCoroTask>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/JSONMetric.h"
#include "services/ServiceSession.h"
#include "services/ServiceWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

RemoteValue CustomEndpoint::shown(const DockWidget& widget, const QJsonValue& answer) {
  const QString shown = JSONMetric::text(JSONMetric::walked(answer, widget.options.value(option::field)));
  if (shown.isNull()) throw DomainError::invalid(ServiceWords::tr("Select a numeric or text field to display."));
  RemoteValue value;
  value.value = widget.options.value(option::prefix) + shown + widget.options.value(option::suffix);
  const auto label = widget.options.constFind(option::metricLabel);
  value.subtitle = label != widget.options.constEnd() ? *label : ServiceWords::tr("Updated just now");
  value.symbol = Catalog::find(widget.kind).symbol;
  return value;
}

QCoro::Task<QJsonValue> CustomEndpoint::answer(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                               std::stop_token stop) {
  ServiceCall call;
  call.url = QUrl(widget.options.value(option::endpoint));
  if (call.url.isEmpty() || !call.url.isValid())
    throw DomainError::invalid(ServiceWords::tr("Connect this widget in its settings."));
  call.token = co_await session->credential(widget, stop);
  throwIfStopped(stop);
  const QJsonValue answer = co_await session->json(std::move(call), stop);
  throwIfStopped(stop);
  co_return answer;
}

QCoro::Task<RemoteValue> CustomEndpoint::fetch(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                               std::stop_token stop) {
  const QJsonValue found = co_await answer(widget, session, stop);
  RemoteValue value = shown(widget, found);
  value.updated = session->now();
  co_return value;
}

}  // namespace tarnwick
