#pragma once

#include <QStandardPaths>

#include "config/DockWidget.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

/// The folder that a tile of files shows: the one that was chosen for it, else the user's downloads where it is a tile
/// of those. Empty for none.
inline QString widgetFolder(const DockWidget& widget) {
  const QString path = widget.options.value(option::path);
  if (!path.isEmpty() || !KindTraits::of(widget.kind).isDownloads) return path;
  return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
}

/// Whether a tile shows the newest files of its folder in place of the folder.
inline bool showsStack(const DockWidget& widget) { return widget.options.value(option::stack) == value::on; }

}  // namespace tarnwick
