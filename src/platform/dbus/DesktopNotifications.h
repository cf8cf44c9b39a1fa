#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "base/DesktopId.h"
#include "desktop/Notifications.h"
#include "platform/dbus/BusService.h"

namespace tarnwick {

/// Bubbles through the desktop's notification service, which is started by the first one where the bus can do that.
class DesktopNotifications final : public QObject, public Notifications {
  Q_OBJECT
 public:
  /// `desktopEntry` is the name of our desktop entry without its ending; the service finds our icon and the user's own
  /// settings for us by it.
  explicit DesktopNotifications(const QDBusConnection& session, const QString& desktopEntry = kDesktopId,
                                QObject* parent = nullptr);

  /// Available until the bus says that no service shows notifications here.
  Capability capability() const override;
  void post(const QString& title, const QString& body, std::function<void()> unseen) override;

 private:
  struct Bubble {
    QString title;
    QString body;
    std::function<void()> unseen;
  };

  void ownerChanged();
  void askWhatCanBeStarted();
  void askForCapabilities();
  void flush();
  void send(const Bubble& bubble);
  static void giveUp(const Bubble& bubble);

  BusService service_;
  QString desktopEntry_;
  bool canBeStarted_ = true;
  bool asking_ = false;
  std::optional<bool> readsMarkup_;
  std::vector<Bubble> waiting_;
};

}  // namespace tarnwick
