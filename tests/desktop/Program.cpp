#include "desktop/Program.h"

#include <signal.h>

#include <QDBusConnection>
#include <QFile>
#include <QMap>
#include <stdexcept>

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPatienceMs = 30'000;

QMap<QString, QString>& variables() {
  static QMap<QString, QString> changed;
  return changed;
}

std::optional<QProcessEnvironment>& ground() {
  static std::optional<QProcessEnvironment> chosen;
  return chosen;
}

QProcessEnvironment environment(const QString& dataHome) {
  QProcessEnvironment result = ground().value_or(QProcessEnvironment::systemEnvironment());
  result.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
  result.insert(u"XDG_DATA_HOME"_s, dataHome);
  for (auto it = variables().cbegin(); it != variables().cend(); ++it) result.insert(it.key(), it.value());
  return result;
}

QString executableOr(const QString& executable) { return executable.isEmpty() ? Program::path() : executable; }

std::optional<int> statusOf(QProcess& process) {
  if (process.state() != QProcess::NotRunning && !process.waitForFinished(kPatienceMs)) return std::nullopt;
  if (process.exitStatus() != QProcess::NormalExit) return std::nullopt;
  return process.exitCode();
}

}  // namespace

Program::Program(const QString& dataHome, const QStringList& arguments, const QString& executable) {
  process_.setProcessEnvironment(environment(dataHome));
  process_.start(executableOr(executable), arguments);
  if (!process_.waitForStarted(kPatienceMs)) throw std::runtime_error("the program does not start");
}

void Program::startFrom(const QProcessEnvironment& environment) { ground() = environment; }

void Program::setVariable(const QString& name, const QString& value) { variables().insert(name, value); }

void Program::resetVariables() { variables().clear(); }

QList<xcb_window_t> Program::windows() const {
  const VirtualDisplay& display = VirtualDisplay::current();
  QList<xcb_window_t> ours;
  const QList<quint32> dock{display.atom("_NET_WM_WINDOW_TYPE_DOCK")};
  for (const quint32 window : display.words(display.root(), "_NET_CLIENT_LIST")) {
    const bool isOurs = display.words(window, "_NET_WM_PID") == QList<quint32>{static_cast<quint32>(pid())};
    if (isOurs && display.words(window, "_NET_WM_WINDOW_TYPE") == dock) ours << window;
  }
  return ours;
}

bool Program::shows(qsizetype count) const {
  return VirtualDisplay::waitUntil([&] { return windows().size() == count || !isRunning(); }) && isRunning();
}

void Program::signal(int number) const { ::kill(pid(), number); }

std::optional<int> Program::end() { return statusOf(process_); }

QString Program::standardError() { return QString::fromUtf8(process_.readAllStandardError()); }

Ended runToEnd(const QString& dataHome, const QStringList& arguments, const QString& executable) {
  QProcess process;
  process.setProcessEnvironment(environment(dataHome));
  process.start(executableOr(executable), arguments);
  const std::optional<int> status = statusOf(process);
  return {status, QString::fromUtf8(process.readAllStandardError()),
          QString::fromUtf8(process.readAllStandardOutput())};
}

SessionBus::SessionBus() {
  const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
  address_ = u"unix:path="_s + socket;
  daemon_ = ChildProcess::start(
      {u"dbus-daemon"_s, u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address"_s + u"="_s + address_});
  qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
  // The socket is there a moment before the bus listens on it: only an accepted connection says that it runs.
  const auto answers = [&] {
    const QString probe = u"probe"_s;
    const bool connected = QDBusConnection::connectToBus(address_, probe).isConnected();
    QDBusConnection::disconnectFromBus(probe);
    return connected;
  };
  if (!VirtualDisplay::waitUntil(answers)) throw std::runtime_error("no session bus");
}

}  // namespace tarnwick::testing
