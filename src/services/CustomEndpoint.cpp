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

namespace {

/// Of a text more is never shown.
constexpr qsizetype kMostUnits = 10'000;

/// The text of a field. Throws DomainError. Any thread.
QString fieldOf(const QJsonValue& answer, const QString& field) {
  const QString text = JSONMetric::text(JSONMetric::walked(answer, field));
  if (text.isNull()) throw DomainError::invalid(ServiceWords::tr("Select a numeric or text field to display."));
  return text.left(kMostUnits);
}

RemoteValue shownText(const DockWidget& widget, const QString& text) {
  RemoteValue value;
  value.value = widget.options.value(option::prefix) + text + widget.options.value(option::suffix);
  const auto label = widget.options.constFind(option::metricLabel);
  value.subtitle = label != widget.options.constEnd() ? *label : ServiceWords::tr("Updated just now");
  value.symbol = Catalog::find(widget.kind).symbol;
  return value;
}

QCoro::Task<QJsonValue> asked(DockWidget widget, std::shared_ptr<ServiceSession> session,
                              std::function<QJsonValue(const QJsonValue&)> pick, std::stop_token stop) {
  ServiceCall call;
  call.url = QUrl(widget.options.value(option::endpoint));
  if (call.url.isEmpty() || !call.url.isValid())
    throw DomainError::invalid(ServiceWords::tr("Connect this widget in its settings."));
  call.pick = std::move(pick);
  const MaybeCredential found = co_await session->credentialIfAny(widget, stop);
  throwIfStopped(stop);
  // An address may give something else to whoever comes without a credential, which would be taken for the value.
  if (!found.unread.isEmpty() && !found.hasNoKeyring) throw DomainError::invalid(found.unread);
  call.token = found.value;
  try {
    QJsonValue answer = co_await session->json(std::move(call), stop);
    throwIfStopped(stop);
    co_return answer;
  } catch (const ServiceHTTPError& refusal) {
    found.explain(refusal);
    throw;
  }
}

}  // namespace

RemoteValue CustomEndpoint::shown(const DockWidget& widget, const QJsonValue& answer) {
  return shownText(widget, fieldOf(answer, widget.options.value(option::field)));
}

QCoro::Task<QJsonValue> CustomEndpoint::answer(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                               std::stop_token stop) {
  return asked(std::move(widget), std::move(session), {}, stop);
}

QCoro::Task<RemoteValue> CustomEndpoint::fetch(DockWidget widget, std::shared_ptr<ServiceSession> session,
                                               std::stop_token stop) {
  // An answer may be large, and one field of it is wanted.
  std::function<QJsonValue(const QJsonValue&)> pick =
      [field = widget.options.value(option::field)](const QJsonValue& answer) {
        return QJsonValue(fieldOf(answer, field));
      };
  const QJsonValue text = co_await asked(widget, session, std::move(pick), stop);
  RemoteValue value = shownText(widget, text.toString());
  value.updated = session->now();
  co_return value;
}

}  // namespace tarnwick
