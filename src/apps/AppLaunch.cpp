#include "apps/AppLaunch.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSysInfo>
#include <QVariantMap>

#include "apps/DesktopExec.h"
#include "apps/TerminalCommand.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Whether an id can be the name of a program on the bus.
bool isBusName(const QString& id) {
  static const QRegularExpression pattern(u"^[A-Za-z_-][A-Za-z0-9_-]*(\\.[A-Za-z_-][A-Za-z0-9_-]*)+$"_s);
  return id.size() <= 255 && pattern.match(id).hasMatch();
}

QDBusMessage activation(const DesktopEntry& entry, const LaunchRequest& request, const QString& startupId) {
  QString path = u'/' + entry.id;
  path.replace(u'.', u'/').replace(u'-', u'_');
  QVariantMap platform{{u"desktop-startup-id"_s, startupId}};
  if (!request.activationToken.isEmpty()) platform.insert(u"activation-token"_s, request.activationToken);
  const auto call = [&](const QString& method) {
    return QDBusMessage::createMethodCall(entry.id, path, u"org.freedesktop.Application"_s, method);
  };
  QDBusMessage message;
  if (!request.action.isEmpty()) {
    message = call(u"ActivateAction"_s);
    message << request.action << QVariantList() << platform;
  } else if (request.urls.isEmpty()) {
    message = call(u"Activate"_s);
    message << platform;
  } else {
    QStringList urls;
    for (const QUrl& url : request.urls) urls << url.toString(QUrl::FullyEncoded);
    message = call(u"Open"_s);
    message << urls << platform;
  }
  return message;
}

}  // namespace

AppLaunch::AppLaunch(AppEnvironment environment, LaunchEnvironment variables, Bus bus, QObject* parent)
    : QObject(parent), environment_(std::move(environment)), variables_(std::move(variables)), bus_(std::move(bus)) {}

void AppLaunch::launch(const DesktopEntry& entry, const LaunchRequest& wish) {
  LaunchRequest request = wish;
  if (tokenFor && request.activationToken.isEmpty()) request.activationToken = tokenFor(entry.id);
  if (entry.type == DesktopEntry::Type::Link) return start(entry, {u"xdg-open"_s, entry.url}, request);
  if (entry.type == DesktopEntry::Type::Directory)
    throw DomainError::invalid(QCoreApplication::translate("AppLaunch", "“%1” is no application.").arg(entry.name));
  if (!request.action.isEmpty() && !entry.action(request.action))
    throw DomainError::invalid(
        QCoreApplication::translate("AppLaunch", "“%1” does not offer this any more.").arg(entry.name));
  if (!activateOverBus(entry, request)) run(entry, request);
}

bool AppLaunch::activateOverBus(const DesktopEntry& entry, const LaunchRequest& request) {
  if (!entry.dbusActivatable || !isBusName(entry.id)) return false;
  QDBusConnection bus = bus_();
  if (!bus.isConnected()) return false;
  const QString id = request.startupId.isEmpty() ? startupId(entry.id, request.userTime) : request.startupId;
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(activation(entry, request, id)), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, entry, request] {
    watcher->deleteLater();
    // A program that takes its time has been reached nevertheless: a second one is not wanted.
    const QDBusError error = QDBusPendingReply<>(*watcher).error();
    if (!error.isValid() || error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut) return;
    try {
      run(entry, request);
    } catch (const DomainError& failure) {
      Q_EMIT failed(failure.message());
    }
  });
  return true;
}

void AppLaunch::run(const DesktopEntry& entry, const LaunchRequest& request) {
  const auto action = entry.action(request.action);
  const QString exec = action ? action->exec : entry.exec;
  if (exec.isEmpty())
    throw DomainError::invalid(QCoreApplication::translate("AppLaunch", "“%1” could not be started.").arg(entry.name));
  for (const QStringList& command : DesktopExec::expand(entry, exec, request.urls)) start(entry, command, request);
}

void AppLaunch::start(const DesktopEntry& entry, QStringList command, const LaunchRequest& request) {
  if (environment_.findExecutable(command.constFirst()).isEmpty())
    throw DomainError::invalid(
        QCoreApplication::translate("AppLaunch", "“%1” could not be started: “%2” was not found.")
            .arg(entry.name, command.constFirst()));
  if (entry.terminal) {
    command = TerminalCommand::wrap(command, environment_);
    if (command.isEmpty())
      throw DomainError::invalid(
          QCoreApplication::translate("AppLaunch", "“%1” could not be started: no terminal was found.")
              .arg(entry.name));
  }
  QProcessEnvironment variables = variables_.variables;
  variables.insert(u"DESKTOP_STARTUP_ID"_s,
                   request.startupId.isEmpty() ? startupId(command.constFirst(), request.userTime) : request.startupId);
  if (!request.activationToken.isEmpty()) variables.insert(u"XDG_ACTIVATION_TOKEN"_s, request.activationToken);

  QProcess process;
  process.setProgram(environment_.findExecutable(command.takeFirst()));
  process.setArguments(command);
  process.setProcessEnvironment(variables);
  const bool hasFolder = !entry.workingDirectory.isEmpty() && QFileInfo(entry.workingDirectory).isDir();
  process.setWorkingDirectory(hasFolder ? entry.workingDirectory : environment_.home);
  process.setStandardInputFile(QProcess::nullDevice());
  if (!process.startDetached())
    throw DomainError::invalid(QCoreApplication::translate("AppLaunch", "“%1” could not be started.").arg(entry.name));
}

QString AppLaunch::startupId(const QString& program, quint32 userTime) {
  static int sequence = 0;
  QString name = QFileInfo(program).fileName();
  static const QRegularExpression unusual(u"[^A-Za-z0-9.-]"_s);
  name.replace(unusual, u"-"_s);
  QString id = u"tarnwick-%1-%2-%3-%4"_s.arg(QSysInfo::machineHostName(), name)
                   .arg(QCoreApplication::applicationPid())
                   .arg(++sequence);
  // A time of nought would ask for a window in the background.
  if (userTime > 0) id += "_TIME"_L1 + QString::number(userTime);
  return id;
}

}  // namespace tarnwick
