#pragma once

#include <QImage>

namespace tarnwick {

/// Blurs a picture of eight bits a channel where it lies. `spread`, in pixels, is twice the deviation of the bell curve
/// that it comes close to. Beyond its edges there is nothing: what should not fade there needs space around it.
void blur(QImage& picture, double spread);

}  // namespace tarnwick
