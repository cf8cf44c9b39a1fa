#pragma once

#include <QCoroFwd>
#include <QHash>
#include <functional>
#include <memory>
#include <stop_token>

#include "services/PerplexityUsage.h"
#include "services/Provider.h"
#include "services/Weather.h"

namespace tarnwick {

/// Fetches what a widget shows, from the source that its kind and its options name. Copies share what they work with.
class WidgetLoader {
 public:
  /// Where the machine is. Throws DomainError and Cancelled.
  using Locate = std::function<QCoro::Task<GeocodeCache::Place>(std::stop_token stop)>;

  /// Reads what a widget shows by no service's address: from this machine, or in a browser. Throws DomainError and
  /// Cancelled.
  using Reader = std::function<QCoro::Task<RemoteValue>(DockWidget widget, std::stop_token stop)>;
  /// By the connection mode.
  using Readers = QHash<QString, Reader>;

  /// `locate` may be empty where nobody can tell. The table outlives it.
  WidgetLoader(Weather weather, Locate locate, const QList<Provider>& providers, Readers readers = {});

  /// Throws DomainError, ServiceHTTPError and Cancelled.
  QCoro::Task<RemoteValue> load(DockWidget widget, std::shared_ptr<ServiceSession> session, bool fahrenheit,
                                std::stop_token stop) const;

  /// Whether that is one field of what an address of the user's own answers.
  static bool readsAddress(const DockWidget& widget);

  const Weather& weather() const { return weather_; }

 private:
  Weather weather_;
  Locate locate_;
  const QList<Provider>* providers_;
  Readers readers_;
};

}  // namespace tarnwick
