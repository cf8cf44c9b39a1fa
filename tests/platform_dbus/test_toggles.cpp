#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include "platform/dbus/DesktopClockFormat.h"
#include "platform/dbus/DesktopToggles.h"
#include "platform_dbus/FakeLocks.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kNetwork = "org.freedesktop.NetworkManager"_L1;
constexpr auto kNetworkPath = "/org/freedesktop/NetworkManager"_L1;
constexpr auto kNotifications = "org.freedesktop.Notifications"_L1;
constexpr auto kNotificationsPath = "/org/freedesktop/Notifications"_L1;
constexpr auto kDunst = "org.dunstproject.cmd0"_L1;
constexpr auto kBluez = "org.bluez"_L1;
constexpr auto kAdapter = "org.bluez.Adapter1"_L1;
constexpr auto kObjectManager = "org.freedesktop.DBus.ObjectManager"_L1;
constexpr auto kPortal = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPortalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kPortalSettings = "org.freedesktop.portal.Settings"_L1;
constexpr auto kLogin = "org.freedesktop.login1"_L1;
constexpr auto kScreenSaver = "org.freedesktop.ScreenSaver"_L1;

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

/// The switches on a bus of their own, and a device tree of their own.
struct DesktopTogglesTest : ::testing::Test {
  void SetUp() override {
    qDBusRegisterMetaType<Interfaces>();
    qDBusRegisterMetaType<Objects>();
    bus.makeStartable(u"ca.desrt.dconf"_s, u"/usr/libexec/dconf-service"_s);
    bus.makeStartable(u"org.xfce.Xfconf"_s, u"/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd"_s);
  }

  void start() {
    const auto connection = bus.connection();
    toggles = std::make_unique<DesktopToggles>(connection, connection, tree.path());
    toggles->start();
  }

  ::testing::AssertionResult becomes(Toggle toggle, bool on, const QString& reason = {}) {
    if (waitFor([&] { return toggles->state(toggle) == ToggleState{on, Capability{reason.isEmpty(), reason}}; })) {
      return ::testing::AssertionSuccess();
    }
    const auto state = toggles->state(toggle);
    return ::testing::AssertionFailure() << "stayed " << (state.on ? "on" : "off") << ", \""
                                         << state.capability.reason.toStdString() << '"';
  }

  ::testing::AssertionResult switches(Toggle toggle, bool on) {
    toggles->set(toggle, on);
    return becomes(toggle, on);
  }

  /// Asks for a state in vain and waits for the announcement that brings a view back to the truth.
  bool refuses(Toggle toggle, bool on) {
    QSignalSpy announced(toggles.get(), &Toggles::changed);
    toggles->set(toggle, on);
    return waitFor([&] { return !announced.isEmpty(); }) && toggles->state(toggle).on != on;
  }

  PrivateBus bus;
  QTemporaryDir tree;
  std::unique_ptr<DesktopToggles> toggles;
};

TEST_F(DesktopTogglesTest, WiFiFollowsTheNetworkManager) {
  auto manager = std::make_unique<FakeService>(bus.connection(), kNetwork);
  const auto tell = [&](const QString& name, const QVariant& value) {
    manager->setProperty(kNetworkPath, kNetwork, name, value);
  };
  tell(u"WirelessEnabled"_s, true);
  tell(u"WirelessHardwareEnabled"_s, true);
  tell(u"RadioFlags"_s, 3u);
  start();
  EXPECT_TRUE(becomes(Toggle::WiFi, true));
  tell(u"WirelessEnabled"_s, false);
  EXPECT_TRUE(becomes(Toggle::WiFi, false));
  EXPECT_TRUE(switches(Toggle::WiFi, true));
  EXPECT_EQ(manager->property(kNetworkPath, kNetwork, u"WirelessEnabled"_s), true);

  manager->refuseWrites();
  EXPECT_TRUE(refuses(Toggle::WiFi, false));

  tell(u"WirelessHardwareEnabled"_s, false);
  EXPECT_TRUE(becomes(Toggle::WiFi, false, u"Wi-Fi is turned off by a switch on this computer."_s));
  tell(u"RadioFlags"_s, 2u);
  EXPECT_TRUE(becomes(Toggle::WiFi, false, u"This computer has no Wi-Fi adapter."_s));
  tell(u"RadioFlags"_s, 1u);
  tell(u"WirelessHardwareEnabled"_s, true);
  EXPECT_TRUE(becomes(Toggle::WiFi, true));

  // The manager ends: the kernel's own list of devices is what remains, and it can only be shown.
  manager.reset();
  EXPECT_TRUE(becomes(Toggle::WiFi, false, u"This computer has no Wi-Fi adapter."_s));
  QDir(tree.path()).mkpath(u"sys/class/net/wlan0/wireless"_s);
  EXPECT_TRUE(
      becomes(Toggle::WiFi, true, u"Wi-Fi can only be switched through NetworkManager, which is not running."_s));
  EXPECT_TRUE(refuses(Toggle::WiFi, false));
}

