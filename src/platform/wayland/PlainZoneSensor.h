#pragma once

#include <QCoreApplication>

#include "desktop/Zones.h"

namespace tarnwick {

/// Where no edge can be felt: a dock there is an ordinary window, and the pointer is seen over it alone.
class PlainZoneSensor final : public ZoneSensor {
  Q_DECLARE_TR_FUNCTIONS(PlainZoneSensor)

 public:
  Capability edges() const override {
    return Capability::no(tr("This desktop has no layers for docks, so only the layout Fixed is available here."));
  }
  void watch(const QList<ZoneRequest>&) override {}
  PointerZones zones(const QString&) const override { return {}; }
  bool isDragging() const override { return false; }
};

}  // namespace tarnwick
