#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace tarnwick {

/// The settings document keeps keys as virtual key codes, which name a place on the keyboard, and modifiers as a mask.
/// This table says what they are on this desktop: the key symbol in that place on the reference (US)
/// layout.
struct VirtualKeys {
  static constexpr quint32 kCommand = 256;  ///< The Super key here.
  static constexpr quint32 kShift = 512;
  static constexpr quint32 kOption = 2048;  ///< The Alt key here.
  static constexpr quint32 kControl = 4096;

  /// The XKB key symbol of a code, or nothing for a code that no keyboard has.
  static std::optional<quint32> keysym(quint32 keyCode);
  /// The code of a key symbol (upper or lower case), the other way round.
  static std::optional<quint32> keyCode(quint32 keysym);
  /// A key with its modifiers as a person reads it: "Ctrl+Alt+Super+D". An unknown code reads "Key 200".
  static QString text(quint32 keyCode, quint32 modifiers);
};

}  // namespace tarnwick
