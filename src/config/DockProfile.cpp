#include "config/DockProfile.h"

#include <QCoreApplication>

#include "widgets/catalog/Catalog.h"

namespace tarnwick {

namespace {

struct DockProfileWords {
  Q_DECLARE_TR_FUNCTIONS(DockProfile)
};

}  // namespace

DockProfile DockProfile::initial() {
  DockProfile profile{QUuid::createUuid(), DockProfileWords::tr("Everyday"), {}};
  for (const QLatin1StringView kind : Catalog::starterKinds()) {
    profile.widgets.append(DockWidget{QUuid::createUuid(), kind, {}, {}});
  }
  return profile;
}

}  // namespace tarnwick
