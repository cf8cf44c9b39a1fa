#include <unistd.h>

#include <QDBusConnection>
#include <QProcess>

#include "apps/AppLaunch.h"
#include "apps_fixture.h"
#include "platform/dbus/BusActivation.h"
#include "support/FileTest.h"

namespace tarnwick::test {
namespace {

/// An application that can be reached over the bus.
class BusApplication : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
 public:
  QStringList calls;

 public Q_SLOTS:
  void Activate(const QVariantMap& platform) { note(u"activate"_s, platform); }
  void Open(const QStringList& urls, const QVariantMap& platform) { note("open "_L1 + urls.join(u' '), platform); }
  void ActivateAction(const QString& name, const QVariantList&, const QVariantMap& platform) {
    note("action "_L1 + name, platform);
  }

 private:
  void note(const QString& call, const QVariantMap& platform) {
    calls << call + u' ' + platform.value(u"desktop-startup-id"_s).toString();
  }
};

class LaunchTest : public AppsTest {
 protected:
  void SetUp() override {
    program(u"report"_s,
            "#!/bin/sh\n"
            "exec >%1/out.part\n"
            "printf '%s|' \"$@\"; echo\n"
            "pwd\n"
            "cut -d' ' -f6 /proc/$$/stat\n"
            "env\n"
            "mv %1/out.part %1/out\n"_L1.arg(root(u"result"_s)));
    QDir().mkpath(root(u"result"_s));
    launchVariables = LaunchEnvironment::from(variables({{"PATH", "/usr/bin:/bin"},
                                                         {"QT_QPA_PLATFORM", "xcb"},
                                                         {"NOTIFY_SOCKET", "/run/notify"},
                                                         {"WAYLAND_SOCKET", "7"},
                                                         {"KEPT", "yes"}}));
    launchVariables.remove({u"QT_QPA_PLATFORM"_s});
    entry.id = u"org.example.Report"_s;
    entry.name = u"Report"_s;
    entry.exec = u"report --plain %F"_s;
  }

  /// The lines that the started program wrote.
  QStringList reported() {
    QFile file(root(u"result/out"_s));
    EXPECT_TRUE(waitFor([&] { return file.exists(); }));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    file.remove();
    return lines;
  }

  std::string failureFor(const QString& exec, const LaunchRequest& request = {}) {
    entry.exec = exec;
    return failureOf([&] { AppLaunch(environment, launchVariables, noActivation).launch(entry, request); });
  }

