#pragma once

#include <QCache>
#include <QHash>
#include <QPixmap>
#include <QSet>
#include <QUuid>

#include "views/library/PreviewSamples.h"
#include "views/tiles/TileContent.h"
#include "views/window/WidgetPreviews.h"

namespace tarnwick {

/// The live pictures of widgets that no dock need hold. Each is made when it is first wanted and painted once for each
/// content; of those that are no longer looked at only so many are kept.
class PreviewTiles {
 public:
  explicit PreviewTiles(PreviewSources sources) : sources_(std::move(sources)) {}

  /// How pictures are painted from now on.
  void setPalette(const Palette& palette);
  void setDirection(Qt::LayoutDirection direction);
  /// Paths of desktop entries for tiles of several.
  void setApplications(const QStringList& paths) { applications_ = paths; }
  /// Shows examples where the user has nothing to show. It does unless set otherwise.
  void setExamples(bool examples) { examples_ = examples; }

  /// Takes what these widgets show at the moment `now`. Gives the identities of those that show something new,
  /// or an example in place of it.
  QList<QUuid> refresh(const QList<DockWidget>& widgets, const QDateTime& now);
  /// What a widget showed when it was refreshed last; null for one that never was.
  const TileContent* content(const QUuid& widget) const;

  /// Whether what a widget showed then is an example in place of something that this computer or the user lacks.
  bool isSample(const QUuid& widget) const { return samplesShown_.contains(widget); }

  /// Draws the tile of `widget` with its top left at `place`, in the size that the dock gives it.
  void paint(QPainter& painter, const QPointF& place, const DockWidget& widget);
  /// The same as a picture for a drag, on a ground of its own.
  QPixmap dragPicture(const DockWidget& widget, double ratio);

  static double widthOf(const DockWidget& widget);

 private:
  QPixmap render(const DockWidget& widget, const TileContent& content, double ratio) const;

  PreviewSources sources_;
  PreviewSamples samples_;
  Palette palette_;
  Qt::LayoutDirection direction_ = Qt::LeftToRight;
  QStringList applications_;
  bool examples_ = true;
  QHash<QUuid, TileContent> contents_;
  QSet<QUuid> samplesShown_;
  QCache<QUuid, QPixmap> pictures_{16 * 1024};  ///< In units of 1024 bytes.
};

}  // namespace tarnwick