TEST_F(DesktopTogglesTest, BluetoothIsOnWhenAnyAdapterHasPower) {
  const QString first = u"/org/bluez/hci0"_s;
  const QString second = u"/org/bluez/hci1"_s;
  auto bluez = std::make_unique<FakeService>(bus.connection(), kBluez);
  Objects objects{{QDBusObjectPath(u"/org/bluez"_s), {{u"org.bluez.AgentManager1"_s, {}}}},
                  {QDBusObjectPath(first), {{kAdapter, {{u"Powered"_s, false}}}}},
                  {QDBusObjectPath(first + u"/dev_1"_s), {{u"org.bluez.Device1"_s, {{u"Connected"_s, true}}}}}};
  bluez->answer(u"GetManagedObjects"_s,
                [&](const QDBusMessage&) { return QVariantList{QVariant::fromValue(objects)}; });
  bluez->setProperty(first, kAdapter, u"Powered"_s, false);
  bluez->setProperty(second, kAdapter, u"Powered"_s, true);
  start();
  EXPECT_TRUE(becomes(Toggle::Bluetooth, false));
  EXPECT_TRUE(switches(Toggle::Bluetooth, true));
  EXPECT_EQ(bluez->property(first, kAdapter, u"Powered"_s), true);

  bluez->emitSignal(u"/"_s, kObjectManager, u"InterfacesAdded"_s,
                    {QVariant::fromValue(QDBusObjectPath(second)),
                     QVariant::fromValue(Interfaces{{kAdapter, {{u"Powered"_s, true}}}})});
  bluez->setProperty(first, kAdapter, u"Powered"_s, false);
  bluez->setProperty(first, kAdapter, u"PowerState"_s, u"off-blocked"_s);
  bluez->emitSignal(u"/"_s, kObjectManager, u"InterfacesRemoved"_s,
                    {QVariant::fromValue(QDBusObjectPath(second)), QStringList{kAdapter}});
  EXPECT_TRUE(becomes(Toggle::Bluetooth, false, u"Bluetooth is turned off by a switch on this computer."_s));
  bluez->emitSignal(u"/"_s, kObjectManager, u"InterfacesAdded"_s,
                    {QVariant::fromValue(QDBusObjectPath(second)),
                     QVariant::fromValue(Interfaces{{kAdapter, {{u"Powered"_s, true}}}})});
  EXPECT_TRUE(becomes(Toggle::Bluetooth, true));
  EXPECT_TRUE(switches(Toggle::Bluetooth, false));
  EXPECT_TRUE(switches(Toggle::Bluetooth, true));
  EXPECT_EQ(bluez->property(second, kAdapter, u"Powered"_s), true) << "the one that is not blocked";
  bluez->refuseWrites();
  EXPECT_TRUE(refuses(Toggle::Bluetooth, false));

  bluez.reset();
  EXPECT_TRUE(becomes(Toggle::Bluetooth, false, u"The Bluetooth service is not running."_s));
  objects.clear();
  bluez = std::make_unique<FakeService>(bus.connection(), kBluez);
  bluez->answer(u"GetManagedObjects"_s,
                [&](const QDBusMessage&) { return QVariantList{QVariant::fromValue(objects)}; });
  EXPECT_TRUE(becomes(Toggle::Bluetooth, false, u"This computer has no Bluetooth adapter."_s));
}

/// What a program of the desktop says.
QString run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << arguments.join(u' ').toStdString();
  return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}
QString setting(const QStringList& arguments) { return run(u"gsettings"_s, arguments); }

