#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>

#include "apps/AppEnvironment.h"
#include "apps/DesktopEntry.h"
#include "apps/LaunchEnvironment.h"

namespace tarnwick {

/// What a start is about, beside the application itself.
struct LaunchRequest {
  QList<QUrl> urls{};         ///< Files and addresses to open.
  QString action{};           ///< The id of one of the entry's actions; empty for the application itself.
  QString startupId{};        ///< Of a startup notification that was announced already; otherwise one is made up.
  QString activationToken{};  ///< With which a Wayland compositor lets the new window come to the front.
  quint32 userTime = 0;       ///< The X server's time of the click or key that caused it; 0 where unknown.
};

/// Starts applications, in sessions of their own, so that they live on when this program ends. Main thread only.
class AppLaunch : public QObject {
  Q_OBJECT
 public:
  using Bus = std::function<QDBusConnection()>;

  /// `bus`: the session bus; asked when it is first needed.
  AppLaunch(AppEnvironment environment, LaunchEnvironment variables, Bus bus = &QDBusConnection::sessionBus,
            QObject* parent = nullptr);

  /// Starts the application, or asks it over the session bus to come forward where its entry says that it can.
  /// Throws DomainError when it cannot be started. A failure that shows only later comes as `failed`.
  void launch(const DesktopEntry& entry, const LaunchRequest& request = {});

  /// An identity for a startup notification, different each time.
  static QString startupId(const QString& program, quint32 userTime);

  /// Where a window needs a permission to come to the front: gets one for an application, and is asked at every start
  /// that brings none.
  std::function<QString(const QString& application)> tokenFor;

 Q_SIGNALS:
  /// A finished sentence for the user.
  void failed(const QString& message);

 private:
  bool activateOverBus(const DesktopEntry& entry, const LaunchRequest& request);
  void run(const DesktopEntry& entry, const LaunchRequest& request);
  void start(const DesktopEntry& entry, QStringList command, const LaunchRequest& request);

  AppEnvironment environment_;
  LaunchEnvironment variables_;
  Bus bus_;
};

}  // namespace tarnwick
