#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QProcess>

#include "platform/dbus/DesktopMotionPreference.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(DesktopMotionPreference, FollowsThePortalAndWithoutOneTheSetting) {
  PrivateBus bus;
  bus.makeStartable(u"ca.desrt.dconf"_s, u"/usr/libexec/dconf-service"_s);
  const auto wrapped = [](bool value) { return QVariant::fromValue(QDBusVariant(value)); };
  auto portal = std::make_unique<FakeService>(bus.connection(), u"org.freedesktop.portal.Desktop"_s);
  portal->answer(u"Read"_s,
                 [&](const QDBusMessage&) { return QVariantList{QVariant::fromValue(QDBusVariant(wrapped(false)))}; });
  DesktopMotionPreference preference(bus.connection());
  int changes = 0;
  QObject::connect(&preference, &MotionPreference::changed, &preference, [&] { ++changes; });
  const auto becomes = [&](bool reduces) { return waitFor([&] { return preference.reducesMotion() == reduces; }); };
  EXPECT_FALSE(preference.reducesMotion()) << "until somebody has answered";
  EXPECT_TRUE(becomes(true));

  const auto tell = [&](const QString& key, bool value) {
    portal->emitSignal(u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s,
                       {u"org.gnome.desktop.interface"_s, key, wrapped(value)});
  };
  tell(u"enable-hot-corners"_s, true);
  tell(u"enable-animations"_s, false);
  tell(u"enable-animations"_s, true);
  EXPECT_TRUE(becomes(false));
  EXPECT_EQ(changes, 2) << "another key and the same value are no news";

  tell(u"enable-animations"_s, false);
  EXPECT_TRUE(becomes(true));
  portal.reset();
  EXPECT_TRUE(becomes(false)) << "as the setting's default says";
  QProcess::execute(u"gsettings"_s, {u"set"_s, u"org.gnome.desktop.interface"_s, u"enable-animations"_s, u"false"_s});
  EXPECT_TRUE(becomes(true));
}

}  // namespace
}  // namespace tarnwick
