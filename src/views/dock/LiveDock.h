#pragma once

#include <QUuid>
#include <functional>
#include <memory>
#include <vector>

#include "desktop/Toggles.h"
#include "dock/DockContent.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/DockHost.h"
#include "views/dock/DockView.h"
#include "views/dock/TileServices.h"
#include "views/tiles/TileSource.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

/// The dock of one display, kept true to the store: its row follows the settings and the running applications, its
/// tiles follow what they show, and the beat as often as their cadence says. While it is hidden its tiles are frozen.
/// Borrows all but the icons.
class LiveDock final : public DockContent {
  Q_OBJECT
 public:
  LiveDock(AppStore& store, Toggles& toggles, Commands& commands, DockHost& host, const QString& display,
           DockView::IconProvider icons, const TileServices& services);

  void configure(const DockGeometry& geometry) override;
  double leastWidth(double scale) const override;
  QMargins margins() const override { return view_->margins(); }
  QRegion outline() const override { return view_->outlineRegion(); }
  QRegion inputRegion() const override { return view_->inputRegion(); }

  DockView& view() { return *view_; }
  /// What everything in it moves by.
  void setFrameClock(std::unique_ptr<FrameClock> clock) { view_->setFrameClock(std::move(clock)); }

  /// Takes everything anew, for another look. What store and services hold is followed by itself.
  void rebuild();
  /// What the tiles show at this moment.
  TileSources sources() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  /// The row alone; of its tiles those are made anew whose widgets are others.
  void rebuildRow();
  void takeEdited(const QList<DockWidget>& before);
  void refreshTiles();
  QList<TileSource*> allSources() const;
  void follow(TileSource& source);
  /// Takes the source's part anew, for the tiles that show it.
  void take(TileSource& source, const std::function<bool(const DockWidget&)>& which);
  void beat();
  /// Whether tiles may be made anew now; while nobody sees them it is noted that they are late.
  bool isSeen();
  void connectStore();
  void connectServices();
  void connectTiles();
  void activatePart(const QUuid& id, int part);
  void connectApplications();
  void connectGestures();
  QList<DockApp> runningApps() const;
  double tabsWidth(double scale) const;

  AppStore& store_;
  Toggles& toggles_;
  Commands& commands_;
  DockHost& host_;
  QString display_;
  const TileServices& services_;
  DockGeometry geometry_;
  DockView* view_;
  std::vector<std::unique_ptr<TileSource>> storeSources_;
  TileSources shown_;  ///< What the tiles were made from last.
  qint64 minute_ = 0;  ///< The one that tiles showed last, since 1970.
  bool isFilled_ = false;
  bool isLate_ = false;
};

}  // namespace tarnwick