TEST_F(DesktopTogglesTest, TheClocksFormatIsTheDesktopsWhereItObeysItself) {
  const QStringList key{u"org.gnome.desktop.interface"_s, u"clock-format"_s};
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  DesktopClockFormat ignored(bus.connection());
  ignored.start();
  EXPECT_EQ(ignored.uses24Hour(), std::nullopt);
  qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
  DesktopClockFormat format(bus.connection());
  EXPECT_EQ(format.uses24Hour(), std::nullopt) << "not asked yet";
  format.start();
  EXPECT_TRUE(waitFor([&] { return format.uses24Hour() == true; }));
  setting(QStringList{u"set"_s} + key + QStringList{u"12h"_s});
  EXPECT_TRUE(waitFor([&] { return format.uses24Hour() == false; }));
}

TEST_F(DesktopTogglesTest, DarkModeIsTheDesktopsSetting) {
  const QStringList key{u"org.gnome.desktop.interface"_s, u"color-scheme"_s};
  start();
  EXPECT_TRUE(becomes(Toggle::DarkMode, false));
  EXPECT_TRUE(switches(Toggle::DarkMode, true));
  // It is on for us a moment before it is on the disk, where another program looks.
  EXPECT_TRUE(waitFor([&] { return setting(QStringList{u"get"_s} + key) == u"'prefer-dark'"_s; }));
  toggles->set(Toggle::DarkMode, false);
  toggles->set(Toggle::DarkMode, true);
  EXPECT_TRUE(switches(Toggle::DarkMode, false));
  setting(QStringList{u"set"_s} + key + QStringList{u"prefer-dark"_s});
  EXPECT_TRUE(becomes(Toggle::DarkMode, true)) << "changed by another program";
  setting({u"reset"_s, key[0], key[1]});
  EXPECT_TRUE(becomes(Toggle::DarkMode, false));
}

TEST_F(DesktopTogglesTest, DarkModeFollowsThePortalAndOnPlasmaIsOnlyShown) {
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  auto portal = std::make_unique<FakeService>(bus.connection(), kPortal);
  const auto wrapped = [](uint value) { return QVariant::fromValue(QDBusVariant(value)); };
  portal->answer(u"Read"_s,
                 [&](const QDBusMessage&) { return QVariantList{QVariant::fromValue(QDBusVariant(wrapped(1)))}; });
  start();
  const auto shown = u"This desktop does not let apps change its appearance."_s;
  const auto tell = [&](const QString& key, uint value) {
    portal->emitSignal(kPortalPath, kPortalSettings, u"SettingChanged"_s,
                       {u"org.freedesktop.appearance"_s, key, wrapped(value)});
  };
  EXPECT_TRUE(becomes(Toggle::DarkMode, true, shown));
  tell(u"color-scheme"_s, 2);
  EXPECT_TRUE(becomes(Toggle::DarkMode, false, shown));
  tell(u"color-scheme"_s, 1);
  tell(u"contrast"_s, 0);
  EXPECT_TRUE(becomes(Toggle::DarkMode, true, shown));
  portal.reset();
  EXPECT_TRUE(becomes(Toggle::DarkMode, false, u"This desktop has no setting for dark mode."_s));
}

