#include "config/DockProfile.h"

#include <QCoreApplication>

namespace tarnwick {

using namespace Qt::StringLiterals;

DockProfile DockProfile::initial() {
  DockProfile profile{QUuid::createUuid(), QCoreApplication::translate("DockProfile", "Everyday"), {}};
  for (const auto kind : {"applications"_L1, "digitalClock"_L1, "analogClassicLight"_L1, "weatherCurrent"_L1, "cpu"_L1,
                          "ram"_L1, "systemQuickToggles"_L1}) {
    profile.widgets.append(DockWidget{QUuid::createUuid(), kind, {}, {}});
  }
  return profile;
}

}  // namespace tarnwick
