#include "platform/x11/X11HeldModifiers.h"

#include <QCoreApplication>
#include <utility>

#include "desktop/VirtualKeys.h"

namespace tarnwick {

namespace {

struct X11HeldModifiersWords {
  Q_DECLARE_TR_FUNCTIONS(HeldModifiers)
};

}  // namespace

X11HeldModifiers::X11HeldModifiers(X11Events& events) : events_(events), use_(events) {
  connect(&events, &X11Events::keyboardChanged, this, [this] { keymap_.reset(); });
  connect(&use_, &X11KeyboardUse::used, this, &X11HeldModifiers::usedWithSuper);
}

Capability X11HeldModifiers::capability() const {
  if (events_.hasKeyboardExtension()) return Capability::yes();
  return Capability::no(
      X11HeldModifiersWords::tr("This display does not tell which keys are held, so the apps show no numbers."));
}

void X11HeldModifiers::watch(bool watched) {
  if (watched == static_cast<bool>(watching_)) return;
  held_ = 0;
  use_.watch(false);
  if (!watched) {
    disconnect(std::exchange(watching_, {}));
    return;
  }
  watching_ = connect(&events_, &X11Events::modifiersHeld, this, &X11HeldModifiers::take);
}

void X11HeldModifiers::take(quint8 held) {
  if (!keymap_) keymap_ = X11Keymap::read(events_.connection());
  const quint32 mask = maskOf(held);
  use_.watch(mask == VirtualKeys::kCommand);
  if (std::exchange(held_, mask) != mask) Q_EMIT changed(mask);
}

quint32 X11HeldModifiers::maskOf(quint8 held) const {
  quint32 mask = 0;
  for (const quint32 one : {VirtualKeys::kCommand, VirtualKeys::kShift, VirtualKeys::kOption, VirtualKeys::kControl})
    if (keymap_ && (keymap_->modifiers(one).value_or(0) & held) != 0) mask |= one;
  return mask;
}

}  // namespace tarnwick
