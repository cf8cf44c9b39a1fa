#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "desktop/Notifications.h"
#include "platform/dbus/BusService.h"

namespace tarnwick {

/// Bubbles through the desktop's notification service, which is started by the first one where the bus can do that.
class DesktopNotifications final : public QObject, public Notifications {
  Q_OBJECT
 public:
  /// `desktopEntry` is the name of our desktop entry without its ending; the service finds our icon and the user's own
  /// settings for us by it.
  explicit DesktopNotifications(const QDBusConnection& session,
                                const QString& desktopEntry = QStringLiteral("com.brindlemoor.Tarnwick"),
                                QObject* parent = nullptr);

  /// Available until the bus says that nobody shows notifications here.
  Capability capability() const override;
  void post(const QString& title, const QString& body) override;

 private:
  void ownerChanged();
  void askWhatCanBeStarted();
  void askForCapabilities();
  void flush();
  void send(const QString& title, const QString& body);

  BusService service_;
  QString desktopEntry_;
  bool canBeStarted_ = true;
  bool asking_ = false;
  std::optional<bool> readsMarkup_;
  std::vector<std::pair<QString, QString>> waiting_;
};

}  // namespace tarnwick
