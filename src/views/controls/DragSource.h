#pragma once

#include <QDrag>

namespace tarnwick {

/// A drag that a view starts, to be filled with data and a picture. Nothing of it belongs to the view, which may go
/// while the drag goes on, as when its panel closes.
QDrag* makeDrag();

/// Starts the drag once the view is done with the move that began it. `usual`: what is done with it unless the user
/// says otherwise.
void beginDrag(QDrag* drag, Qt::DropActions possible, Qt::DropAction usual);

}  // namespace tarnwick
