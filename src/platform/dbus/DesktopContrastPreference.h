#pragma once

#include <QDBusConnection>
#include <QFileSystemWatcher>
#include <QString>
#include <memory>

#include "desktop/ContrastPreference.h"
#include "platform/dbus/GSettingsKey.h"
#include "platform/dbus/PortalSetting.h"

namespace tarnwick {

/// The desktop's preference for more contrast: what the settings portal reports, GNOME's own key where the portal does
/// not know it, and on Plasma, which has no such setting, a colour scheme with as much contrast as those made for it,
/// whether the change of it is announced or merely written. Any of them is enough; until one has answered there is
/// none.
class DesktopContrastPreference final : public ContrastPreference {
  Q_OBJECT
 public:
  /// Asks at once; a portal that isn't running yet is started. `colors` is the file in which Plasma keeps its colours.
  explicit DesktopContrastPreference(const QDBusConnection& session, const QString& colors = plasmaColors(),
                                     QObject* parent = nullptr);

  bool wantsHighContrast() const override { return wants_; }

  /// Whether the colours that a file of Plasma's names for windows differ by 15 to 1 or more, but for Plasma's own
  /// usual schemes.
  static bool isHighContrastScheme(const QString& file);
  static QString plasmaColors();

 private Q_SLOTS:
  void readScheme();

 private:
  void readPortal();
  void readSetting();
  void watchScheme();
  void weigh();

  QDBusConnection session_;
  QString colors_;
  QFileSystemWatcher watcher_;  ///< Of that file, on Plasma.
  PortalSetting portal_;
  std::unique_ptr<GSettingsKey> setting_;
  bool schemeSays_ = false;
  bool wants_ = false;
};

}  // namespace tarnwick
