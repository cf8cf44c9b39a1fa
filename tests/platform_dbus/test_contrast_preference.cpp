#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <functional>

#include "platform/dbus/DesktopContrastPreference.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void write(const QString& path, const QByteArray& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

QByteArray scheme(const char* text, const char* ground, const char* name = "Mine") {
  return QByteArray("[General]\nColorScheme=") + name + "\n\n[Colors:Window]\nBackgroundNormal=" + ground +
         "\nForegroundNormal=" + text + "\n";
}

TEST(DesktopContrastPreference, FollowsThePortalAndGnomesKey) {
  PrivateBus bus;
  bus.makeStartable(u"ca.desrt.dconf"_s, u"/usr/libexec/dconf-service"_s);
  const auto wrapped = [](const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); };
  auto portal = std::make_unique<FakeService>(bus.connection(), u"org.freedesktop.portal.Desktop"_s);
  portal->answer(u"Read"_s, [&](const QDBusMessage&) { return QVariantList{wrapped(wrapped(1U))}; });
  DesktopContrastPreference preference(bus.connection());
  int changes = 0;
  QObject::connect(&preference, &ContrastPreference::changed, &preference, [&] { ++changes; });
  const auto becomes = [&](bool wants) { return waitFor([&] { return preference.wantsHighContrast() == wants; }); };
  EXPECT_FALSE(preference.wantsHighContrast()) << "until somebody has answered";
  EXPECT_TRUE(becomes(true));

  const auto tell = [&](const QString& key, uint value) {
    portal->emitSignal(u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s,
                       {u"org.freedesktop.appearance"_s, key, wrapped(value)});
  };
  tell(u"color-scheme"_s, 0);
  tell(u"contrast"_s, 1);
  tell(u"contrast"_s, 0);
  EXPECT_TRUE(becomes(false));
  EXPECT_EQ(changes, 2) << "another key and the same value are no news";

  QProcess::execute(u"gsettings"_s, {u"set"_s, u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, u"true"_s});
  portal.reset();
  EXPECT_TRUE(becomes(true)) << "as GNOME's key says";
  QProcess::execute(u"gsettings"_s, {u"reset"_s, u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s});
  EXPECT_TRUE(becomes(false));
}

TEST(DesktopContrastPreference, OnPlasmaTheColourSchemeTells) {
  QTemporaryDir folder;
  const QString file = folder.filePath(u"kdeglobals"_s);
  EXPECT_FALSE(DesktopContrastPreference::isHighContrastScheme(file)) << "there is none";
  struct Scheme {
    const char* text;
    const char* ground;
    bool isHigh;
    const char* name = "Mine";
  };
  for (const Scheme& each : {Scheme{"0,0,0", "255,255,255", true}, Scheme{"255,255,255", "0,0,0", true},
                             Scheme{"35,38,41", "239,240,241", false}, Scheme{"252,252,252", "32,35,38", true},
                             Scheme{"255,255,255", "42,46,50", false}, Scheme{"white", "0,0,0", false},
                             Scheme{"252,252,252", "32,35,38", false, "BreezeDark"},
                             Scheme{"252,252,252", "0,0,0", true, "BreezeHighContrast"},
                             Scheme{"255,255", "0,0,0", false}, Scheme{"256,0,0", "0,0,0", false}}) {
    const QString own = folder.filePath(QString::fromLatin1(each.text + QByteArray(each.ground) + each.name));
    write(own, scheme(each.text, each.ground, each.name));
    EXPECT_EQ(DesktopContrastPreference::isHighContrastScheme(own), each.isHigh) << each.text << " on " << each.ground;
  }
}

TEST(DesktopContrastPreference, OnPlasmaAnotherSchemeTellsAtOnceHoweverItIsWritten) {
  PrivateBus bus;
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  QTemporaryDir folder;
  const QString file = folder.filePath(u"kdeglobals"_s);
  const QByteArray high = scheme("0,0,0", "255,255,255");
  const QByteArray usual = scheme("35,38,41", "239,240,241");
  const auto replace = [&](const QByteArray& text) {
    write(file + u".new"_s, text);
    EXPECT_EQ(::rename(QFile::encodeName(file + u".new"_s).constData(), QFile::encodeName(file).constData()), 0);
  };
  const auto lead = [&](const QString& name, const QByteArray& text) {
    write(folder.filePath(name), text);
    QFile::remove(file);
    EXPECT_TRUE(QFile::link(folder.filePath(name), file));
  };
  FakeService scheming(bus.connection(), u"org.example.Scheming"_s);
  const struct {
    const char* name;
    bool isHigh;
    std::function<void()> change;
  } ways[] = {
      {"it comes", true, [&] { write(file, high); }},
      {"is replaced", false, [&] { replace(usual); }},
      {"is replaced again", true, [&] { replace(high); }},
      {"is written over", false, [&] { write(file, usual); }},
      {"is a link", true, [&] { lead(u"first"_s, high); }},
      {"whose file is replaced, which is announced", false,
       [&] {
         // Nothing is heard of the folder that the link stands in.
         write(folder.filePath(u"second"_s), usual);
         ASSERT_TRUE(QFile::link(folder.filePath(u"second"_s), file + u".new"_s));
         ::rename(QFile::encodeName(file + u".new"_s).constData(), QFile::encodeName(file).constData());
         scheming.emitSignal(u"/KGlobalSettings"_s, u"org.kde.KGlobalSettings"_s, u"notifyChange"_s, {0, 0});
       }},
      {"is written over behind it", true, [&] { write(folder.filePath(u"second"_s), high); }},
      {"goes", false, [&] { QFile::remove(folder.filePath(u"second"_s)); }},
  };
  DesktopContrastPreference preference(bus.connection(), file);
  int changes = 0;
  QObject::connect(&preference, &ContrastPreference::changed, &preference, [&] { ++changes; });
  for (const auto& [name, isHigh, change] : ways) {
    SCOPED_TRACE(name);
    changes = 0;
    change();
    ASSERT_TRUE(waitFor([&] { return preference.wantsHighContrast() == isHigh; }));
    EXPECT_EQ(changes, 1);
  }
  qunsetenv("XDG_CURRENT_DESKTOP");
}

}  // namespace
}  // namespace tarnwick
