#include "system/SystemTemperature.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "widgets/catalog/Family.h"

namespace tarnwick {

SystemTemperature::SystemTemperature(std::unique_ptr<ProcessorTemperatures> sensors, QObject* parent)
    : QObject(parent), sensors_(std::move(sensors)) {}

bool SystemTemperature::isNeededBy(const ActiveSets& active) const {
  return active.families.contains(familyText(Family::Temperature));
}

void SystemTemperature::refresh() {
  if (busy_) return;
  busy_ = true;
  reading_.start([this] { return read(); }, [this](const auto& values) { take(values); });
}

QList<double> SystemTemperature::read() {
  std::array<double, mostSensors> values{};
  const quint32 count = std::min(sensors_->read(values.data(), mostSensors), mostSensors);
  return {values.begin(), values.begin() + count};
}

void SystemTemperature::take(const QList<double>& values) {
  busy_ = false;
  answered_ = true;
  sensorCount_ = static_cast<int>(values.size());
  if (values.isEmpty()) {
    celsius_.reset();
  } else {
    celsius_ = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    if (history_.size() >= depth) history_.removeFirst();
    history_.append(*celsius_);
  }
  Q_EMIT changed();
}

}  // namespace tarnwick
