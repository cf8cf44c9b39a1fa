#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>
#include <map>
#include <memory>

#include "platform/wayland/WaylandProtocols.h"

namespace tarnwick {

/// Which of KWin's virtual desktops are shown.
class PlasmaDesktops final : public QObject {
  Q_OBJECT
 public:
  explicit PlasmaDesktops(WaylandOwned<org_kde_plasma_virtual_desktop_management> manager);
  ~PlasmaDesktops() override;

  /// Whether one of these is; a window of none is on all.
  bool shows(const QStringList& desktops) const;

 Q_SIGNALS:
  void changed();

 private:
  class Desktop;

  void setShown(const QString& id, bool isShown);

  WaylandOwned<org_kde_plasma_virtual_desktop_management> manager_;
  std::map<QString, std::unique_ptr<Desktop>> desktops_;
  QSet<QString> shown_;
};

}  // namespace tarnwick
