#pragma once

#include "desktop/HotKeys.h"
#include "views/controls/Buttons.h"

namespace tarnwick {

/// A key of the program. Pressing it records another one: the next keys that are pressed together. Escape, or leaving
/// it, keeps the one that was.
class ShortcutField final : public PaintedButton {
  Q_OBJECT
 public:
  enum class Kind {
    Key,
    Prefix,  ///< The modifiers alone, for the keys 0 to 9.
  };
  /// `label` says what the key does.
  ShortcutField(const QString& label, Kind kind, QWidget* parent = nullptr);

  void setKey(const HotKeyRequest& key);
  bool isRecording() const { return isRecording_; }
  /// What one reads for a key of that kind.
  static QString text(const HotKeyRequest& key, Kind kind);
  QSize sizeHint() const override;

 Q_SIGNALS:
  void recordingChanged(bool recording);
  /// Keys were pressed that cannot be had, for a reason given in a sentence. It goes on recording.
  void refused(const QString& why);
  /// Keys were pressed. Nothing is shown until setKey() is called.
  void recorded(const HotKeyRequest& key);

 protected:
  bool event(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void record(bool on);
  void take(const QKeyEvent& event);
  QString shown() const;
  QString whyNot(const HotKeyRequest& request, int key) const;
  void describe();

  QString name_;
  Kind kind_;
  HotKeyRequest key_;
  quint32 held_ = 0;  // The modifiers that are down while it records.
  bool isRecording_ = false;
};

}  // namespace tarnwick