  NoActivation noActivation;
  LaunchEnvironment launchVariables;
  DesktopEntry entry;
};

TEST_F(LaunchTest, StartsInASessionOfItsOwnWithoutOurVariables) {
  AppLaunch launcher(environment, launchVariables, noActivation);
  LaunchRequest request;
  request.urls << QUrl::fromLocalFile(u"/tmp/a b; $(c)"_s);
  request.activationToken = u"token"_s;
  request.userTime = 77;
  launcher.launch(entry, request);
  QStringList lines = reported();
  EXPECT_EQ(lines.value(0), u"--plain|/tmp/a b; $(c)|"_s);
  EXPECT_EQ(QFileInfo(lines.value(1)).canonicalFilePath(), QFileInfo(environment.home).canonicalFilePath());
  EXPECT_NE(lines.value(2).toInt(), getsid(0));
  EXPECT_GT(lines.value(2).toInt(), 0);
  EXPECT_TRUE(lines.contains(u"KEPT=yes"_s) && lines.contains(u"XDG_ACTIVATION_TOKEN=token"_s));
  for (const QString& ours : {u"QT_QPA_PLATFORM"_s, u"NOTIFY_SOCKET"_s, u"WAYLAND_SOCKET"_s}) {
    EXPECT_TRUE(lines.filter(ours).isEmpty()) << ours.toStdString();
  }
  const QString id = lines.filter(u"DESKTOP_STARTUP_ID="_s).value(0);
  EXPECT_TRUE(id.contains(u"report"_s) && id.endsWith("_TIME77"_L1)) << id.toStdString();

  // In a folder and a terminal, one of its actions, announced already.
  program(u"x-terminal-emulator"_s, u"#!/bin/sh\nshift\nexec \"$@\" in-terminal\n"_s);
  entry.workingDirectory = root(u"bin"_s);
  entry.terminal = true;
  entry.exec = u"nothing"_s;
  entry.actions << DesktopAction{u"new"_s, u"New"_s, {}, root(u"bin/report"_s) + " --new"_L1};
  launcher.launch(entry, {.action = u"new"_s, .startupId = u"known-id"_s});
  lines = reported();
  EXPECT_EQ(lines.value(0), u"--new|in-terminal|"_s);
  EXPECT_EQ(QFileInfo(lines.value(1)).canonicalFilePath(), QFileInfo(root(u"bin"_s)).canonicalFilePath());
  EXPECT_TRUE(lines.contains(u"DESKTOP_STARTUP_ID=known-id"_s));
}

TEST_F(LaunchTest, SaysWhyItCannotStart) {
  program(u"broken"_s, u"#!/no/such/interpreter\n"_s);
  EXPECT_EQ(failureFor(u"broken"_s), "“Report” could not be started.");
  EXPECT_EQ(failureFor(u"gone --x"_s), "“Report” could not be started: “gone” was not found.");
  EXPECT_EQ(failureFor(u"report"_s, {.urls = {QUrl(u"file:///a"_s)}}), "“Report” cannot open files.");
  EXPECT_EQ(failureFor(u"report %f"_s, {.urls = {QUrl(u"https://example.org"_s)}}),
            "“Report” can only open files on this computer.");
  EXPECT_EQ(failureFor(u"report"_s, {.action = u"gone"_s}), "“Report” does not offer this any more.");
  entry.terminal = true;
  EXPECT_EQ(failureFor(u"report"_s), "“Report” could not be started: no terminal was found.");
}

TEST_F(LaunchTest, AsksOverTheBusAndFallsBackOnTheCommand) {
  QProcess daemon;
  daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
  ASSERT_TRUE(daemon.waitForReadyRead(30000));
  const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
  {
    QDBusConnection service = QDBusConnection::connectToBus(address, u"service"_s);
    const QDBusConnection client = QDBusConnection::connectToBus(address, u"client"_s);
    BusApplication application;
    ASSERT_TRUE(service.registerObject(u"/org/example/Bus_App"_s, &application, QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(service.registerService(u"org.example.Bus-App"_s));
    BusActivation activation([&] { return client; });
    AppLaunch launcher(environment, launchVariables, activation);
    entry.id = u"org.example.Bus-App"_s;
    entry.dbusActivatable = true;
    entry.exec = u"report from-command"_s;
    entry.actions << DesktopAction{u"new"_s, u"New"_s, {}, {}};
    launcher.launch(entry, {.startupId = u"one"_s});
    launcher.launch(entry, {.urls = {QUrl::fromLocalFile(u"/a b"_s)}, .startupId = u"two"_s});
    launcher.launch(entry, {.action = u"new"_s, .startupId = u"three"_s});
    ASSERT_TRUE(waitFor([&] { return application.calls.size() == 3; }));
    EXPECT_EQ(application.calls, (QStringList{u"activate one"_s, u"open file:///a%20b two"_s, u"action new three"_s}));

    entry.id = u"org.example.Nobody"_s;
    launcher.launch(entry);
    EXPECT_EQ(reported().value(0), u"from-command|"_s);

    QString message;
    QObject::connect(&launcher, &AppLaunch::failed, [&](const QString& text) { message = text; });
    entry.exec.clear();
    launcher.launch(entry);
    ASSERT_TRUE(waitFor([&] { return !message.isEmpty(); }));
    EXPECT_EQ(message, u"“Report” could not be started."_s);
  }
  QDBusConnection::disconnectFromBus(u"service"_s);
  QDBusConnection::disconnectFromBus(u"client"_s);
  daemon.terminate();
  daemon.waitForFinished(30000);
}

}  // namespace
}  // namespace tarnwick::test

#include "launch_test.moc"
