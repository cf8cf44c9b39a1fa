#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <memory>

#include "platform/wayland/LayerSurface.h"

namespace tarnwick {

/// Finds out what bars leave free of one screen, ours included. A surface without a picture fills that area: its size
/// is reported, again after each change. Where the area is, is not reported; but a small window far off at the upper
/// left is moved in by the compositor, and how far differs between one that belongs to this surface and one that
/// belongs to a surface which fills the whole screen. Where there are no layers, all of the screen counts as free.
class UsableProbe final : public QObject {
  Q_OBJECT
 public:
  UsableProbe(const WaylandSession& session, QScreen& screen);
  ~UsableProbe() override;

  /// Within the screen, from its top left.
  QRect area() const { return area_; }

 Q_SIGNALS:
  void changed();

 private:
  void measureLater();
  void measure();
  QPoint corner() const;

  const WaylandSession& session_;
  QPointer<QScreen> screen_;
  WaylandOwned<wl_surface> surface_;
  std::unique_ptr<LayerSurface> role_;
  QRect area_;
  bool isMeasuring_ = false;
};

}  // namespace tarnwick
