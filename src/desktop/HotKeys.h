#pragma once

#include <QObject>
#include <QString>

namespace tarnwick {

/// A wished-for key: a virtual key code and a modifier mask in the form that the settings document keeps
/// (Command 256, Shift 512, Option 2048, Control 4096). See VirtualKeys for what they mean on this desktop.
struct HotKeyWish {
  quint32 keyCode = 0;
  quint32 modifiers = 0;

  bool operator==(const HotKeyWish&) const = default;
};

/// What became of a wish.
struct HotKeyBinding {
  bool bound = false;
  QString text;    ///< When bound: the key as a person reads it, such as "Ctrl+Alt+Super+D".
  QString reason;  ///< When not: one sentence.

  bool operator==(const HotKeyBinding&) const = default;
};

/// Keys that work whatever program has the focus.
class HotKeys : public QObject {
  Q_OBJECT
 public:
  /// Binds the action `identifier` to a key. An identifier that is bound already is bound anew.
  virtual HotKeyBinding bind(quint32 identifier, const HotKeyWish& wish) = 0;
  /// Gives every key back.
  virtual void unbindAll() = 0;

 Q_SIGNALS:
  void pressed(quint32 identifier);
  /// The keyboard's layout changed and a key of ours could not be taken under the new one.
  void lost(quint32 identifier);
};

}  // namespace tarnwick
