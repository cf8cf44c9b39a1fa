#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include "motion/Animator.h"
#include "motion/RevealSpring.h"

namespace tarnwick {

/// Named lengths that travel to their goals on the spring of the dock's reveal. There are frames only while one of them
/// is on its way, and only those that move something by a device pixel are reported.
class SpringSet final : public QObject, public Animation {
  Q_OBJECT
 public:
  explicit SpringSet(Animator& animator) : animator_(animator) {}
  ~SpringSet() override { animator_.stop(*this); }

  /// Lengths are in units of `1 / ratio` device pixels.
  void setRatio(double ratio) { ratio_ = ratio; }
  /// Reduced motion shortens every travel.
  void setReduced(bool reduced) { reduced_ = reduced; }

  /// Where it is now; 0 for a name that was never set.
  double value(const QString& name) const { return travels_.value(name).seen(); }
  double goal(const QString& name) const { return travels_.value(name).spring.target; }
  bool isMoving() const { return animator_.isRunning(*this); }
  bool isMoving(const QString& name) const { return travels_.value(name).moving; }

  void animate(const QString& name, double goal);
  void jump(const QString& name, double value);
  /// Sends all of them home to 0.
  void settle();
  void clear();

  bool advance(double seconds) override;
  void finish() override;

 Q_SIGNALS:
  void moved();
  /// Everything has arrived.
  void rested();

 private:
  struct Travel {
    RevealSpring spring;
    double age = 0;  ///< Seconds since the goal was set.
    bool moving = false;

    /// Towards the end of its time the rest of the way shrinks to nothing, so that the cut is not seen.
    double seen() const;
  };

  bool step(Travel& travel, double seconds) const;

  Animator& animator_;
  QHash<QString, Travel> travels_;
  double ratio_ = 1;
  bool reduced_ = false;
};

}  // namespace tarnwick
