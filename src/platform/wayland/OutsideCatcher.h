#pragma once

#include <QRegion>
#include <map>
#include <memory>

#include "platform/wayland/ClearWindow.h"

namespace tarnwick {

/// Covers every display with a clear window to catch a click outside of something that is open. A grab by the
/// compositor would need a click or a key that opened it, which an order from elsewhere lacks. What is dragged out of
/// what is open goes through it, to whatever lies below.
class OutsideCatcher final : public QObject {
  Q_OBJECT
 public:
  /// `open`: what is not covered, in desktop coordinates. Which of two windows of a layer lies above the other is for
  /// the compositor to say, so that what is open must be among it.
  OutsideCatcher(const WaylandSession& session, const QRegion& open);

  void setOpen(const QRegion& open);

 Q_SIGNALS:
  void caught();

 private:
  void letThrough(QObject* source);
  void leaveOpen();
  void follow(QScreen* screen);
  void cover(QScreen& screen);
  void leaveOpen(ClearWindow& window, const QRect& screen) const;

  const WaylandSession& session_;
  QRegion open_;
  bool letsThrough_ = false;
  std::map<QScreen*, std::unique_ptr<ClearWindow>> windows_;
};

}  // namespace tarnwick