TEST_F(DesktopTogglesTest, DoNotDisturbSpeaksTheDialectOfTheServiceThatRuns) {
  start();
  {
    FakeService dunst(bus.connection(), kNotifications);
    dunst.setProperty(kNotificationsPath, kDunst, u"paused"_s, true);
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, true));
    EXPECT_TRUE(switches(Toggle::DoNotDisturb, false));
    EXPECT_EQ(dunst.property(kNotificationsPath, kDunst, u"paused"_s), false);
  }
  EXPECT_TRUE(becomes(Toggle::DoNotDisturb, false, u"No notification service was found."_s));
  {
    FakeService plasma(bus.connection(), kNotifications);
    QList<uint> released;
    const auto tell = [&](bool on) { plasma.setProperty(kNotificationsPath, kNotifications, u"Inhibited"_s, on); };
    plasma.answer(u"Inhibit"_s, [&](const QDBusMessage& message) {
      EXPECT_EQ(message.signature(), u"ssa{sv}"_s);
      tell(true);
      return QVariantList{7u};
    });
    plasma.answer(u"UnInhibit"_s, [&](const QDBusMessage& message) {
      released << message.arguments()[0].toUInt();
      tell(false);
      return QVariantList();
    });
    tell(true);
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, true, u"Another app has turned on Do Not Disturb."_s));
    tell(false);
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, false));
    EXPECT_TRUE(switches(Toggle::DoNotDisturb, true));
    EXPECT_TRUE(switches(Toggle::DoNotDisturb, false));
    EXPECT_EQ(released, QList<uint>{7u});
  }
  {
    FakeService xfce(bus.connection(), kNotifications);
    xfce.answer(u"GetServerInformation"_s, [](const QDBusMessage&) {
      return QVariantList{u"Xfce Notify Daemon"_s, u"Xfce"_s, u"0.7.3"_s, u"1.2"_s};
    });
    const QStringList key{u"-c"_s, u"xfce4-notifyd"_s, u"-p"_s, u"/do-not-disturb"_s};
    run(u"xfconf-query"_s, key + QStringList{u"-n"_s, u"-t"_s, u"bool"_s, u"-s"_s, u"true"_s});
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, true));
    EXPECT_TRUE(switches(Toggle::DoNotDisturb, false));
    EXPECT_EQ(run(u"xfconf-query"_s, key), u"false"_s);
    run(u"xfconf-query"_s, key + QStringList{u"-s"_s, u"true"_s});
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, true)) << "changed by another program";
    run(u"xfconf-query"_s, key + QStringList{u"-r"_s});
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, false)) << "a setting that nobody made";
  }
  {
    FakeService plain(bus.connection(), kNotifications);
    EXPECT_TRUE(becomes(Toggle::DoNotDisturb, false,
                        u"Tarnwick cannot control Do Not Disturb of this notification service."_s));
  }
  FakeService shell(bus.connection(), kNotifications);
  shell.answer(u"GetServerInformation"_s, [](const QDBusMessage&) {
    return QVariantList{u"gnome-shell"_s, u"GNOME"_s, u"43.9"_s, u"1.2"_s};
  });
  EXPECT_TRUE(becomes(Toggle::DoNotDisturb, false));
  EXPECT_TRUE(switches(Toggle::DoNotDisturb, true));
  EXPECT_TRUE(waitFor([] {
    return setting({u"get"_s, u"org.gnome.desktop.notifications"_s, u"show-banners"_s}) == u"false"_s;
  }));
}

TEST_F(DesktopTogglesTest, KeepAwakeHoldsTheLocksOfBothServicesWhileItIsOn) {
  const auto none = u"No power service was found."_s;
  auto login = std::make_unique<FakeService>(bus.connection(), kLogin);
  FakeLocks locks(*login);
  QStringList asked;
  const auto answerAs = [&](FakeService& service) {
    service.answer(u"Inhibit"_s, [&](const QDBusMessage& message) {
      asked << u"inhibit for "_s + message.arguments()[0].toString();
      return QVariantList{42u};
    });
    service.answer(u"UnInhibit"_s, [&](const QDBusMessage& message) {
      asked << u"release %1"_s.arg(message.arguments()[0].toUInt());
      return QVariantList();
    });
  };
  auto screen = std::make_unique<FakeService>(bus.connection(), kScreenSaver);
  answerAs(*screen);
  start();
  EXPECT_TRUE(becomes(Toggle::KeepAwake, false));
  EXPECT_EQ(locks.held(), 0);
  // Both services have to be known before the switch is thrown, or the later one is asked when it appears: either is
  // well.
  toggles->set(Toggle::KeepAwake, true);
  ASSERT_TRUE(waitFor([&] { return locks.held() == 1 && asked == QStringList{u"inhibit for Tarnwick"_s}; }));
  EXPECT_TRUE(becomes(Toggle::KeepAwake, true));
  EXPECT_EQ(locks.last()[0], u"idle:sleep"_s);
  EXPECT_EQ(locks.last()[3], u"block"_s);

  // A screen saver that restarts has forgotten us.
  screen.reset();
  screen = std::make_unique<FakeService>(bus.connection(), kScreenSaver);
  answerAs(*screen);
  ASSERT_TRUE(waitFor([&] { return asked.size() == 2; }));
  EXPECT_TRUE(becomes(Toggle::KeepAwake, true));

  toggles->set(Toggle::KeepAwake, false);
  ASSERT_TRUE(waitFor([&] { return locks.held() == 0 && asked.size() == 3; }));
  EXPECT_EQ(asked.last(), u"release 42"_s);
  EXPECT_TRUE(becomes(Toggle::KeepAwake, false));

  // A quick change of mind: whatever was under way, no lock is taken twice and none stays.
  const auto balance = [&] { return asked.filter(u"inhibit"_s).size() - asked.filter(u"release"_s).size(); };
  const auto lost = balance();  // What the first screen saver took with it.
  for (const bool on : {true, false, true, false, true}) toggles->set(Toggle::KeepAwake, on);
  ASSERT_TRUE(waitFor([&] { return balance() == lost + 1 && locks.held() == 1; }));
  toggles->set(Toggle::KeepAwake, false);
  ASSERT_TRUE(waitFor([&] { return balance() == lost && locks.held() == 0; }));

  toggles->set(Toggle::KeepAwake, true);
  ASSERT_TRUE(waitFor([&] { return locks.held() == 1; }));
  toggles.reset();
  EXPECT_TRUE(waitFor([&] { return locks.held() == 0; })) << "the end of the program is the end of the lock";

  login.reset();
  screen.reset();
  start();
  EXPECT_TRUE(becomes(Toggle::KeepAwake, false, none));
}

