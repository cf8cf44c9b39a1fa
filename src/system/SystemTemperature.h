#pragma once

#include <QList>
#include <QObject>
#include <memory>
#include <optional>

#include "base/OrderedWork.h"
#include "facilities/BeatClient.h"
#include "system/ports/ProcessorTemperatures.h"

namespace tarnwick {

/// The processor's temperature, as its tiles show it. Refreshed on the beat while one is shown; there is no timer
/// here. Owns the sensors, which are read on another thread. Main thread only, but for `read`.
class SystemTemperature final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// Entries that the history keeps, oldest first.
  static constexpr int depth = 40;
  /// Sensors that are read at most.
  static constexpr quint32 mostSensors = 12;

  explicit SystemTemperature(std::unique_ptr<ProcessorTemperatures> sensors, QObject* parent = nullptr);

  /// Degrees Celsius, the mean of the sensors; none before the first reading and while no sensor reports anything.
  std::optional<double> celsius() const { return celsius_; }
  /// The sensors were read and have answered, even if with nothing.
  bool hasAnswered() const { return answered_; }
  int sensorCount() const { return sensorCount_; }
  const QList<double>& history() const { return history_; }
  bool busy() const { return busy_; }

  BeatStep step() const override { return BeatStep::Temperature; }
  int everyTicks() const override { return 4; }
  bool isNeededBy(const ActiveSets& active) const override;
  void beat(const ActiveSets&) override { refresh(); }

  /// Starts one reading, unless one is under way.
  void refresh();
  /// What the sensors report now. Any thread, but not beside a refresh.
  QList<double> read();

 Q_SIGNALS:
  void changed();

 private:
  void take(const QList<double>& values);

  std::unique_ptr<ProcessorTemperatures> sensors_;
  OrderedWork reading_;  ///< The last member: it uses the others.
  std::optional<double> celsius_;
  int sensorCount_ = 0;
  QList<double> history_;
  bool busy_ = false;
  bool answered_ = false;
};

}  // namespace tarnwick
