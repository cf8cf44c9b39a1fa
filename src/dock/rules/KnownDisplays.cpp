#include "dock/rules/KnownDisplays.h"

#include <QCoreApplication>
#include <algorithm>

#include "desktop/Screens.h"

namespace tarnwick {

namespace {

struct KnownDisplaysWords {
  Q_DECLARE_TR_FUNCTIONS(Settings)
};

}  // namespace

QString KnownDisplay::words() const {
  return isConnected ? name : KnownDisplaysWords::tr("%1 (not connected)").arg(name);
}

QList<KnownDisplay> knownDisplays(const DockConfiguration& config, const Screens* screens) {
  QList<KnownDisplay> known;
  const DesktopOptions& options = config.desktopOptions();
  if (screens)
    for (const Screen& screen : screens->all()) known.append({screen.id, screen.name, true});
  for (const QString& id : options.attachedDisplays)
    if (std::ranges::none_of(known, [&](const KnownDisplay& each) { return each.id == id; }))
      known.append({id, options.displayNames.value(id, id), !screens});
  return known;
}

}  // namespace tarnwick
