#pragma once

#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>

#include "base/Scheduler.h"
#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// What a panel can ask of the rest of the program. One that is left empty is not offered: test it before a button for
/// it is made.
struct PanelActions {
  std::function<void(const QUrl& url)> openUrl;
  std::function<void(const QString& path)> openPath;
  /// Opens the form in which a widget is set up or connected.
  std::function<void(const QUuid& widget)> openEditor;
  /// Starts the desktop's own system monitor.
  std::function<void()> openMonitor;
  std::function<void(const QString& text)> copyText;
};

/// What a panel is made from. Everything is borrowed and outlives the panel. The widget is held by its identity: the
/// document may change at any moment, and a panel whose widget is gone closes by itself.
struct PanelContext {
  AppStore& store;
  Scheduler& scheduler;
  Toggles& toggles;
  QUuid widget;
  QString display;  ///< The display whose dock opened the panel.
  /// What tiles show at this moment; panels show the same values.
  std::function<TileSources()> sources;
  PanelActions actions;

  /// The widget's kind; empty when the settings hold it no more.
  QString kind() const {
    for (const DockProfile& profile : store.config().profiles)
      for (const DockWidget& each : profile.widgets)
        if (each.id == widget) return each.kind;
    return {};
  }
};

}  // namespace tarnwick
