#include "app/AppNumbers.h"

#include <utility>

#include "desktop/VirtualKeys.h"

namespace tarnwick {

AppNumbers::AppNumbers(Scheduler& scheduler, HeldModifiers& modifiers) : scheduler_(scheduler), modifiers_(modifiers) {
  connect(&modifiers, &HeldModifiers::changed, this, &AppNumbers::take);
  connect(&modifiers, &HeldModifiers::usedWithSuper, this, &AppNumbers::hide);
}

AppNumbers::~AppNumbers() {
  if (on_) modifiers_.watch(false);
}

void AppNumbers::setOn(bool on) {
  if (std::exchange(on_, on) == on) return;
  held_ = 0;
  hide();
  modifiers_.watch(on);
}

void AppNumbers::hide() {
  due_.reset();
  show(false);
}

void AppNumbers::take(quint32 modifiers) {
  if (!on_) return;
  const quint32 before = std::exchange(held_, modifiers);
  hide();
  // What is left of several keys is on its way up.
  if (before == 0 && modifiers == VirtualKeys::kCommand) due_ = scheduler_.after(kDelay, [this] { show(true); });
}

void AppNumbers::show(bool shown) {
  if (std::exchange(shown_, shown) != shown) Q_EMIT changed();
}

}  // namespace tarnwick
