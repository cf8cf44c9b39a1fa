#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "dock/ports/DockPreferenceAccess.h"
#include "platform/docks/DockBackend.h"

class QDBusServiceWatcher;

namespace tarnwick {

/// The docks that run on this desktop: Plank, the dock of GNOME, the panels of Xfce and of KDE Plasma at the bottom
/// edge. All that run are hidden together. What `read` gives names each of them with its settings, so that it is put
/// back into the same dock only; where that cannot be reached, `synchronize` fails and the record is to be kept.
///
/// The libraries that this takes are loaded with the first dock that is found.
class SystemDockPreferences final : public QObject, public DockPreferenceAccess {
  Q_OBJECT
 public:
  /// `directory` holds the small file that stands for a dock where none runs.
  explicit SystemDockPreferences(const QString& directory);
  ~SystemDockPreferences() override;

  QVariant read(const QString& key) override;
  void write(const QString& key, const QVariant& value) override;
  bool synchronize() override;
  /// Docks of this desktop follow their settings by themselves.
  void restart() override {}
  Capability capability() override;
  Capability staysAway() override;

 private:
  using Own = QList<DockSetting>;
  struct Found {
    QString id;
    DockBackend* backend;
    std::map<DockPreference, Own> own;  ///< What the last `read` gave.
  };

  std::vector<Found>& found();
  void look();
  void watchNames();
  void serviceRegistered(const QString& name);
  DockBackend* backend(const QString& id);
  const Own& own(Found& dock, DockPreference preference);
  void wish(DockPreference preference, double seconds);
  void reset(DockPreference preference);
  void putBack(const QVariantMap& record);
  void put(DockBackend* backend, const DockSetting& setting);

  QString directory_;
  std::map<QString, std::unique_ptr<DockBackend>> backends_;
  std::optional<std::vector<Found>> found_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  bool undelivered_ = false;
};

}  // namespace tarnwick
