#include "platform/docks/module/GSettingsDock.h"
#include "platform/docks/module/PlasmaPanel.h"
#include "platform/docks/module/XfcePanel.h"

/// The module's entry point: what speaks with a kind of dock, owned by the caller; null for an unknown kind.
extern "C" Q_DECL_EXPORT tarnwick::DockBackend* tarnwickDockBackend(const QString& kind) {
  using namespace tarnwick;
  if (kind == QLatin1StringView("plank")) return new GSettingsDock(GSettingsDock::plank());
  if (kind == QLatin1StringView("gnome")) return new GSettingsDock(GSettingsDock::gnome());
  if (kind == QLatin1StringView("xfce")) return new XfcePanel;
  if (kind == QLatin1StringView("plasma")) return new PlasmaPanel;
  return nullptr;
}
