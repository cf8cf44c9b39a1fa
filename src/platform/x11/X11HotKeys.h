#pragma once

#include <QMap>
#include <QSet>
#include <optional>

#include "desktop/HotKeys.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11Keymap.h"

namespace tarnwick {

/// Keys that are held on the root window. The events must outlive it.
class X11HotKeys final : public HotKeys {
  Q_OBJECT
 public:
  explicit X11HotKeys(X11Events& events);
  ~X11HotKeys() override;

  HotKeyBinding bind(quint32 identifier, const HotKeyRequest& request) override;
  void unbindAll() override;

 private:
  struct Grab {
    xcb_keycode_t key;
    quint16 modifiers;

    bool operator==(const Grab&) const = default;
  };
  struct Entry {
    HotKeyRequest request;
    QList<Grab> grabs;  ///< Empty while the key could not be taken.
  };

  HotKeyBinding take(Entry& entry);
  QList<Grab> grabsFor(const HotKeyRequest& request, QString& reason) const;
  bool grab(const QList<Grab>& grabs);
  void release(const QList<Grab>& grabs);
  bool isTakenByUs(const QList<Grab>& grabs) const;
  void keyboardChanged();
  void readKeyboard();
  void keyPressed(quint8 code, quint16 state, bool isRepeat);

  X11Events& events_;
  std::optional<X11Keymap> keymap_;
  QList<quint16> locks_;
  QMap<quint32, Entry> entries_;
  bool isReading_ = false;
  QSet<quint8> down_;
};

}  // namespace tarnwick
