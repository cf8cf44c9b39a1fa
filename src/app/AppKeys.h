#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>

#include "config/DesktopOptions.h"
#include "desktop/HotKeys.h"
#include "views/settings/KeyRecorder.h"

namespace tarnwick {

class AppStore;
class Commands;

/// Takes the keys that the settings ask for and keeps them as they change. A key that another program has is said in
/// the store's message line; the others still work. Main thread only.
class AppKeys final : public QObject, public KeyRecorder {
  Q_OBJECT
 public:
  /// All must outlive it. A key is taken from other programs only once there is something for it to open.
  AppKeys(AppStore& store, HotKeys& keys, const Commands& commands);

  /// Takes the keys anew if the settings ask for others than before; a change of the layout does the same.
  void follow();
  /// Gives every key back.
  void release();
  /// While a key is being recorded, ours are given back, so that they reach the window that records; then they are
  /// taken anew.
  void setRecording(bool recording) override;
  /// Whether a key could be taken at this moment. It is kept until the keys are taken anew.
  HotKeyBinding tryKey(const HotKeyRequest& request) override;
  /// Whether a key that the settings ask for is ours now.
  bool holds(const HotKeyRequest& request) const override;
  /// Whether a program can have keys on this desktop at all.
  Capability capability() const { return keys_.capability(); }
  /// Whether that is the desktop's answer yet (see HotKeys).
  bool hasAnswered() const { return keys_.hasAnswered(); }
  /// Whether it may take keys that the user did not choose (see HotKeys).
  Capability unasked() const { return keys_.unasked(); }
  /// Which apps of the dock have keys that are ours now, counted from 0.
  QSet<int> apps() const;
  /// The key that opens the command bar now, as shown to the user; empty while none does.
  const QString& commandBarKey() const { return commandBarKey_; }

 Q_SIGNALS:
  /// `identifier` as HotKeyTable has them.
  void pressed(quint32 identifier);
  /// apps() may be others, or what the desktop says of keys.
  void changed();

 private:
  bool bind(quint32 identifier, const HotKeyRequest& request);
  bool bindCommandBar(const DesktopOptions& options);
  void sayKeyIsTaken();

  AppStore& store_;
  HotKeys& keys_;
  const Commands& commands_;
  QHash<quint32, HotKeyRequest> held_;
  QList<HotKeyRequest> lost_;  ///< For the command bar, since the settings asked for other keys.
  QString signature_;
  QString commandBarKey_;
};

}  // namespace tarnwick
