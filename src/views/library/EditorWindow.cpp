#include "views/library/EditorWindow.h"

#include <QCoreApplication>

namespace tarnwick {

class EditorWindow::Form {};

EditorWindow::EditorWindow(AppStore& store, const QUuid& widget, EditorServices)
    : AppWindow(store, QCoreApplication::translate("Library", "Edit Widget")), widget_(widget) {}

EditorWindow::~EditorWindow() = default;

void EditorWindow::keyPressEvent(QKeyEvent* event) { AppWindow::keyPressEvent(event); }

}  // namespace tarnwick
