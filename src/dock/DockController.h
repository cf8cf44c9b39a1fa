#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>

#include "base/Scheduler.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "dock/DockContent.h"
#include "dock/rules/DockPlacement.h"

namespace tarnwick {

class AppStore;

/// Turns the configuration into one panel on each chosen display and keeps it in place. It asks pure rules what should
/// be and tells the panels to make it so. Main thread only. Borrows everything that it is made of.
class DockController : public QObject {
  Q_OBJECT
 public:
  /// Makes what a display's panel shows. Never null.
  using ContentFactory = std::function<std::unique_ptr<DockContent>(const QString& display)>;

  static constexpr double kRefreshDelay = 0.04;

  DockController(AppStore& store, Screens& screens, Panels& panels, ContentFactory factory);
  ~DockController() override;

  /// Lays out soon; a burst of calls costs one pass.
  void refresh();
  /// Hides the dock, or shows it again, for the user.
  void toggle();
  /// Panels come up only once the program has finished starting.
  void setMayShow(bool mayShow);
  bool isManuallyHidden() const { return manuallyHidden_; }
  /// Closes every panel and gives back what was borrowed of the desktop.
  void shutdown();

  /// The displays that have a panel now.
  QStringList displays() const;
  /// The panel's slot on a display, in desktop coordinates; empty where there is none.
  QRectF frame(const QString& display) const;

 private:
  struct Shown {
    std::unique_ptr<Panel> panel;
    DockContent* content = nullptr;  // Owned by the panel.
    DockGeometry geometry;
    PanelPlacement placement;
    QRectF frame;
  };

  void layoutPanels();
  void layout(const Screen& screen);
  Shown& shown(const Screen& screen);
  void applyShape(const Shown& dock);
  void reserveSpace(const Shown& dock, const Screen& screen);
  void setVisible(bool visible);

  AppStore& store_;
  Screens& screens_;
  Panels& panels_;
  ContentFactory factory_;
  std::map<QString, Shown> docks_;
  JobHandle refreshWork_;
  bool manuallyHidden_ = false;
  bool mayShow_ = false;
  bool down_ = false;
};

}  // namespace tarnwick
