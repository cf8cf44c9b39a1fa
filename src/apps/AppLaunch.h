#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "apps/AppEnvironment.h"
#include "apps/DesktopEntry.h"
#include "apps/LaunchEnvironment.h"
#include "apps/LaunchRequest.h"
#include "apps/ports/ApplicationActivation.h"

namespace tarnwick {

/// Starts applications, in sessions of their own, so that they live on when this program ends. Main thread only.
class AppLaunch : public QObject {
  Q_OBJECT
 public:
  AppLaunch(AppEnvironment environment, LaunchEnvironment variables, ApplicationActivation& activation,
            QObject* parent = nullptr);

  /// Starts the application, or sends it a message to come forward where its entry says that it takes one.
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
  bool activate(const DesktopEntry& entry, LaunchRequest request);
  void run(const DesktopEntry& entry, const LaunchRequest& request);
  void start(const DesktopEntry& entry, QStringList command, const LaunchRequest& request);

  AppEnvironment environment_;
  LaunchEnvironment variables_;
  ApplicationActivation& activation_;
};

}  // namespace tarnwick
