#pragma once

#include <memory>
#include <vector>

#include "desktop/ClientWindows.h"
#include "platform/kwin/KWinAbilities.h"
#include "platform/kwin/KWinWindowTable.h"
#include "platform/wayland/PlasmaDesktops.h"
#include "platform/wayland/WaylandPanels.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

class WaylandQueue;

/// The windows that KWin lists, ours left out. It does so only for a program whose desktop entry names the interface in
/// X-KDE-Wayland-Interfaces. What it is made with must outlive it.
class PlasmaClientWindows final : public ClientWindows {
  Q_OBJECT
 public:
  /// Null where KWin does not list windows for this program, or something else runs. Waits for what it lists now.
  static std::unique_ptr<PlasmaClientWindows> make(const WaylandSession& session, const WaylandScreens& screens,
                                                   const WaylandPanels& panels);
  PlasmaClientWindows(const WaylandSession& session, WaylandOwned<org_kde_plasma_window_management> manager,
                      const WaylandScreens& screens, const WaylandPanels& panels);
  ~PlasmaClientWindows() override;

  Capability moves() const override { return abilities_.moves(); }
  Capability pictures() const override { return abilities_.pictures(); }
  QList<ClientWindow> all() const override { return windows_; }
  /// What KWin's other interfaces need to know of the windows that are listed.
  std::shared_ptr<const KWinWindowTable> table() const { return table_; }
  void watchFrames(bool watched) override;
  void activate(quint64 id) override;
  void close(quint64 id) override;
  void minimise(quint64 id) override;
  void setIconGeometry(const QList<quint64>& windows, const QRectF& tile) override;

 private:
  class Window;

  void awaitAll(WaylandQueue& queue);
  void came(org_kde_plasma_window* handle, const QString& id = {});
  void ended(const Window* window);
  void setState(quint64 id, quint32 flag, bool on);
  org_kde_plasma_window* handle(quint64 id) const;
  void publishLater();
  void publish();

  WaylandOwned<org_kde_plasma_window_management> manager_;
  PlasmaDesktops desktops_;
  const WaylandScreens& screens_;
  const WaylandPanels& panels_;
  KWinAbilities abilities_;
  const std::shared_ptr<KWinWindowTable> table_;
  std::vector<std::unique_ptr<Window>> known_;  ///< Oldest first.
  quint64 latest_ = 0;
  QList<ClientWindow> windows_;
  bool isPublishing_ = false;
  bool reportsFrames_ = false;  ///< Of all windows.
};

}  // namespace tarnwick
