#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <optional>

#include "platform/x11/X11Events.h"

namespace tarnwick {

/// Tells that a key was pressed or let go anywhere, and never which: by the server's count of how long the keyboard has
/// been idle, so that no key is listened to. Where the server does not count that, or the program was built without the
/// library for it, nothing is ever told. The events must outlive it. Main thread only.
class X11KeyboardUse final : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT
 public:
  explicit X11KeyboardUse(X11Events& events);
  ~X11KeyboardUse() override;

  /// Whether it is told from now on. Keys that follow each other within a blink count as one.
  void watch(bool watched);

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

 Q_SIGNALS:
  void used();

 private:
  void find();

  X11Events& events_;
  bool isFound_ = false;  ///< Whether it was looked for a counter.
  std::optional<quint32> counter_;
  quint8 alarmEvent_ = 0;
  quint32 alarm_ = XCB_NONE;
};

}  // namespace tarnwick
