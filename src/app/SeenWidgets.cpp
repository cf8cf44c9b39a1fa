#include "app/SeenWidgets.h"

#include <QEvent>
#include <QSet>

#include "app/LiveDocks.h"
#include "services/Connections.h"
#include "store/AppStore.h"
#include "widgets/catalog/KindTraits.h"
#include "windows/WindowService.h"

namespace tarnwick {

SeenWidgets::SeenWidgets(const AppStore& store, const LiveDocks& docks, Connections& connections,
                         WindowService& windows)
    : store_(store), docks_(docks), connections_(connections), windows_(windows) {
  connect(&store_, &AppStore::activeChanged, this, &SeenWidgets::tell);
  connect(&store_, &AppStore::configChanged, this, &SeenWidgets::tell);
}

void SeenWidgets::watch(LiveDock& dock) { dock.installEventFilter(this); }

bool SeenWidgets::eventFilter(QObject* dock, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::Hide) tell();
  return QObject::eventFilter(dock, event);
}

void SeenWidgets::tell() {
  QSet<QUuid> seen;
  QList<DockWidget> pinned;
  for (const auto& [display, dock] : docks_.all()) {
    if (!dock->isVisible()) continue;
    for (const DockWidget& widget : store_.displayedWidgets(display)) {
      if (!seen.contains(widget.id) && KindTraits::of(widget.kind).isPinnedWindow) pinned.append(widget);
      seen.insert(widget.id);
    }
  }
  connections_.setSeen(seen);
  windows_.follow(pinned);
}

}  // namespace tarnwick
