#pragma once

#include <QUuid>
#include <memory>

#include "desktop/Toggles.h"
#include "dock/DockContent.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/DockHost.h"
#include "views/dock/DockView.h"
#include "views/dock/TileServices.h"
#include "views/tiles/KeptSources.h"

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
  /// What the tiles were made from last.
  const TileSources& sources() const { return kept_->values(); }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  /// The row alone; of its tiles those are made anew whose widgets are others.
  void rebuildRow();
  /// Makes the tiles of these widgets anew.
  void remake(const QSet<QUuid>& widgets);
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
  std::unique_ptr<KeptSources> kept_;
};

}  // namespace tarnwick
