#pragma once

#include <QLocale>
#include <QString>

#include "system/ports/MachineDetails.h"

namespace tarnwick {

/// How panels word readings of the machine.
struct MachineWords {
  static QString percent(double value);          ///< "23"
  static QString percentWithSign(double value);  ///< "23%"
  /// Memory is counted in powers of two, what lies on a disk or goes through a cable in powers of ten.
  static QString memory(const QLocale& locale, double bytes);
  static QString disk(const QLocale& locale, double bytes);
  static QString speed(const QLocale& locale, double bytes);
  /// A part and its whole, the unit written once where it is the same.
  static QString partOf(const QString& part, const QString& whole);

  /// "8 cores · 2.4 GHz · load 1.84", as much of it as is known.
  static QString processor(const QLocale& locale, const MachineReading& reading);
  /// "Up 3 days, 4 hours"; empty where it is not known.
  static QString uptime(const MachineReading& reading);
  /// "Swap 0.2 of 4 GB"; empty without one.
  static QString swap(const QLocale& locale, const MemoryParts& parts);
};

}  // namespace tarnwick
