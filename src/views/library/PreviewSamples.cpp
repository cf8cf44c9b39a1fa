#include "views/library/PreviewSamples.h"

#include "views/families/Rooms.h"
#include "views/snapshot/SnapshotFixture.h"

namespace tarnwick {

PreviewSamples::PreviewSamples() = default;
PreviewSamples::~PreviewSamples() = default;

DockWidget PreviewSamples::shown(const DockWidget& widget, const QDateTime& now, const QStringList& applications) {
  DockWidget shown = widget;
  if (shown.options.isEmpty()) shown.options = Rooms::example(widget.kind, {now, applications});
  return shown;
}

void PreviewSamples::fill(TileSources& sources, const QList<DockWidget>& widgets) {
  if (!samples_) samples_ = std::make_unique<TileSources>(SnapshotFixture::sources());
  Rooms::sample(sources, *samples_, widgets);
}

}  // namespace tarnwick
