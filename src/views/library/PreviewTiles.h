#pragma once

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QUuid>
#include <functional>
#include <memory>

#include "views/library/PreviewSamples.h"
#include "views/tiles/TileContent.h"
#include "views/window/WidgetPreviews.h"

namespace tarnwick {

/// The live pictures of widgets that no dock need hold. Each is made when it is first wanted and painted once for each
/// content; of those that are no longer looked at only so many are kept.
class PreviewTiles final : public QObject {
  Q_OBJECT
 public:
  /// `seen` says whether somebody looks; while nobody does, nothing is taken.
  PreviewTiles(const PreviewSources& sources, std::function<bool()> seen);

  /// How pictures are painted from now on.
  void setPalette(const Palette& palette);
  void setDirection(Qt::LayoutDirection direction);
  /// Paths of desktop entries for tiles of several.
  void setApplications(const QStringList& paths);
  /// Shows examples where the user has nothing to show. It does unless set otherwise.
  void setExamples(bool examples) { examples_ = examples; }

  /// These widgets are looked at, at the moment `now`, and no others. Takes what they show where they are not those of
  /// before; else what the clock alone makes another.
  void show(const QList<DockWidget>& widgets, const QDateTime& now);
  /// What a widget showed when it was looked at last; null for one that never was.
  const TileContent* content(const QUuid& widget) const;

  /// Whether what a widget showed then is an example in place of something that this computer or the user lacks.
  bool isSample(const QUuid& widget) const { return samplesShown_.contains(widget); }

  /// Draws the tile of `widget` with its top left at `place`, in the size that the dock gives it.
  void paint(QPainter& painter, const QPointF& place, const DockWidget& widget);
  /// The same as a picture for a drag, as a dock in these colours shows a tile that is held.
  QPixmap dragPicture(const DockWidget& widget, const Palette& palette, double ratio) const;

  static double widthOf(const DockWidget& widget);

 Q_SIGNALS:
  /// These widgets show something new, or an example in place of it.
  void changed(const QSet<QUuid>& widgets);

 private:
  QList<DockWidget> shownWidgets() const;
  void remake(const QSet<QUuid>& widgets);
  bool remake(const DockWidget& widget, const DockWidget& shown, const TileSources& own, const TileSources& values);
  QPixmap render(const DockWidget& widget, const TileContent& content, const Palette& palette, double ratio) const;

  TileIcons icons_;
  std::unique_ptr<KeptSources> kept_;
  QList<DockWidget> widgets_;  ///< Those that are looked at.
  QDateTime now_;
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
