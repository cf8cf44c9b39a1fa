#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

#include "apps/AppMatching.h"
#include "apps/InstalledApps.h"
#include "apps/RunningApp.h"
#include "apps/RunningAppOrder.h"
#include "desktop/ClientWindows.h"

namespace tarnwick {

/// The applications whose windows are on the desktop, each once, in a lasting order, without this program itself and
/// without windows that no taskbar lists. Main thread only.
class RunningApplications : public QObject {
  Q_OBJECT
 public:
  /// Who we are, so that we never list ourselves.
  struct Self {
    QString desktopId;
    qint64 pid = 0;
  };
  /// The command line of a process; empty when it is gone or hidden. Asked once for a window that nothing else
  /// identifies.
  using CommandLine = std::function<QStringList(qint64 pid)>;

  /// `windows` and `apps` must outlive it.
  RunningApplications(ClientWindows& windows, InstalledApps& apps, Self self, CommandLine commandLine = {},
                      QObject* parent = nullptr);

  /// Begins to follow the windows, and has the installed applications read. The list stays empty until they are, so
  /// that no tile appears under one name and turns into another.
  void start();
  /// Ends it; the list stays as it is.
  void stop();

  const QList<RunningApp>& list() const { return list_; }
  std::optional<RunningApp> byIdentity(quint64 identity) const;
  /// By the path of a desktop entry, one that is overridden in another folder included.
  std::optional<RunningApp> byPath(const QString& path) const;

 Q_SIGNALS:
  void changed();

 private:
  /// What was found out about one window; asked again when what it says of itself changes.
  struct Known {
    ClientWindow window;
    bool matched = false;  ///< Whether `entry` is the answer for `window`.
    const DesktopEntry* entry = nullptr;
    quint64 identity = 0;  ///< Of the application that it belonged to last.
    std::optional<QString> executable;
  };
  struct Group;

  void refresh();
  void remember(const QList<ClientWindow>& windows);
  QList<Group> groups(const QList<ClientWindow>& windows);
  void identify(QList<Group>& groups);
  bool isOurs(const ClientWindow& window) const;
  const DesktopEntry* entryFor(const ClientWindow& window);

  ClientWindows& windows_;
  InstalledApps& apps_;
  Self self_;
  CommandLine commandLine_;
  std::shared_ptr<const AppIndex> index_;
  QHash<quint64, Known> known_;
  QList<quint64> recent_;  ///< Windows that were active, the latest first.
  QHash<QString, quint64> identities_;
  quint64 lastIdentity_ = 0;
  RunningAppOrder order_;
  QList<RunningApp> list_;
  bool running_ = false;
};

}  // namespace tarnwick
