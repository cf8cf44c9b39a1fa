#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace tarnwick {

/// One row of Settings.
struct SettingsPlace {
  QString id;  ///< What distinguishes it from every other one.
  QString title;
  QString page;    ///< The section that it stands in, as Settings calls it.
  QString symbol;  ///< The section's.

  bool operator==(const SettingsPlace&) const = default;
};

/// Finds rows of Settings by the words of its own search. Main thread only.
class SettingsPlaces : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// The rows in which every one of those words begins a word, at most so many: first those of whose title that is so.
  /// It waits for nothing; where there is more to be found later, `changed` tells.
  virtual QList<SettingsPlace> find(const QString& words, qsizetype most) = 0;
  /// Turns the switch that stands in a row, if it can be turned at the moment; any other row is shown to the user. One
  /// that is not there any more changes nothing.
  virtual void open(const QString& id) = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
