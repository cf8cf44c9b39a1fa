#include "services/Provider.h"

#include <algorithm>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ServiceSession.h"
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
