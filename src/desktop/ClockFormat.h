#pragma once

#include <QObject>
#include <optional>

namespace tarnwick {

/// How the desktop writes the hours of a day.
class ClockFormat : public QObject {
  Q_OBJECT
 public:
  /// Whether as 24 rather than twice 12. Absent where the desktop leaves that to the language, and until it has
  /// answered.
  virtual std::optional<bool> uses24Hour() const = 0;
  /// Asks, and listens from then on.
  virtual void start() = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
