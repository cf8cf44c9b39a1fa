#pragma once

#include <QCoroFwd>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUrl>
#include <memory>
#include <stop_token>

#include "services/GeocodeCache.h"
#include "services/RemoteValue.h"

namespace tarnwick {

class ServiceSession;

/// The weather at a place, from a service that wants no account. Each call keeps what it works with until it has ended;
/// main thread only. All throw DomainError, ServiceHTTPError and Cancelled.
class Weather {
 public:
  struct Addresses {
    QUrl geocoding;
    QUrl forecast;
  };
  Weather(std::shared_ptr<ServiceSession> session, Addresses addresses);

  /// The weather in a city, which is looked up once.
  QCoro::Task<RemoteValue> at(QString city, bool fahrenheit, std::stop_token stop) const;
  /// The weather at a coordinate, in degrees, with a name for it.
  QCoro::Task<RemoteValue> at(GeocodeCache::Place place, bool fahrenheit, std::stop_token stop) const;
  /// The places whose names begin like this, the likeliest first. Nothing of it is kept.
  QCoro::Task<QList<GeocodeCache::Place>> search(QString name, int most, std::stop_token stop) const;

  /// What an answer of the forecast says. Throws DomainError.
  static RemoteValue read(const QJsonValue& answer, const QString& city);

 private:
  struct Shared;
  static QCoro::Task<RemoteValue> inCity(std::shared_ptr<Shared> shared, QString city, bool fahrenheit,
                                         std::stop_token stop);
  static QCoro::Task<RemoteValue> forecast(std::shared_ptr<Shared> shared, GeocodeCache::Place place, bool fahrenheit,
                                           std::stop_token stop);
  static QCoro::Task<QList<GeocodeCache::Place>> places(std::shared_ptr<Shared> shared, QString name, int most,
                                                        std::stop_token stop);

  std::shared_ptr<Shared> shared_;
};

}  // namespace tarnwick
