#pragma once

#include <QObject>
#include <QString>
#include <optional>

namespace tarnwick {

/// What an application wants to be seen on its tile.
struct LauncherHint {
  std::optional<qint64> count;     ///< Such as of unread messages.
  std::optional<double> progress;  ///< Of what it works on, from 0 to 1.
  bool urgent = false;             ///< It asks for attention.

  bool operator==(const LauncherHint&) const = default;
};

/// Counts, progress and calls for attention of running applications, by desktop-file id without ".desktop".
class LauncherHints : public QObject {
  Q_OBJECT
 public:
  /// Begins to listen; until then there is nothing.
  virtual void start() = 0;
  virtual LauncherHint of(const QString& desktopId) const = 0;

 Q_SIGNALS:
  void changed(const QString& desktopId);
};

}  // namespace tarnwick
