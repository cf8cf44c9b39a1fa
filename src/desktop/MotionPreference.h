#pragma once

#include <QObject>

namespace tarnwick {

/// Whether the user asked the desktop for less motion.
class MotionPreference : public QObject {
  Q_OBJECT
 public:
  virtual bool reducesMotion() const = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
