#include "platform_dbus/PrivateBus.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <QUuid>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kConfiguration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%1/services</servicedir>
  <policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
</busconfig>
)"_L1;

void write(const QString& path, const QString& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text.toUtf8());
}

}  // namespace

PrivateBus::PrivateBus() {
  // Services that the bus starts inherit the environment of the bus, so it is set before that runs.
  for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
    QDir(home_.path()).mkdir(QLatin1StringView(name));
    qputenv(name, QFile::encodeName(home_.filePath(QLatin1StringView(name))));
  }
  qunsetenv("XDG_CURRENT_DESKTOP");
  qunsetenv("GSETTINGS_BACKEND");
  QDir(home_.path()).mkdir(u"services"_s);
  write(home_.filePath(u"bus.conf"_s), QString(kConfiguration).arg(home_.path()));
}

PrivateBus::~PrivateBus() { stop(); }

void PrivateBus::stop() {
  for (const auto& name : std::exchange(connections_, {})) QDBusConnection::disconnectFromBus(name);
  if (daemon_.state() == QProcess::NotRunning) return;
  daemon_.terminate();
  daemon_.waitForFinished();
}

void PrivateBus::start() {
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  daemon_.start(u"dbus-daemon"_s,
                {u"--nofork"_s, u"--print-address"_s, u"--config-file"_s, home_.filePath(u"bus.conf"_s)});
  while (!daemon_.canReadLine() && daemon_.waitForReadyRead()) {
  }
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
}

QDBusConnection PrivateBus::connection() {
  if (address_.isEmpty()) start();
  connections_ << QUuid::createUuid().toString();
  auto connection = QDBusConnection::connectToBus(address_, connections_.last());
  EXPECT_TRUE(connection.isConnected()) << "dbus-daemon did not start";
  return connection;
}

void PrivateBus::makeStartable(const QString& name, const QString& program) {
  write(home_.filePath(u"services/"_s + name + u".service"_s),
        u"[D-BUS Service]\nName=%1\nExec=%2\n"_s.arg(name, program));
}

bool waitFor(const std::function<bool()>& holds) {
  QTimer wake;
  wake.start(20);
  const QDeadlineTimer deadline(30'000);
  while (!holds()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

}  // namespace tarnwick
