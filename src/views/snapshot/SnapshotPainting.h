#pragma once

#include <QHash>
#include <QImage>
#include <QString>
#include <QStringList>
#include <map>

#include "views/dock/DockRow.h"
#include "views/panels/Room.h"
#include "views/snapshot/Snapshot.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/theme/Glass.h"
#include "views/theme/Palette.h"

namespace tarnwick {

/// One of the looks that everything is pictured in.
struct SnapshotScheme {
  QString name;
  DockStyle style = DockStyle::DarkGlass;
  bool monochrome = false;

  bool isLight() const { return style == DockStyle::LightGlass; }
};

/// A picture and what it is called on a sheet.
struct SnapshotPicture {
  QString name;
  QImage image;
};

/// Paints single things into pictures of their own, at a density. Keeps what it has painted, since a tile and a panel
/// stand in a picture of their own and on a sheet.
class SnapshotPainter {
 public:
  SnapshotPainter(const SnapshotScheme& scheme, double density) : scheme_(scheme), density_(density) {}

  const SnapshotScheme& scheme() const { return scheme_; }
  double density() const { return density_; }
  /// A picture as it stands alone: on the ground of the scheme. Those of tiles and panels are clear around them.
  QImage onGround(const QImage& piece) const;
  /// A tile on its piece of glass.
  QImage tile(const QString& kind, double scale = 1);
  /// The same in one of its further states.
  QImage tile(const QString& kind, const PanelState& state);
  /// A panel with its shadow.
  QImage panel(SnapshotStore& fixture, const QString& kind);
  /// The same in one of its further states, with a fixture of its own.
  QImage panel(const QString& kind, const PanelState& state) const;
  /// A dock, half over a dark landscape and half over a light one.
  QImage dock(const DockRow& row) const;
  /// A dock at the foot of a screen.
  QImage scene(const DockRow& row) const;
  /// Pictures below each other, under their names.
  QImage list(const QString& title, const QList<SnapshotPicture>& pictures) const;
  /// A whole widget in the size that it wants.
  QImage picture(QWidget& widget) const;
  /// A pane of glass over a landscape.
  QImage pane(const SnapshotPane& pane) const;
  /// A window of the program, at its size.
  QImage window(QWidget& window) const;
  /// A group's tiles at three scales, then its panels, under its name.
  QImage sheet(SnapshotStore& fixture, const QString& title, const QStringList& kinds, bool tiles, bool panels);
  /// Tiles in rows, and panels below them in columns, under a name.
  QImage sheet(const QString& title, const QList<SnapshotPicture>& tiles, const QList<SnapshotPicture>& panels) const;

 private:
  QImage tile(const QString& kind, double scale, const TileSources& sources);
  QImage render(QWidget& widget) const;
  QImage blank(const QSizeF& size) const;
  /// One that is filled, without the space for an alpha that nothing of it has.
  QImage ground(const QSizeF& size) const;

  SnapshotScheme scheme_;
  double density_;
  std::map<double, Glass> glass_;  ///< By the scale of the tiles on it.
  QHash<QString, QImage> panels_;
};

}  // namespace tarnwick
