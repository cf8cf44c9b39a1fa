#pragma once

#include <QDateTime>
#include <QList>
#include <memory>

#include "config/DockWidget.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// What a picture of a tile shows where there is nothing of the user's to show yet, so that one sees what it is for.
class PreviewSamples {
 public:
  PreviewSamples();
  ~PreviewSamples();

  /// A widget as its picture has it: one that nothing is set for gets an example of its kind. `applications`: paths of
  /// desktop entries, for tiles of several.
  static DockWidget shown(const DockWidget& widget, const QDateTime& now, const QStringList& applications);

  /// Fills what these widgets show and the sources lack.
  void fill(TileSources& sources, const QList<DockWidget>& widgets);

 private:
  std::unique_ptr<TileSources> samples_;  ///< Made when first needed.
};

}  // namespace tarnwick
