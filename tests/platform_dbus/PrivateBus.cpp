#include "platform_dbus/PrivateBus.h"

#include <QUuid>

#include "support/FileTest.h"

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
  writeFile(home_.filePath(u"bus.conf"_s), kConfiguration.arg(home_.path()).toUtf8());
}

PrivateBus::~PrivateBus() { stop(); }

void PrivateBus::stop() {
  for (const auto& name : std::exchange(connections_, {})) QDBusConnection::disconnectFromBus(name);
  if (daemon_.state() == QProcess::NotRunning) return;
  daemon_.terminate();
  daemon_.waitForFinished();
}

void PrivateBus::restart() {
  stop();
  start();
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
  writeFile(home_.filePath("services/%1.service"_L1.arg(name)),
            "[D-BUS Service]\nName=%1\nExec=%2\n"_L1.arg(name, program).toUtf8());
}

}  // namespace tarnwick
