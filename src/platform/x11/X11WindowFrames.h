#pragma once

#include <QDeadlineTimer>
#include <memory>

#include "platform/x11/X11OwnConnection.h"
#include "windows/ports/WindowFrames.h"

namespace tarnwick {

/// Windows on X11, over a connection of its own that is opened when it is first needed: it serves a thread that waits,
/// and a process that has no windows. Frames are in root pixels.
class X11WindowFrames final : public WindowFrames {
 public:
  Capability capability() override;
  std::optional<QList<Window>> all(std::chrono::milliseconds patience) override;
  std::optional<QRectF> frame(quint32 number, std::chrono::milliseconds patience) override;
  QRectF accepted(quint32 number, const QRectF& wanted) override;
  bool setFrame(quint32 number, const QRectF& frame, std::chrono::milliseconds patience) override;

 private:
  static QRect moved(const X11OwnConnection& server, quint32 number, const QRect& before, const QRect& inside,
                     const QRect& wanted, const QDeadlineTimer& end);

  std::unique_ptr<X11OwnConnection> connection_;
};

}  // namespace tarnwick
