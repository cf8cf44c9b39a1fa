#include "apps/AppLaunch.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QSysInfo>

#include "apps/DesktopExec.h"
#include "apps/LaunchWords.h"
#include "apps/TerminalCommand.h"
#include "base/DomainError.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

AppLaunch::AppLaunch(AppEnvironment environment, LaunchEnvironment variables, ApplicationActivation& activation,
                     QObject* parent)
    : QObject(parent),
      environment_(std::move(environment)),
      variables_(std::move(variables)),
      activation_(activation) {}

void AppLaunch::launch(const DesktopEntry& entry, const LaunchRequest& given) {
  LaunchRequest request = given;
  if (tokenFor && request.activationToken.isEmpty()) request.activationToken = tokenFor(entry.id);
  if (entry.type == DesktopEntry::Type::Link) return start(entry, {u"xdg-open"_s, entry.url}, request);
  if (entry.type == DesktopEntry::Type::Directory)
    throw DomainError::invalid(LaunchWords::tr("“%1” is not an app.").arg(entry.name));
  if (!request.action.isEmpty() && !entry.action(request.action))
    throw DomainError::invalid(LaunchWords::tr("“%1” does not offer this any more.").arg(entry.name));
  if (!activate(entry, request)) run(entry, request);
}

bool AppLaunch::activate(const DesktopEntry& entry, LaunchRequest request) {
  if (!entry.dbusActivatable) return false;
  if (request.startupId.isEmpty()) request.startupId = startupId(entry.id, request.userTime);
  return activation_.activate(entry.id, request, [launch = QPointer(this), entry, request] {
    if (!launch) return;
    try {
      launch->run(entry, request);
    } catch (const DomainError& failure) {
      Q_EMIT launch->failed(failure.message());
    }
  });
}

void AppLaunch::run(const DesktopEntry& entry, const LaunchRequest& request) {
  const auto action = entry.action(request.action);
  const QString exec = action ? action->exec : entry.exec;
  if (exec.isEmpty()) throw DomainError::invalid(LaunchWords::tr("“%1” could not be started.").arg(entry.name));
  for (const QStringList& command : DesktopExec::expand(entry, exec, request.urls)) start(entry, command, request);
}

void AppLaunch::start(const DesktopEntry& entry, QStringList command, const LaunchRequest& request) {
  if (environment_.findExecutable(command.constFirst()).isEmpty())
    throw DomainError::invalid(
        LaunchWords::tr("“%1” could not be started: “%2” was not found.").arg(entry.name, command.constFirst()));
  if (entry.terminal) {
    command = TerminalCommand::wrap(command, environment_);
    if (command.isEmpty())
      throw DomainError::invalid(LaunchWords::tr("“%1” could not be started: no terminal was found.").arg(entry.name));
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
    throw DomainError::invalid(LaunchWords::tr("“%1” could not be started.").arg(entry.name));
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
