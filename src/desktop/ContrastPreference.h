#pragma once

#include <QObject>

namespace tarnwick {

/// Whether the user asked the desktop for more contrast.
class ContrastPreference : public QObject {
  Q_OBJECT
 public:
  virtual bool wantsHighContrast() const = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
