#include "motion/MotionStyle.h"

namespace tarnwick {

MotionParameters MotionParameters::of(MotionStyle style, bool reduceMotion) {
  if (reduceMotion) return {0.15, 1.0};
  switch (style) {
    case MotionStyle::Reveal:
      return {0.4, 1.0};
    case MotionStyle::Quick:
      return {0.25, 1.0};
    case MotionStyle::Lively:
      return {0.3, 0.8};
  }
  return {};
}

}  // namespace tarnwick
