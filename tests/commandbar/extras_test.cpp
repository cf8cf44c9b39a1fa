#include <gtest/gtest.h>

#include <QSignalSpy>

#include "commandbar/CommandExtras.h"
#include "commandbar/ScriptedPlaces.h"
#include "support/RecordingCommands.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The first and the last stand in the table of symbols, there with the sign that asks for colours.
constexpr std::string_view kFew =
    "emoji 1 0\n"
    "🚀 rocket\t space,\n"
    "🦀 crab\t sea,\n"
    "🐚 spiral shell\t sea,\n"
    "🐟 fish\t sea,\n"
    "🐠 tropical fish\t sea,\n"
    "🐡 blowfish\t sea,\n"
    "🐙 octopus\t sea,\n"
    "🐬 dolphin\t sea,\n"
    "❤ red heart\t sea,\n"
    "🔢 input numbers\t 1234,\n";

class CommandExtrasTest : public testing::Test {
 protected:
  std::string found(const QString& query) {
    QStringList ids;
    for (const CommandItem& row : extras.find(query)) ids << row.id;
    return ids.join(u' ').toStdString();
  }

  EmojiTable table{kFew};
  test::RecordingCommands commands;
  ScriptedPlaces places;
  int asked = 0;
  CommandExtras extras{{.commands = commands, .settings = &places, .emoji = [this]() -> const EmojiTable& {
                          ++asked;
                          return table;
                        }}};
};

TEST_F(CommandExtrasTest, EmojiComeFirstAndAllTogetherAreSix) {
  extras.setChoices({.findsSymbols = false});
  EXPECT_EQ(found(u"rocket"_s), "emoji:🚀");
  extras.setChoices({});
  for (const auto& id : {u"1"_s, u"2"_s, u"3"_s, u"4"_s})
    places.places << SettingsPlace{id, "Crab sea "_L1 + id, u"General"_s, u"gear"_s};
  places.places << SettingsPlace{u"5"_s, u"Fish"_s, u"General"_s, u"gear"_s};
  places.places << SettingsPlace{u"6"_s, u"Sea"_s, u"General"_s, u"gear"_s};
  places.places << SettingsPlace{u"7"_s, u"1234 colors"_s, u"General"_s, u"gear"_s};
  const struct {
    QString query;
    std::string ids;
  } cases[] = {
      {u""_s, ""},
      {u"c"_s, ""},
      {u" c "_s, ""},
      {u"cr"_s, "emoji:🦀 setting:1 setting:2 setting:3"},
      {u" CRAB "_s, "emoji:🦀 setting:1 setting:2 setting:3"},
      {u"fish"_s, "emoji:🐟 emoji:🐠 setting:5"},
      {u"tr fi"_s, "emoji:🐠"},
      {u"sea"_s, "emoji:🦀 emoji:🐚 emoji:🐟 emoji:🐠 emoji:🐡 emoji:🐙"},
      // Where the symbols of the other list do not answer they stand here.
      {u"rocket"_s, ""},
      {u"space"_s, "emoji:🚀"},
      {u"red heart"_s, ""},
      {u"numb"_s, "emoji:🔢"},
      {u"1234"_s, "emoji:🔢 setting:7"},
      {u"12+34"_s, ""},
      {u"5%"_s, ""},
      {u"1234 c"_s, "setting:7"},
  };
  for (const auto& each : cases) EXPECT_EQ(found(each.query), each.ids) << each.query.toStdString();
}

TEST_F(CommandExtrasTest, TheTableIsReadOnlyWhenEmojiAreLookedFor) {
  found(u"c"_s);
  extras.setChoices({.findsEmoji = false});
  EXPECT_EQ(found(u"crab"_s), "");
  EXPECT_EQ(asked, 0);
  extras.opened();
  EXPECT_EQ(places.prepared, 1);
  extras.setChoices({.findsEmoji = false, .findsSettings = false});
  extras.opened();
  EXPECT_EQ(places.prepared, 1);
  extras.setChoices({.findsEmoji = false});
  QSignalSpy changes(&extras, &CommandExtras::changed);
  extras.setChoices({});
  extras.setChoices({});
  EXPECT_EQ(changes.size(), 1);
  EXPECT_EQ(found(u"crab"_s), "emoji:🦀");
}

TEST_F(CommandExtrasTest, ReturnCopiesAnEmojiAndOpensAPlace) {
  places.places << SettingsPlace{u"general/Crab"_s, u"Crab"_s, u"General"_s, u"gear"_s};
  const auto rows = extras.find(u"crab"_s);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0].title, u"🦀"_s);
  EXPECT_EQ(rows[0].subtitle, u"crab · copy"_s);
  EXPECT_EQ(rows[1].title, u"Crab"_s);
  EXPECT_EQ(rows[1].subtitle, u"General"_s);
  extras.activate(rows[0], true);
  EXPECT_EQ(commands.asked, QStringList{u"copy 🦀"_s});
  EXPECT_EQ(places.opened, QStringList());
  extras.activate(rows[1], true);
  EXPECT_EQ(places.opened, QStringList{u"general/Crab"_s});
  // Nobody chose it, so no switch is turned.
  extras.activate(rows[1], false);
  EXPECT_EQ(places.shown, QStringList{u"general/Crab"_s});
  EXPECT_EQ(commands.asked.size(), 1);

  CommandExtras alone({.commands = commands});
  alone.activate(rows[1], true);
  EXPECT_EQ(places.opened.size(), 1);
}

}  // namespace
}  // namespace tarnwick
