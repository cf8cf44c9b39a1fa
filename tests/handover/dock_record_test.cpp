#include "platform/docks/DockRecord.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "base/DomainError.h"
#include "dock/PropertyList.h"
#include "platform/docks/SystemDockPreferences.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kKey = u"autohide-delay"_s;

DockRecord record() {
  const QString place = u"net.launchpad.plank.dock.settings:/net/launchpad/plank/docks/dock1/"_s;
  return {{{u"plank"_s,
            {{{place, u"unhide-delay"_s, u"350"_s}, {u"0"_s, u"1000000"_s}},
             {{place, u"pressure-reveal"_s, std::nullopt}, {u"false"_s}}}},
           {u"xfce"_s, {{{u"panel-2"_s, u"output-name"_s, std::nullopt}, {std::nullopt, u"s:Tarnwick"_s}}}}}};
}

TEST(DockRecordTest, ComesBackAsItWas) {
  for (const DockRecord& r : {record(), DockRecord()}) {
    const QVariant back = PropertyList::decode(PropertyList::encode(r.toValue(kKey)));
    EXPECT_EQ(DockRecord::fromValue(kKey, back), r);
    EXPECT_FALSE(DockRecord::fromValue(u"autohide"_s, back)) << "it is of the other key";
  }
}

TEST(DockRecordTest, NoFlippedBitIsTakenForTheUsersValues) {
  const QVariantMap file{{u"autohide"_s, DockRecord().toValue(u"autohide"_s)}, {kKey, record().toValue(kKey)}};
  const QByteArray whole = PropertyList::encode(file);
  for (qsizetype bit = 0; bit < whole.size() * 8; ++bit) {
    QByteArray changed = whole;
    changed[bit / 8] = static_cast<char>(changed[bit / 8] ^ (1 << bit % 8));
    try {
      const QVariant value = PropertyList::decode(changed);
      const QVariant read = value.toMap().value(kKey);
      const auto back = DockRecord::fromValue(kKey, read);
      EXPECT_TRUE(!back || *back == record()) << bit;
    } catch (const DomainError&) {
    }
  }
}

TEST(DockRecordTest, AnOlderOneHasNoChecksum) {
  const QVariantMap setting{{u"place"_s, u"panel-1"_s}, {u"name"_s, u"output-name"_s}, {u"value"_s, u"s:HDMI"_s}};
  const auto value = [&](const QVariantMap& s) {
    return QVariantMap{
        {u"docks"_s, QVariantList{QVariantMap{{u"dock"_s, u"xfce"_s}, {u"settings"_s, QVariantList{s}}}}}};
  };
  const auto old = DockRecord::fromValue(kKey, value(setting));
  ASSERT_TRUE(old);
  EXPECT_EQ(old->docks, (QList<DockRecord::Dock>{
                            {u"xfce"_s, {{{u"panel-1"_s, u"output-name"_s, u"s:HDMI"_s}, {}}}}}));
  QVariantMap unset = setting;
  unset.remove(u"value"_s);
  EXPECT_FALSE(DockRecord::fromValue(kKey, value(unset))->docks[0].entries[0].setting.value);

  // A new one whose checksum was lost is not an old one.
  QVariantMap lost = record().toValue(kKey).toMap();
  lost.remove(u"check"_s);
  EXPECT_FALSE(DockRecord::fromValue(kKey, lost));
  QVariantMap renamed = value(setting);
  renamed.insert(u"chebk"_s, u"0"_s);
  EXPECT_FALSE(DockRecord::fromValue(kKey, renamed));
  for (const QVariant& other : QVariantList{true, 0.5, u"__absent__"_s, QVariantMap(), QVariantList()}) {
    EXPECT_FALSE(DockRecord::fromValue(kKey, other));
  }
}

TEST(DockRecordTest, OnlyPlacesAndNamesThatAnAdapterWritesAreTaken) {
  const QTemporaryDir folder;
  const SystemDockPreferences preferences(folder.path());
  const QString plank = u"net.launchpad.plank.dock.settings:/net/launchpad/plank/docks/"_s;
  const struct {
    const char* dock;
    QString place;
    const char* name;
    const char* key;
    bool known;
  } cases[] = {
      {"plank", plank + u"dock2/"_s, "unhide-delay", "autohide-delay", true},
      {"plank", plank + u"dock2/"_s, "unhide-delay", "autohide", false},
      {"plank", plank + u"dock2/"_s, "unhide-delaz", "autohide-delay", false},
      {"plank", plank + u"a/b/"_s, "hide-mode", "autohide", false},
      {"plank", QString(plank).replace(u"launchpad/"_s, u"latnchpad/"_s) + u"dock1/"_s, "hide-mode", "autohide", false},
      {"plank", u"org.gnome.shell.extensions.dash-to-dock:"_s, "autohide", "autohide", false},
      {"gnome", u"org.gnome.shell.extensions.dash-to-dock:"_s, "autohide", "autohide", true},
      {"gnome", u"org.gnome.shell.extensions.dash-to-dock:/x/"_s, "autohide", "autohide", false},
      {"xfce", u"panel-12"_s, "autohide-behavior", "autohide", true},
      {"xfce", u"panel-12/../x"_s, "autohide-behavior", "autohide", false},
      {"plasma", u"7"_s, "hiding", "autohide", true},
      {"plasma", u"7"_s, "hiding", "autohide-delay", false},
      {"plasma", u"7); evil("_s, "hiding", "autohide", false},
      {"none", QString(), "autohide", "autohide", true},
      {"none", u"x"_s, "autohide", "autohide", false},
      {"dock", QString(), "autohide", "autohide", false},
  };
  for (const auto& c : cases) {
    const QString key = QString::fromLatin1(c.key);
    const DockRecord::Entry entry{{c.place, QString::fromLatin1(c.name), std::nullopt}, {}};
    const DockRecord record{{{QString::fromLatin1(c.dock), {entry}}}};
    EXPECT_EQ(preferences.isOwnRecord(key, record.toValue(key)), c.known) << c.dock << ' ' << qPrintable(c.place);
  }
}

}  // namespace
}  // namespace tarnwick
