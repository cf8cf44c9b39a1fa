#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QSet>
#include <QUuid>
#include <functional>
#include <memory>
#include <vector>

#include "config/DockWidget.h"
#include "views/tiles/TileSource.h"
#include "views/tiles/TileSources.h"
#include "widgets/catalog/TickCadence.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

/// What some widgets show, kept: each source is asked once, and again when it announces another value for one of them
/// or when the minute turns under it. While nobody looks nothing is asked; it is taken all at once afterwards. For
/// docks, panels and pictures of tiles alike. Main thread only.
class KeptSources final : public QObject {
  Q_OBJECT
 public:
  struct Setup {
    std::vector<std::unique_ptr<TileSource>> own;
    QList<TileSource*> borrowed = {};  ///< They outlive this.
    /// Left empty, the sources give the moment too, and no minute turns.
    std::function<QDateTime()> now = {};
    /// How often a widget shows something new by the clock alone. Left empty, never.
    std::function<TickCadence(const DockWidget&)> cadence = {};
  };

  explicit KeptSources(Setup setup);
  /// Of values that nothing announces, for pictures and tests.
  static std::unique_ptr<KeptSources> given(std::function<TileSources()> give);

  void setCadence(std::function<TickCadence(const DockWidget&)> cadence) { setup_.cadence = std::move(cadence); }
  /// Says whether somebody looks; without it somebody always does.
  void setSeen(std::function<bool()> seen) { seen_ = std::move(seen); }
  /// Values of these families are shown with every widget, whatever its own family.
  void alsoShow(const QList<Family>& families) { alsoShown_ = families; }

  /// What the widgets show, as far as it was taken.
  const TileSources& values() const { return values_; }

  /// Whose values are kept from now on. Other widgets than before have all of it taken anew, edited ones what is read
  /// from their options. Gives those that may show something else by that, without announcing them.
  QSet<QUuid> setWidgets(const QList<DockWidget>& widgets);
  /// Takes all of it anew. False while nobody looks; the first time it does not matter who does.
  bool takeAll();
  /// Takes all of it if something was missed while nobody looked. True when that was so.
  bool takeLate() { return isLate_ && takeAll(); }
  /// The clock went on.
  void beat();

 Q_SIGNALS:
  /// These widgets may show something else.
  void changed(const QSet<QUuid>& widgets);

 private:
  using Which = std::function<bool(const DockWidget&)>;

  void follow(TileSource& source);
  void take(TileSource& source, const Which& which);
  bool shows(const DockWidget& widget, const QList<Family>& families) const;
  QSet<QUuid> idsOf(const Which& which) const;
  void takeMoment();
  bool isSeen();

  Setup setup_;
  QList<TileSource*> all_;
  std::function<bool()> seen_;
  QList<Family> alsoShown_;
  QList<DockWidget> widgets_;
  TileSources values_;
  qint64 minute_ = 0;  ///< The one that was shown last, since 1970.
  bool isFilled_ = false;
  bool isLate_ = false;
};

}  // namespace tarnwick
