#pragma once

#include <QHash>
#include <map>
#include <memory>

#include "desktop/Zones.h"
#include "platform/wayland/ClearWindow.h"
#include "platform/wayland/PanelPointer.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// Feels the edges by clear strips along them, above all other windows but cut out where a panel of ours takes clicks;
/// what is over a panel the panel reports. A strip takes the clicks that fall on it: so it is one pixel thick however
/// much is asked for, there is none at edges that are not requested, and a press on one is reported. Only a drag over a
/// strip or a panel is seen. What it is made with must outlive it.
class WaylandZoneSensor final : public ZoneSensor {
  Q_OBJECT
 public:
  WaylandZoneSensor(const WaylandSession& session, const WaylandScreens& screens, const PanelPointer& pointer);
  ~WaylandZoneSensor() override;

  bool feelsOnePixelOnly() const override { return true; }
  void watch(const QList<ZoneRequest>& requests) override;
  PointerZones zones(const QString& screen) const override { return zones_.value(screen); }
  bool isDragging() const override { return isDragging_; }

 private:
  static constexpr int kThickness = 1;

  struct Strips {
    std::unique_ptr<ClearWindow> top;
    std::unique_ptr<ClearWindow> bottom;
  };

  void layOut();
  void stand(std::unique_ptr<ClearWindow>& strip, bool wanted, const QString& id, const QRect& withinScreen);
  void forgetPointer();
  void publishLater();
  void publish();
  bool update();
  PointerZones zonesOf(const ZoneRequest& request) const;

  const WaylandSession& session_;
  const WaylandScreens& screens_;
  const PanelPointer& pointer_;
  QList<ZoneRequest> requests_;
  std::map<QString, Strips> strips_;
  QHash<QString, PointerZones> zones_;
  bool isDragging_ = false;
  bool isPublishing_ = false;
};

}  // namespace tarnwick
