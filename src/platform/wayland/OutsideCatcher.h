#pragma once

#include <QRegion>
#include <QTimer>
#include <map>
#include <memory>

#include "platform/wayland/ClearWindow.h"

namespace tarnwick {

/// Covers every display with a clear window to catch a click outside of something that is open. A grab by the
/// compositor would need a click or a key that opened it, which an order from elsewhere lacks. What is dragged goes
/// through it, to whatever lies below. No event tells where another program's drag ends there, so that one which stays
/// outside for a moment counts as a click.
class OutsideCatcher final : public QObject {
  Q_OBJECT
 public:
  /// `open`: what is not covered, in desktop coordinates. Which of two windows of a layer lies above the other is for
  /// the compositor to say, so that what is open must be among it.
  OutsideCatcher(const WaylandSession& session, const QRegion& open);

  void setOpen(const QRegion& open);
  /// Whether something that is dragged is over what is open.
  void setDraggedWithin(bool isWithin);
  /// The pointer is over what is open and drags nothing.
  void endDrag();

 Q_SIGNALS:
  void caught();

 private:
  enum class Drag { None, Own, Foreign };

  void letThrough(QObject* source);
  void let(Drag drag);
  void leaveOpen();
  void follow(QScreen* screen);
  void cover(QScreen& screen);
  void leaveOpen(ClearWindow& window, const QRect& screen) const;

  const WaylandSession& session_;
  QRegion open_;
  Drag drag_ = Drag::None;
  QTimer away_;  ///< Runs while another program's drag is outside.
  std::map<QScreen*, std::unique_ptr<ClearWindow>> windows_;
};

}  // namespace tarnwick
