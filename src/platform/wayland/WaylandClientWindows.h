#pragma once

#include <map>
#include <memory>
#include <vector>

#include "desktop/Capability.h"
#include "desktop/ClientWindows.h"
#include "platform/wayland/CoverProbe.h"
#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// The windows that the compositor lists, ours left out. It reports neither their processes nor where they are.
/// What it is made with must outlive it; `panels` is null where docks are ordinary windows.
class WaylandClientWindows final : public ClientWindows {
  Q_OBJECT
 public:
  WaylandClientWindows(const WaylandSession& session, const WaylandScreens& screens, const WaylandPanels* panels);
  ~WaylandClientWindows() override;

  Capability capability() const override;
  Capability workspaces() const override;
  Capability frames() const override;
  Capability attention() const override;
  QList<ClientWindow> all() const override { return windows_; }
  void activate(quint64 id) override;
  void close(quint64 id) override;
  void minimise(quint64 id) override;
  void setIconGeometry(const QList<quint64>& windows, const QRectF& tile) override;

 private:
  class Toplevel;

  zwlr_foreign_toplevel_handle_v1* handle(quint64 id) const;
  void ended(const Toplevel* toplevel);
  void finished();
  void publishLater();
  void publish();
  QList<ClientWindow> known() const;
  void lookBelow(const QList<ClientWindow>& windows);

  const WaylandSession& session_;
  const WaylandScreens& screens_;
  const WaylandPanels* panels_;
  WaylandOwned<zwlr_foreign_toplevel_manager_v1> manager_;
  std::vector<std::unique_ptr<Toplevel>> toplevels_;       ///< Oldest first.
  std::map<QString, std::unique_ptr<CoverProbe>> probes_;  ///< Of the screens that have full-screen windows.
  quint64 latest_ = 0;
  QList<ClientWindow> windows_;
  bool isPublishing_ = false;
};

}  // namespace tarnwick
