#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// What several pages of the settings say.
struct SettingsWords {
  Q_DECLARE_TR_FUNCTIONS(Settings)
};

}  // namespace tarnwick
