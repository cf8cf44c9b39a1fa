#pragma once

#include <QWidget>

#include "views/library/PreviewTiles.h"

namespace tarnwick {

class AppStore;

/// The tile of one widget as its dock would show it, which follows the beat.
class TilePreview final : public QWidget {
  Q_OBJECT
 public:
  /// `store` outlives it.
  TilePreview(AppStore& store, const PreviewSources& sources);

  void show(const DockWidget& widget);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void refresh();
  void takeContent();
  void takeLook();

  AppStore& store_;
  PreviewTiles tiles_;
  DockWidget widget_;
};

}  // namespace tarnwick
