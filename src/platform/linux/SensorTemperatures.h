#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "system/ports/ProcessorTemperatures.h"

namespace tarnwick {

/// The processor's sensors as the Linux kernel shows them: those of its hardware monitors, or else its thermal zones.
/// A sensor of the whole processor speaks for the cores in it. One whose device sleeps is not asked, which would wake
/// it: its last reading is kept until it wakes by itself.
class SensorTemperatures final : public ProcessorTemperatures {
 public:
  /// `root` stands in for "/", so that a captured tree can be read.
  explicit SensorTemperatures(const QString& root = QStringLiteral("/"));

  quint32 read(double* values, quint32 capacity) override;

 private:
  QString root_;
  QHash<QString, std::vector<double>> known_;  ///< By the sensor's folder.
};

}  // namespace tarnwick
