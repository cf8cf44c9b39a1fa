#pragma once

#include <QDrag>

namespace tarnwick {

/// What a view gives to the hand, to be filled with data and a picture, and then held. Nothing of it belongs to the
/// view, which may go while it is still held, as when its panel closes.
QDrag* makeDrag();

/// Begins to hold it, once the view is done with the move that began the drag. `usual`: what is done with it unless
/// the user says otherwise.
void carry(QDrag* drag, Qt::DropActions possible, Qt::DropAction usual);

}  // namespace tarnwick
