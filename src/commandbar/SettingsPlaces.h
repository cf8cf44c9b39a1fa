#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

/// One row of Settings.
struct SettingsPlace {
  QString id;  ///< The same in every language.
  QString title;
  QString page;    ///< The section that it stands in, as Settings calls it.
  QString symbol;  ///< The section's.

  bool operator==(const SettingsPlace&) const = default;
};

/// Finds rows of Settings as its own search does. Main thread only; it must not wait for anything.
class SettingsPlaces {
 public:
  virtual ~SettingsPlaces() = default;

  /// The rows that those words find, in the order of Settings, at most so many.
  virtual QList<SettingsPlace> find(const QString& words, qsizetype most) = 0;
  /// Turns the switch that stands in a row; any other row is shown to the user. One that is not there any more changes
  /// nothing.
  virtual void open(const QString& id) = 0;
};

}  // namespace tarnwick
