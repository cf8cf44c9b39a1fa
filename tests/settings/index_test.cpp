#include <QSignalSpy>

#include "settings/SettingsFixture.h"
#include "views/settings/SettingsIndex.h"
#include "views/settings/SettingsSections.h"

namespace tarnwick::test {
namespace {

using namespace Qt::StringLiterals;

class SettingsIndexTest : public testing::Test, public SettingsFixture {
 protected:
  std::string found(const QString& words, qsizetype most) {
    QStringList ids;
    for (const SettingsPlace& place : index.find(words, most)) ids << place.id;
    return ids.join(u", "_s).toStdString();
  }

  QStringList shown;
  SettingsIndex index{store(), services, [this](const QString& section, const QString& label) {
                        shown << (label.isEmpty() ? section : section + u'/' + label);
                      }};
};

TEST_F(SettingsIndexTest, FindsRowsByTheBeginningOfTheirWords) {
  EXPECT_EQ(found(u"launch"_s, 1), "") << "nothing is read within a call";
  QSignalSpy changes(&index, &SettingsPlaces::changed);
  index.prepare();
  // Keys and frames come in between: a turn of the event loop reads one section, and all show at once.
  size_t turns = 0;
  while (changes.isEmpty() && turns < 1000) {
    EXPECT_EQ(found(u"launch"_s, 1), "");
    QCoreApplication::processEvents();
    ++turns;
  }
  EXPECT_GE(turns, settingsSections().size());
  index.prepare();
  QCoreApplication::processEvents();
  EXPECT_EQ(changes.size(), 1) << "they are read once";
  const struct {
    QString words;
    std::string ids;
  } cases[] = {
      {u"launch"_s, "general/Launch at login"},
      {u"login LAUNCH"_s, "general/Launch at login"},
      {u"aunch"_s, ""},
      {u"autostart"_s, "general/Launch at login"},
      {u"running apps"_s, "runningApps"},
      {u"classic menu"_s, "general/Classic menu"},
      {u"launch zzz"_s, ""},
      {u"export"_s, "general/Export settings"},
      {u"about"_s, "about"},
      // Rows that are only read.
      {u"version"_s, ""},
      {u"components"_s, ""},
      {u"concealed"_s, ""},
      {u"  "_s, ""},
      {u"!"_s, ""},
  };
  for (const auto& each : cases) EXPECT_EQ(found(each.words, 1), each.ids) << each.words.toStdString();
  EXPECT_EQ(index.find(u"s"_s, 3).size(), 3);
  // What a title says is worth more than what stands in the help of a row before it.
  EXPECT_EQ(found(u"menu"_s, 1), "general/Show menu bar icon");
  EXPECT_EQ(found(u"reduce"_s, 1), "appearance/Reduce transparency");

  const auto places = index.find(u"launch"_s, 1);
  ASSERT_EQ(places.size(), 1);
  EXPECT_EQ(places[0].title, u"Launch at login"_s);
  EXPECT_EQ(places[0].page, u"General"_s);
  EXPECT_FALSE(places[0].symbol.isEmpty());
}

TEST_F(SettingsIndexTest, TurnsASwitchAndShowsEveryOtherPlace) {
  const bool before = config().notificationsEnabled;
  index.open(u"general/Notifications"_s);
  EXPECT_NE(config().notificationsEnabled, before);
  index.open(u"general/Notifications"_s);
  EXPECT_EQ(config().notificationsEnabled, before);
  EXPECT_EQ(shown, QStringList());
  index.show(u"general/Notifications"_s);
  EXPECT_EQ(config().notificationsEnabled, before);
  EXPECT_EQ(shown, QStringList{u"general/Notifications"_s});

  const struct {
    QString id;
    QString section;
  } cases[] = {
      {u"privacy"_s, u"privacy"_s},
      {u"general/Export settings"_s, u"general/Export settings"_s},
      {u"general/Gone"_s, u"general/Gone"_s},
      {u"gone/Notifications"_s, {}},
      {u"gone"_s, {}},
      {{}, {}},
  };
  const DockConfiguration untouched = config();
  for (const auto& each : cases) {
    shown.clear();
    index.open(each.id);
    EXPECT_EQ(shown.join(u' '), each.section) << each.id.toStdString();
  }
  EXPECT_EQ(config(), untouched);
}

TEST_F(SettingsIndexTest, ASwitchThatIsOfNoUseIsShownInstead) {
  abilities.tray = Capability::no(u"No tray."_s);
  const bool before = options().classicMenu;
  index.open(u"general/Classic menu"_s);
  EXPECT_EQ(shown, QStringList{u"general/Classic menu"_s});
  EXPECT_EQ(options().classicMenu, before);
}

}  // namespace
}  // namespace tarnwick::test
