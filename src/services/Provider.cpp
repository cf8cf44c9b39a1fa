#include "services/Provider.h"

#include <algorithm>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ProviderData.h"
#include "services/ServiceSession.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

bool KindPattern::matches(QStringView kind) const {
  switch (match) {
    case Match::Contains:
      return kind.contains(text);
    case Match::BeginsWith:
      return kind.startsWith(text);
    case Match::Exact:
      break;
  }
  return kind == text;
}

QString ProviderRequest::option(QLatin1StringView key, const QString& otherwise) const {
  const QString found = widget.options.value(key);
  return found.isEmpty() ? otherwise : found;
}

ServiceCall ProviderRequest::call(const QString& path, const QMap<QString, QString>& query) const {
  ServiceCall call;
  call.url = ProviderData::url(option(tarnwick::option::endpoint) + path, query);
  call.token = credential;
  return call;
}

RemoteValue ProviderRequest::shown(const QString& value, const QString& subtitle) const {
  RemoteValue shown;
  shown.value = value;
  shown.subtitle = subtitle;
  shown.symbol = Catalog::find(widget.kind).symbol;
  shown.updated = session->now();
  return shown;
}

bool Provider::serves(QStringView kind) const {
  return std::ranges::any_of(kinds, [kind](const KindPattern& pattern) { return pattern.matches(kind); });
}

DockWidget Provider::configured(DockWidget widget) const {
  widget.options[option::connectionMode] = value::native;
  widget.options[option::endpoint] = address.toString();
  if (normalise) normalise(widget);
  return widget;
}

QCoro::Task<RemoteValue> fetchFrom(Provider provider, DockWidget widget, std::shared_ptr<ServiceSession> session,
                                   std::stop_token stop) {
  ProviderRequest request;
  request.widget = provider.configured(std::move(widget));
  request.session = session;
  request.limits = provider.limits;
  if (provider.signIn)
    request.credential = co_await session->accessToken(request.widget, *provider.signIn, stop);
  else
    request.credential = co_await session->credential(request.widget, stop);
  throwIfStopped(stop);
  const auto isNeeded = provider.credential.isNeeded;
  if (request.credential.isEmpty() && (!isNeeded || isNeeded(request.widget)))
    throw DomainError::invalid(provider.credential.missing);
  RemoteValue value = co_await provider.fetch(std::move(request), stop);
  throwIfStopped(stop);
  co_return value;
}

}  // namespace tarnwick
