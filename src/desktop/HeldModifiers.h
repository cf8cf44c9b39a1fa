#pragma once

#include <QObject>

#include "desktop/Capability.h"

namespace tarnwick {

/// Which modifier keys the user holds, whatever program has the focus. Of any other key nothing is told but that there
/// was one, and that only meanwhile.
class HeldModifiers : public QObject {
  Q_OBJECT
 public:
  /// Whether this desktop tells it at all.
  virtual Capability capability() const = 0;
  /// Whether somebody wants to know; at first nobody does.
  virtual void watch(bool watched) = 0;

 Q_SIGNALS:
  /// Others are held than before: a mask as in HotKeyRequest, with a Super key as Command; 0 for none.
  void changed(quint32 modifiers);
  /// While a Super key alone is held, some other key is pressed, where the desktop tells that; which one, it never
  /// does.
  void usedWithSuper();
};

/// Where a desktop tells nothing of them.
class NoHeldModifiers final : public HeldModifiers {
  Q_OBJECT
 public:
  explicit NoHeldModifiers(const QString& reason) : reason_(reason) {}

  Capability capability() const override { return Capability::no(reason_); }
  void watch(bool) override {}

 private:
  QString reason_;
};

}  // namespace tarnwick
