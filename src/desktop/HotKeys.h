#pragma once

#include <QObject>
#include <QString>

#include "desktop/Capability.h"

namespace tarnwick {

/// A key that is asked for: a virtual key code and a modifier mask in the form that the settings document keeps
/// (Command 256, Shift 512, Option 2048, Control 4096). See VirtualKeys for what they mean on this desktop.
struct HotKeyRequest {
  quint32 keyCode = 0;
  quint32 modifiers = 0;

  bool operator==(const HotKeyRequest&) const = default;
};

/// What became of a request.
struct HotKeyBinding {
  bool bound = false;
  QString text;    ///< When bound: the key as a person reads it, such as "Ctrl+Alt+Super+D".
  QString reason;  ///< When not: one sentence.

  bool operator==(const HotKeyBinding&) const = default;
};

/// What a key does, for desktops that bind it themselves.
struct HotKeyAction {
  QString order;  ///< The order to a running program that does the same, such as "--toggle".
  QString words;  ///< As a person reads it, such as "Show or hide the dock".
};

/// Keys that work whatever program has the focus.
class HotKeys : public QObject {
  Q_OBJECT
 public:
  /// Whether a program can have keys here at all. It may turn out only some time after the first is asked for; then
  /// `lost` follows for each.
  virtual Capability capability() const { return Capability::yes(); }
  /// Whether that, and what became of the keys that were asked for, is the desktop's answer. Until then nothing is to
  /// be promised; `answered` follows.
  virtual bool hasAnswered() const { return true; }
  /// Whether keys can be taken that the user did not choose. Where the user confirms each of them, they should not be.
  /// As long as that is not known they cannot, without a reason.
  virtual Capability unasked() const { return capability(); }
  /// Binds the action `identifier` to a key. An identifier that is bound already is bound anew.
  virtual HotKeyBinding bind(quint32 identifier, const HotKeyRequest& request) = 0;
  /// Gives every key back.
  virtual void unbindAll() = 0;

 Q_SIGNALS:
  void pressed(quint32 identifier);
  /// A key of ours is none any more: the keyboard's layout changed and it could not be taken under the new one, or the
  /// desktop gave it to nobody.
  void lost(quint32 identifier);
  /// hasAnswered() or capability() is another.
  void answered();
};

}  // namespace tarnwick
