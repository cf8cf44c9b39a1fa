#pragma once

#include <QString>
#include <QUuid>
#include <functional>
#include <memory>

#include "base/Scheduler.h"
#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/theme/Palette.h"
#include "views/tiles/KeptSources.h"
#include "views/tiles/ReadingServices.h"

namespace tarnwick {

class PanelDrafts;

/// What a panel is made from. Everything is borrowed and outlives the panel. The widget is held by its identity: the
/// document may change at any moment, and a panel whose widget is gone closes by itself.
struct PanelContext {
  AppStore& store;
  Scheduler& scheduler;
  Toggles& toggles;
  Commands& commands;
  QUuid widget;
  QString display;  ///< The display whose dock opened the panel.
  /// Begins to keep what tiles show; panels show the same values. Left empty, nothing is shown.
  std::function<std::unique_ptr<KeptSources>()> sources;
  ReadingServices readings;
  /// Null where what was written and not used yet goes with the panel.
  PanelDrafts* drafts = nullptr;
  /// The kind's; set by the code that makes the panel.
  Accent accent = Accent::Blue;
  /// As in TileRequest; set by the same code.
  bool comesLater = false;
  /// Whose panel it is: that of another kind, of which the widget shows something; empty for that of its own.
  QString as = {};

  /// The widget's kind; empty when the settings hold it no more.
  QString kind() const {
    for (const DockProfile& profile : store.config().profiles)
      for (const DockWidget& each : profile.widgets)
        if (each.id == widget) return each.kind;
    return {};
  }
};

}  // namespace tarnwick
