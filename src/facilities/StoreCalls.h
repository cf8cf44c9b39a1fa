#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QUuid>
#include <functional>

#include "config/DockWidget.h"
#include "desktop/Screens.h"
#include "facilities/BeatClient.h"

/// What operations of the store ask of a facility, beside its beat. What a build has not is one of `NoFacilities`. All
/// calls come on the main thread and must not block.
namespace tarnwick {

/// The fetched values of connected widgets. What is under way is cancelled at the end.
class RemoteRefresh : public BeatClient {
 public:
  /// One widget, because the user wants it: at once, whatever its service asked for.
  virtual void refresh(const DockWidget& widget) = 0;
  /// All that displays show and that are set up for it, spread over a few seconds.
  virtual void refreshAll() = 0;
  /// Ends all that is under way: the document is about to be another.
  virtual void cancelAll() {}
  /// The document changed, or what displays show of it.
  virtual void follow(const DockConfiguration& config, const ActiveSets& active) {
    Q_UNUSED(config)
    Q_UNUSED(active)
  }

  BeatStep step() const final { return BeatStep::RemoteValues; }
  int everyTicks() const final { return 600; }
  void beat(const ActiveSets& active) override {
    Q_UNUSED(active)
    refreshAll();
  }
};

/// The secrets of connected widgets.
class CredentialKeeping {
 public:
  using Failed = std::function<void(const QString& message)>;

  virtual ~CredentialKeeping() = default;
  /// Removes the credentials of widgets, in time. `failed` runs then where that cannot be done, never after this object
  /// has gone.
  virtual void remove(const QList<QUuid>& widgets, Failed failed) = 0;
  /// Removes credentials of widgets that no longer exist; failures are the implementation's to ignore.
  virtual void removeOrphans(const QList<QUuid>& keeping) = 0;
  /// Ends the user's own session in a browser: no widget reads it any more.
  virtual void endSession() {}
};

/// Takes over the texts that an older settings document holds.
class ClipboardMigration {
 public:
  virtual ~ClipboardMigration() = default;
  /// False means that nothing was taken and the texts must stay. Throws DomainError.
  virtual bool migrate(const QStringList& texts) = 0;
};

/// A dock that other windows are kept clear of.
struct ReservingDock {
  QRectF frame;  ///< In desktop coordinates.
  Screen screen;

  bool operator==(const ReservingDock&) const = default;
};

/// Other programs' windows that are moved out of the dock's way.
class WindowReservations {
 public:
  virtual ~WindowReservations() = default;
  /// Moves windows of the app in front beside these docks, soon. Called whenever a window changed.
  virtual void reserve(const QList<ReservingDock>& docks) = 0;
  /// Puts back what was moved, by this run or by one that crashed. It is done in time.
  virtual void restore() = 0;
  /// Waits until what was asked for is done.
  virtual void finish() {}

  /// What went wrong, as a sentence for the user; may be empty. Called later, from the event loop.
  std::function<void(const QString& message)> failed;
};

}  // namespace tarnwick