TEST_F(DesktopTogglesTest, NothingBreaksWhenTheBusGoesAwayOrWasNeverThere) {
  FakeService manager(bus.connection(), kNetwork);
  manager.setProperty(kNetworkPath, kNetwork, u"WirelessEnabled"_s, true);
  manager.setProperty(kNetworkPath, kNetwork, u"RadioFlags"_s, 1u);
  start();
  EXPECT_TRUE(becomes(Toggle::WiFi, true));
  bus.stop();
  EXPECT_TRUE(becomes(Toggle::WiFi, false, u"This computer has no Wi-Fi adapter."_s));

  const QDBusConnection none(u"there is no such connection"_s);
  toggles = std::make_unique<DesktopToggles>(none, none, tree.path());
  EXPECT_TRUE(refuses(Toggle::WiFi, true));
  toggles->start();
  for (const auto toggle : {Toggle::WiFi, Toggle::Bluetooth, Toggle::DoNotDisturb, Toggle::Mute, Toggle::KeepAwake}) {
    EXPECT_TRUE(refuses(toggle, true));
    const auto capability = toggles->state(toggle).capability;
    EXPECT_TRUE(!capability.available && capability.reason.endsWith(u'.')) << static_cast<int>(toggle);
  }
}

/// A real sound server with one silent output, on the runtime folder of the test.
std::unique_ptr<QProcess> soundServer() {
  auto server = std::make_unique<QProcess>();
  server->setStandardErrorFile(QProcess::nullDevice());
  server->start(u"pulseaudio"_s, {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                                  u"--load=module-native-protocol-unix auth-anonymous=1"_s,
                                  u"--load=module-null-sink sink_name=speakers"_s});
  return server;
}

QString pactl(const QStringList& arguments) { return run(u"pactl"_s, arguments); }

TEST_F(DesktopTogglesTest, MuteIsThatOfTheDefaultSoundOutput) {
  const auto none = u"No sound server was found."_s;
  start();
  EXPECT_TRUE(becomes(Toggle::Mute, false, none));
  EXPECT_TRUE(refuses(Toggle::Mute, true));

  auto server = soundServer();
  EXPECT_TRUE(becomes(Toggle::Mute, false)) << "a server that comes later is noticed";
  EXPECT_TRUE(switches(Toggle::Mute, true));
  EXPECT_EQ(pactl({u"get-sink-mute"_s, u"speakers"_s}), u"Mute: yes"_s);
  pactl({u"set-sink-mute"_s, u"speakers"_s, u"0"_s});
  EXPECT_TRUE(becomes(Toggle::Mute, false)) << "changed by another program";

  pactl({u"load-module"_s, u"module-null-sink"_s, u"sink_name=headset"_s});
  pactl({u"set-sink-mute"_s, u"headset"_s, u"1"_s});
  pactl({u"set-default-sink"_s, u"headset"_s});
  EXPECT_TRUE(becomes(Toggle::Mute, true)) << "another output became the default";
  EXPECT_TRUE(switches(Toggle::Mute, false));
  EXPECT_EQ(pactl({u"get-sink-mute"_s, u"headset"_s}), u"Mute: no"_s);

  server->kill();
  server->waitForFinished();
  EXPECT_TRUE(becomes(Toggle::Mute, false, none));
  server = soundServer();
  EXPECT_TRUE(becomes(Toggle::Mute, false)) << "a server that was started again";
  EXPECT_TRUE(switches(Toggle::Mute, true));
  toggles.reset();
  server->terminate();
  server->waitForFinished();
}

}  // namespace
}  // namespace tarnwick
