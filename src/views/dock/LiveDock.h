#pragma once

#include <QUuid>
#include <functional>

#include "desktop/Toggles.h"
#include "dock/DockContent.h"
#include "store/AppStore.h"
#include "views/dock/DockView.h"

namespace tarnwick {

/// What a dock's clicks lead to. A function left empty does nothing.
struct DockActions {
  std::function<void(const QUuid& widget)> openTile;
  std::function<void(quint64 application)> bringApplication;
  std::function<void(const QUuid& widget, const QPoint& position)> tileMenu;
  std::function<void(quint64 application, const QPoint& position)> applicationMenu;
  std::function<void()> addWidgets;
};

/// The dock of one display, kept true to the store: its row follows the settings and the running applications, its
/// tiles follow the beat. Borrows the store and the toggles.
class LiveDock final : public DockContent {
  Q_OBJECT
 public:
  LiveDock(AppStore& store, Toggles& toggles, const QString& display, DockView::IconProvider icons,
           DockActions actions);

  void configure(const DockGeometry& geometry) override;
  QMargins margins() const override { return view_->margins(); }
  QRegion outline() const override { return view_->outlineRegion(); }
  QRegion inputRegion() const override { return view_->inputRegion(); }

  DockView& view() { return *view_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void rebuildRow();
  void refreshTiles();
  void connectActions();
  TileSources sources() const;

  AppStore& store_;
  Toggles& toggles_;
  QString display_;
  DockActions actions_;
  DockGeometry geometry_;
  DockView* view_;
};

}  // namespace tarnwick
