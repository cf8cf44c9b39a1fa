#include "views/library/LibraryWindow.h"

#include <QCoreApplication>

namespace tarnwick {

class LibraryWindow::Shelves {};

LibraryWindow::LibraryWindow(AppStore& store, LibraryServices services)
    : AppWindow(store, QCoreApplication::translate("Library", "Add Widgets")), services_(std::move(services)) {}

LibraryWindow::~LibraryWindow() = default;

void LibraryWindow::showCategory(const QString&) {}

void LibraryWindow::setTarget(const QString&) {}

void LibraryWindow::keyPressEvent(QKeyEvent* event) { AppWindow::keyPressEvent(event); }

}  // namespace tarnwick
