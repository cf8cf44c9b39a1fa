#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include "config/DockWidget.h"
#include "facilities/BeatClient.h"

/// What operations of the store ask of a facility, beside its beat. What a build has not is one of `NoFacilities`. All
/// calls come on the main thread and must not block.
namespace tarnwick {

/// The fetched values of connected widgets. What is under way is cancelled at the end.
class RemoteRefresh : public BeatClient {
 public:
  virtual void refresh(const DockWidget& widget) = 0;
  virtual void refreshAll() = 0;

  BeatStep step() const final { return BeatStep::RemoteValues; }
  int everyTicks() const final { return 600; }
  void beat(const ActiveSets& active) final {
    Q_UNUSED(active)
    refreshAll();
  }
};

/// The secrets of connected widgets.
class CredentialKeeping {
 public:
  virtual ~CredentialKeeping() = default;
  /// Removes a widget's credentials. Throws DomainError.
  virtual void remove(const QUuid& widget) = 0;
  /// Removes credentials of widgets that no longer exist; failures are the implementation's to ignore.
  virtual void removeOrphans(const QList<QUuid>& keeping) = 0;
};

/// Takes over the texts that an older settings document holds.
class ClipboardMigration {
 public:
  virtual ~ClipboardMigration() = default;
  /// False means that nothing was taken and the texts must stay. Throws DomainError.
  virtual bool migrate(const QStringList& texts) = 0;
};

/// Other programs' windows that were moved out of the dock's way.
class WindowReservations {
 public:
  virtual ~WindowReservations() = default;
  /// Puts back what was moved, by this run or by one that crashed. `journal` is the recovery file's path.
  virtual void restore(const QString& journal) = 0;
};

}  // namespace tarnwick
