#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <chrono>
#include <functional>
#include <optional>

#include "base/OneShotEvent.h"
#include "services/ports/LocationSource.h"

namespace tarnwick {

/// One question to GeoClue: a client of its own, which is stopped and deleted however the question ends.
class GeoClueQuestion final : public QObject {
  Q_OBJECT
 public:
  /// Asks at once.
  GeoClueQuestion(const QDBusConnection& system, std::chrono::milliseconds patience);

  /// It has ended: with a coordinate or a failure, or with neither where it was withdrawn.
  const OneShotEvent& ended() const { return ended_; }
  const std::optional<Coordinate>& coordinate() const { return coordinate_; }
  const std::optional<LocationFailure::Reason>& failure() const { return failure_; }
  void withdraw();

 private Q_SLOTS:
  void located(const QDBusObjectPath& before, const QDBusObjectPath& now);
  void ownerChanged(const QString& name, const QString& before, const QString& after);
  void busLost();

 private:
  using Next = std::function<void(const QDBusMessage& reply)>;

  void makeClient();
  void takeClient(const QDBusMessage& reply);
  void describeClient();
  void start();
  void explainRefusal();
  void read(const QString& location);
  /// Goes on with `next` unless the call failed or the question is over.
  void call(const QString& path, const QString& interface, const QString& method, const QVariantList& arguments,
            Next next);
  void setOfClient(const QString& property, const QVariant& value, Next next);
  void fail(const QDBusMessage& error);
  void end(std::optional<LocationFailure::Reason> failure);

  QDBusConnection bus_;
  QString owner_;   ///< GeoClue's own name on the bus, and
  QString client_;  ///< the path of the client there; empty until there is one.
  bool isReading_ = false;
  std::optional<Coordinate> coordinate_;
  std::optional<LocationFailure::Reason> failure_;
  OneShotEvent ended_;
  QTimer deadline_;
};

}  // namespace tarnwick
