#pragma once

#include <QHash>
#include <QPixmap>
#include <functional>

#include "views/dock/RowTiles.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// The icons of applications as a dock shows them, each asked for once a size. The row is borrowed.
class AppIconCache final {
 public:
  /// Gives an application's icon, `size` units wide, for a screen with `ratio` device pixels per unit. Of the
  /// application only `icon` is set.
  using Provider = std::function<QPixmap(const DockApp& app, int size, double ratio)>;

  explicit AppIconCache(const RowTiles& tiles);
  AppIconCache(const AppIconCache&) = delete;
  AppIconCache& operator=(const AppIconCache&) = delete;

  void setProvider(Provider provider);
  /// Asks the provider for every icon anew.
  void forget() { known_.clear(); }
  /// What tiles get their icons by.
  const TileIcons& icons() const { return icons_; }

 private:
  QPixmap find(const QString& icon, int size, double ratio);

  const RowTiles& tiles_;
  Provider provider_;
  QHash<QString, QPixmap> known_;
  TileIcons icons_;
};

}  // namespace tarnwick
