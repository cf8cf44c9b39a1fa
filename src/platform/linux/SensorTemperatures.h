#pragma once

#include <QString>

#include "system/ports/ProcessorTemperatures.h"

namespace tarnwick {

/// The processor's sensors as the Linux kernel shows them: those of its hardware monitors, or else its thermal zones.
/// A sensor of the whole processor speaks for the cores in it.
class SensorTemperatures final : public ProcessorTemperatures {
 public:
  /// `root` stands in for "/", so that a captured tree can be read.
  explicit SensorTemperatures(const QString& root = QStringLiteral("/"));

  quint32 read(double* values, quint32 capacity) override;

 private:
  QString root_;
};

}  // namespace tarnwick
