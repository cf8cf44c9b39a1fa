#include "config/DockProfile.h"

#include <QCoreApplication>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {

DockProfile DockProfile::initial() {
  DockProfile profile{QUuid::createUuid(), QCoreApplication::translate("DockProfile", "Everyday"), {}};
  for (const QLatin1StringView kind : Catalog::starterKinds()) {
    profile.widgets.append(DockWidget{QUuid::createUuid(), kind, {}, {}});
  }
  return profile;
}

}  // namespace tarnwick
