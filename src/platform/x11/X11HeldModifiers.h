#pragma once

#include <optional>

#include "desktop/HeldModifiers.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11KeyboardUse.h"
#include "platform/x11/X11Keymap.h"

namespace tarnwick {

/// The modifiers that the server's keyboard extension says are held. The events must outlive it.
class X11HeldModifiers final : public HeldModifiers {
  Q_OBJECT
 public:
  explicit X11HeldModifiers(X11Events& events);

  Capability capability() const override;
  void watch(bool watched) override;

 private:
  void take(quint8 held);
  quint32 maskOf(quint8 held) const;

  X11Events& events_;
  X11KeyboardUse use_;
  std::optional<X11Keymap> keymap_;  ///< Read when it is needed; none once the keyboard changed.
  QMetaObject::Connection watching_;
  quint32 held_ = 0;
};

}  // namespace tarnwick
