#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace tarnwick {

/// One row of Settings.
struct SettingsPlace {
  QString id;  ///< What distinguishes it from every other one.
  QString title;
  QString page;           ///< The section that it stands in, as Settings calls it.
  QString symbol;         ///< The section's.
  bool isSwitch = false;  ///< Whether to open it is to turn it.

  bool operator==(const SettingsPlace&) const = default;
};

/// Finds rows of Settings by the words of its own search. Main thread only.
class SettingsPlaces : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Something may be looked for soon. What that needs is made ready little by little, while nothing else happens.
  virtual void prepare() = 0;
  /// The rows in which every one of those words begins a word, at most so many: first those of whose title that is so.
  /// It waits for nothing: as long as not all rows are known there are none, and `changed` tells when they are.
  virtual QList<SettingsPlace> find(const QString& words, qsizetype most) = 0;
  /// Turns the switch that stands in a row, if it can be turned at the moment; any other row is shown to the user. One
  /// that is not there any more changes nothing.
  virtual void open(const QString& id) = 0;
  /// Shows a row to the user and changes nothing.
  virtual void show(const QString& id) = 0;

 Q_SIGNALS:
  void changed();
};

}  // namespace tarnwick
