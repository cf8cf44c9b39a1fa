#pragma once

#include <QCoreApplication>

#include "desktop/Zones.h"

namespace tarnwick {

/// Where no edge can be felt: a dock there is an ordinary window, and the pointer is seen over it alone.
class PlainZoneSensor final : public ZoneSensor {
  Q_DECLARE_TR_FUNCTIONS(PlainZoneSensor)

 public:
  Capability edges() const override {
    return Capability::no(
        tr("This desktop does not support docks on Wayland (layer shell), so only the layout Fixed is available."));
  }
  void watch(const QList<ZoneRequest>&) override {}
  PointerZones zones(const QString&) const override { return {}; }
  bool isDragging() const override { return false; }
};

}  // namespace tarnwick
