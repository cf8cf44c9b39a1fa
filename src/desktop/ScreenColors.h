#pragma once

#include <QObject>
#include <QString>
#include <functional>

namespace tarnwick {

/// Lets the user point at a color anywhere on the screen.
class ScreenColors : public QObject {
  Q_OBJECT
 public:
  /// Begins; an earlier picking that isn't over is forgotten. `picked` runs with "#RRGGBB", or `failed` with a finished
  /// sentence, or neither when the user thinks better of it; later in any case, and never after `context` is gone.
  virtual void pick(QObject* context, std::function<void(const QString& hex)> picked,
                    std::function<void(const QString& sentence)> failed) = 0;
};

}  // namespace tarnwick
