#include "apps/LaunchEnvironment.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

void LaunchEnvironment::remove(const QStringList& names) {
  for (const QString& name : names) variables.remove(name);
}

LaunchEnvironment LaunchEnvironment::ofProcess() { return from(QProcessEnvironment::systemEnvironment()); }

LaunchEnvironment LaunchEnvironment::from(QProcessEnvironment variables) {
  LaunchEnvironment result{std::move(variables)};
  result.remove({u"DESKTOP_STARTUP_ID"_s, u"XDG_ACTIVATION_TOKEN"_s, u"DESKTOP_AUTOSTART_ID"_s,
                 u"GIO_LAUNCHED_DESKTOP_FILE"_s, u"GIO_LAUNCHED_DESKTOP_FILE_PID"_s, u"NOTIFY_SOCKET"_s,
                 u"WATCHDOG_PID"_s, u"WATCHDOG_USEC"_s, u"LISTEN_FDS"_s, u"LISTEN_PID"_s, u"LISTEN_FDNAMES"_s,
                 u"INVOCATION_ID"_s, u"JOURNAL_STREAM"_s, u"WAYLAND_SOCKET"_s});
  return result;
}

}  // namespace tarnwick
