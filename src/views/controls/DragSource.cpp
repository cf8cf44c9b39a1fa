#include "views/controls/DragSource.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace tarnwick {

// The toolkit asks the source of a drag for nothing, but does not survive its end.
QDrag* makeDrag() { return new QDrag(QCoreApplication::instance()); }

// While something is held, events go on in a loop of their own, and a view that began it in its handler would have to
// be there at the end.
void beginDrag(QDrag* drag, Qt::DropActions possible, Qt::DropAction usual) {
  const auto hold = [drag, possible, usual] {
    if (QGuiApplication::mouseButtons() == Qt::NoButton) {
      drag->deleteLater();
      return;
    }
    drag->exec(possible, usual);
  };
  QMetaObject::invokeMethod(drag->source(), hold, Qt::QueuedConnection);
}

}  // namespace tarnwick
