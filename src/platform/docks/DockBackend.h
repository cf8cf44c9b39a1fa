#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace tarnwick {

enum class DockPreference { Autohide, AutohideDelay };

/// One setting of somebody's dock.
struct DockSetting {
  QString place;                 ///< Which dock, in its kind's own words ("panel-1").
  QString name;                  ///< The setting there.
  std::optional<QString> value;  ///< In the kind's own notation; none where the user has set nothing.

  bool operator==(const DockSetting&) const = default;
};

/// One kind of dock. No operation throws or waits for longer than a moment.
class DockBackend {
 public:
  virtual ~DockBackend() = default;

  /// What the user has behind a preference, for every dock of the kind that can stand in our way; empty without one.
  virtual QList<DockSetting> own(DockPreference preference) = 0;
  /// What these settings become so that the dock hides, or comes out after so many seconds.
  virtual QList<DockSetting> hiding(DockPreference preference, double seconds, const QList<DockSetting>& own) = 0;
  /// Whether a dock of the kind can be kept from coming out at the edge.
  virtual bool staysAway() const { return true; }
  /// Sets or unsets. False where there is no such setting any more.
  virtual bool put(const DockSetting& setting) = 0;
  /// Whether everything that was put since the last call holds.
  virtual bool flush() = 0;
};

}  // namespace tarnwick
