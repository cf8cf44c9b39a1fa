#include "config/DockProfile.h"

#include <QCoreApplication>

#include "widgets/catalog/Kinds.h"

namespace tarnwick {

DockProfile DockProfile::initial() {
  DockProfile profile{QUuid::createUuid(), QCoreApplication::translate("DockProfile", "Everyday"), {}};
  for (const auto kind : {kind::applications, kind::digitalClock, kind::analogClassicLight, kind::weatherCurrent,
                          kind::cpu, kind::ram, kind::systemQuickToggles}) {
    profile.widgets.append(DockWidget{QUuid::createUuid(), kind, {}, {}});
  }
  return profile;
}

}  // namespace tarnwick
