#pragma once

#include <QList>
#include <QString>
#include <memory>
#include <optional>

#include "apps/ports/LauncherHints.h"
#include "config/DockWidget.h"
#include "views/tiles/TileSource.h"

namespace tarnwick {

/// What a dock asks others for on behalf of its tiles: the desktop, the applications on it, and what is read of the
/// machine. By default nothing is answered. Main thread only.
class TileServices : public QObject {
  Q_OBJECT
 public:
  /// What a desktop entry says, for tiles of applications. Absent until it is known.
  virtual std::optional<ApplicationFacts> applicationAt(const QString& /*path*/) const { return std::nullopt; }
  /// The picture that the user chose for the application of a desktop entry; empty for none.
  virtual QString ownIcon(const QString& /*path*/) const { return {}; }
  /// What an application wants to be seen on its tile.
  virtual LauncherHint hintOf(const QString& /*desktopId*/) const { return {}; }
  /// Whether the application of a desktop entry was started a moment ago and has no window yet.
  virtual bool isStarting(const QString& /*path*/) const { return false; }
  /// How many items the trash holds; absent until they are counted.
  virtual std::optional<qint64> trashItems() const { return std::nullopt; }
  virtual bool reducesMotion() const { return false; }
  /// How the desktop writes the hour; absent where it leaves that to the language.
  virtual std::optional<bool> uses24Hour() const { return std::nullopt; }
  /// Whether files can be sent to devices nearby.
  virtual bool sendsNearby() const { return false; }
  /// The user's calendars and reminders at this minute; null while nothing is known of them.
  virtual std::shared_ptr<const CalendarDigest> calendar() const { return nullptr; }
  /// Sets what these widgets show of the machine and of the user's files (see Rooms::read).
  virtual void addReadings(ReadingFacts& /*readings*/, const QList<DockWidget>& /*widgets*/) const {}
  /// Where values come from that neither the store nor the desktop has, such as those of web services. Borrowed; they
  /// outlive the docks.
  virtual QList<TileSource*> sources() const { return {}; }

 Q_SIGNALS:
  /// An application is another on its tile: applicationAt(), ownIcon(), hintOf() or isStarting().
  void applicationsChanged();
  /// The desktop entries are others, and so may all pictures of applications be.
  void entriesChanged();
  void trashChanged();
  void calendarChanged();
  /// What addReadings() gives to tiles of these families.
  void readingsChanged(const QList<Family>& families);
  /// Of what no tile has for itself: reducesMotion(), uses24Hour() or sendsNearby().
  void habitsChanged();
};

}  // namespace tarnwick
