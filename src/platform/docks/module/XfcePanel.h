#pragma once

#include <QVariantMap>

#include "platform/docks/DockBackend.h"

namespace tarnwick {

/// The panels of Xfce that lie along the bottom edge, through the settings service xfconf. A place is a panel
/// ("panel-2"), a value is a type's letter and the value ("u:2").
class XfcePanel final : public DockBackend {
 public:
  QList<DockSetting> own(DockPreference preference) override;
  QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) override;
  bool knows(DockPreference preference, const DockSetting& setting) const override;
  bool put(const DockSetting& setting, const QList<DockValue>& over) override;
  bool flush() override;

 private:
  QList<DockSetting> pending_;
};

}  // namespace tarnwick
