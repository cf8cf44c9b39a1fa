#include "platform/x11/X11Travel.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr int kEnoughAgreements = 8;
constexpr double kTolerance = 2;
// A program may put the pointer elsewhere without a motion: that is noticed after this way at the latest.
constexpr double kFarthest = 64;

double longest(const QPointF& way) { return std::max(std::abs(way.x()), std::abs(way.y())); }

}  // namespace

bool X11Travel::moved(quint16 device, const QPointF& way) {
  if (device != device_) {
    device_ = device;
    agreements_ = 0;
    left_ = 0;
  }
  way_ += way;
  left_ -= longest(way);
  if (isAsking_) meanwhile_ += longest(way);
  return left_ <= 0;
}

void X11Travel::found(const QPoint& place, double distance) {
  // What was reported while the request was pending may lie before or behind the answer.
  const bool isQuiet = meanwhile_ == 0;
  if (isCertain_ && isQuiet && !way_.isNull()) {
    const bool agrees = longest(QPointF(place - place_) - way_) <= kTolerance;
    agreements_ = agrees ? std::min(agreements_ + 1, kEnoughAgreements) : 0;
  }
  left_ = agreements_ == kEnoughAgreements ? std::min(distance, kFarthest) - kTolerance - meanwhile_ : 0;
  place_ = place;
  way_ = {};
  isCertain_ = isQuiet;
  isAsking_ = false;
  meanwhile_ = 0;
}

}  // namespace tarnwick
