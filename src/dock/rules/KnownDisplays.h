#pragma once

#include <QList>
#include <QString>

#include "config/DockConfiguration.h"

namespace tarnwick {

class Screens;

/// A display that is connected or was once.
struct KnownDisplay {
  QString id;
  QString name;
  bool isConnected = true;

  /// Its name, with "(not connected)" where it is not.
  QString words() const;
  bool operator==(const KnownDisplay&) const = default;
};

/// The connected displays, the main one first, then those that the settings remember. `screens` may be null.
QList<KnownDisplay> knownDisplays(const DockConfiguration& config, const Screens* screens);

}  // namespace tarnwick
