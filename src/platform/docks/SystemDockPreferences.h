#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <vector>

#include "dock/ports/DockPreferenceAccess.h"
#include "platform/docks/DockBackend.h"
#include "platform/docks/DockRecord.h"

class QDBusServiceWatcher;

namespace tarnwick {

/// The docks that run on this desktop: Plank, the dock of GNOME, the panels of Xfce and of KDE Plasma at the bottom
/// edge. All that run are hidden together. What `read` gives names each of them with its settings, so that it is put
/// back into the same dock only; where that cannot be reached, `synchronize` fails and the record is to be kept. It
/// also names what our layouts may have set there since, and bears a checksum.
///
/// The libraries that this takes are loaded with the first dock that is found.
class SystemDockPreferences final : public QObject, public DockPreferenceAccess {
  Q_OBJECT
 public:
  /// `directory` holds the small file that stands for a dock where none runs.
  explicit SystemDockPreferences(const QString& directory);
  ~SystemDockPreferences() override;

  /// False once the session has ended, after which no dock can be reached any more.
  static bool sessionGoesOn();

  QVariant read(const QString& key) override;
  bool isOwnRecord(const QString& key, const QVariant& value) const override;
  void write(const QString& key, const QVariant& value) override;
  bool synchronize() override;
  void askWhetherTheyAnswer(const QVariantMap& values, const std::function<void(bool theyAnswer)>& answer) override;
  /// Docks of this desktop follow their settings by themselves.
  void restart() override {}
  Capability capability() override;
  Capability staysAway() override;

 private:
  /// The first pause before a dock that is not there yet is asked for again, in milliseconds; each is twice the one
  /// before, up to the longest.
  static constexpr int kFirstPauseMs = 250;
  static constexpr int kLongestPauseMs = 8000;
  static constexpr int kMostQuestions = 20;

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
  void askAgain(const QString& id);
  void ask(const QString& id);
  DockBackend* backend(const QString& id) const;
  DockRecord::Dock describe(const Found& found, DockPreference preference) const;
  const Own& own(Found& dock, DockPreference preference);
  void setTo(DockPreference preference, double seconds);
  void reset(DockPreference preference);
  void putBack(const QString& key, const QVariant& value);
  void put(const QString& id, const DockSetting& setting, const QList<DockValue>& over);

  struct Questions {
    int asked = 0;
    bool waiting = false;
  };
  /// A setting of a dock: its kind, place and name.
  using Key = std::tuple<QString, QString, QString>;

  QString directory_;
  mutable std::map<QString, std::unique_ptr<DockBackend>> backends_;  ///< Made when first asked for.
  /// What this process may have put where a user's value was: the last that is known to hold, and any since.
  std::map<Key, QList<DockValue>> written_;
  bool gaveBack_ = false;  ///< Something was put back since the last `synchronize`.
  std::map<QString, Questions> questions_;
  std::optional<std::vector<Found>> found_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  bool undelivered_ = false;
};

}  // namespace tarnwick
