#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// Translates what the panels say: PanelWords::tr("…").
class PanelWords {
  Q_DECLARE_TR_FUNCTIONS(Panels)
};

}  // namespace tarnwick
