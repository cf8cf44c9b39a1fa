#pragma once

#include <QHash>
#include <QWidget>
#include <memory>
#include <span>

#include "views/families/services/ServiceTile.h"
#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The panel of a widget that shows what a service answers.
std::unique_ptr<TilePanel> makeServicePanel(const PanelContext& context);

/// One allowance in it: how much of it is used, and when it begins anew.
QWidget* makeUsageView(const UsageWindow& window, const TileSources& sources);

/// Whether widgets of a kind show a figure from an address of the user's own and nothing else: nobody signs in to it.
bool hasAddressAlone(const QString& kind);

/// What widgets of each kind may look like, by kind: nothing of it is anybody's.
QHash<QString, RemoteReading> serviceExamples(const QDateTime& now, const QLocale& locale);

/// What else may come of asking, for the pictures of a kind.
std::span<const PanelState> serviceStates();

}  // namespace tarnwick
