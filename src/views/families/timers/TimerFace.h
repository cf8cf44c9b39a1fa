#pragma once

#include <QWidget>

#include "views/controls/ControlLook.h"
#include "views/families/timers/TimerFacts.h"

namespace tarnwick {

/// The large figure of a timer: in a ring with its phase and its sessions, or by itself.
class TimerFace final : public QWidget {
  Q_OBJECT
 public:
  enum class Shape { Ring, Plain };
  explicit TimerFace(Shape shape, QWidget* parent = nullptr);

  void setFacts(const TimerFacts& facts);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintRing(QPainter& painter) const;

  Shape shape_;
  TimerFacts facts_;
};

}  // namespace tarnwick
