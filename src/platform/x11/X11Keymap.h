#pragma once

#include <xcb/xcb.h>

#include <QList>
#include <memory>
#include <optional>

struct xkb_keymap;

namespace tarnwick {

/// What the keys of the keyboard mean at the moment it was read.
class X11Keymap {
 public:
  /// Reads the core keyboard. Nothing where the server does not describe it.
  static std::optional<X11Keymap> read(xcb_connection_t* connection);

  /// The keys that give the symbol when pressed alone: under the active layout, else under the user's other layouts,
  /// else the key in the place where the reference (US) layout has the symbol. Empty if the keyboard has no such key.
  QList<xcb_keycode_t> keys(quint32 keysym) const;
  /// The server's modifiers for a mask in the form of VirtualKeys, or nothing if the keyboard lacks one of them.
  std::optional<quint16> modifiers(quint32 mask) const;
  /// Every combination of Caps Lock, Num Lock and Scroll Lock, none of them included: a key is grabbed under each.
  QList<quint16> lockCombinations() const;

 private:
  using Handle = std::shared_ptr<xkb_keymap>;

  explicit X11Keymap(Handle keymap) : keymap_(std::move(keymap)) {}

  void readModifiers(xcb_connection_t* connection);

  Handle keymap_;
  quint32 activeLayout_ = 0;
  quint16 super_ = 0;  ///< Zero where no modifier carries such a key.
  quint16 alt_ = 0;
  quint16 numLock_ = 0;
  quint16 scrollLock_ = 0;
};

}  // namespace tarnwick
