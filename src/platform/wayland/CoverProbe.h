#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

#include "platform/wayland/LayerSurface.h"

class QScreen;

namespace tarnwick {

/// Finds out whether a full-screen window of one screen is seen. The compositor reports no workspaces, and of a window
/// on one that is not shown it reports the same as of one that is; but what lies below a full-screen window is not
/// drawn, and a surface there gets no frame callbacks. With a compositor that draws it nevertheless the window counts
/// as seen. Made when such a window comes, gone when it goes. The session and the screen must outlive it.
class CoverProbe final : public QObject {
  Q_OBJECT
 public:
  CoverProbe(const WaylandSession& session, QScreen& screen);
  ~CoverProbe() override;

  /// Something about the windows changed. `isActive`: whether a full-screen one of this screen is in front.
  void look(bool isActive);
  /// Whether the screen shows something else.
  bool isUncovered() const { return isUncovered_; }

 Q_SIGNALS:
  void changed();

 private:
  void ask();
  void drawn();

  WaylandOwned<wl_surface> surface_;
  LayerSurface role_;
  WaylandOwned<wl_buffer> picture_;
  WaylandOwned<wl_callback> frame_;  ///< While none was drawn since it was asked for.
  QTimer settling_;
  int contradictions_ = 0;
  bool isActive_ = false;
  bool isUncovered_ = false;
};

}  // namespace tarnwick
