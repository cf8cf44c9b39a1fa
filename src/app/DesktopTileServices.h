#pragma once

#include "app/ConnectionTiles.h"
#include "app/DockCommands.h"
#include "app/OwnIcons.h"
#include "app/Readings.h"
#include "store/AppStore.h"
#include "store/Services.h"
#include "views/dock/TileServices.h"

namespace tarnwick {

/// Answers tiles from the services of the desktop and from what the program reads. Borrows everything.
class DesktopTileServices final : public TileServices {
 public:
  DesktopTileServices(const AppStore& store, const Services& services, Readings& readings,
                      ReadingServices readingServices, const DockCommands& commands, OwnIcons& icons);

  std::optional<ApplicationFacts> applicationAt(const QString& path) const override;
  QString ownIcon(const QString& path) const override { return icons_.iconOf(path); }
  LauncherHint hintOf(const QString& desktopId) const override;
  bool isStarting(const QString& path) const override { return commands_.isLaunching(path); }
  std::optional<qint64> trashItems() const override;
  bool reducesMotion() const override;
  std::optional<bool> uses24Hour() const override { return readings_.uses24Hour(); }
  bool sendsNearby() const override { return readingServices_.sendsNearby; }
  std::shared_ptr<const CalendarDigest> calendar() const override { return readings_.calendar(store_.now()); }
  QList<TileSource*> sources() const override { return {connected_.get()}; }
  void addReadings(ReadingFacts& readings, const QList<DockWidget>& widgets) const override;

 private:
  const AppStore& store_;
  const Services& services_;
  Readings& readings_;
  ReadingServices readingServices_;
  const DockCommands& commands_;
  OwnIcons& icons_;
  std::unique_ptr<ConnectionTiles> connected_;
};

}  // namespace tarnwick
