#include <gtest/gtest.h>

#include <QSet>

#include "commandbar/EmojiTable.h"
#include "commandbar/EmojiWords.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr std::string_view kEnglish =
    "emoji 1 12345678\n"
    "\tFaces & People\n"
    "😀 grinning face\t grin,\n"
    "👩‍🚀 woman astronaut\t rocket,\n"
    "\tThings\n"
    "🚀 rocket\t space,\n"
    "🇩🇪 flag: Germany\t flag germany,\n"
    "#️⃣ keycap: #\t keycap,\n";
constexpr std::string_view kGerman =
    "emoji 1 12345678\n"
    "😀 grinsendes Gesicht\t grinsendes gesicht, lacheln,\n"
    "👩‍🚀 Astronautin\t astronautin, grosse rakete,\n"
    "🚀 Rakete\t rakete, raumfahrt,\n"
    "🇩🇪 Flagge: Deutschland\t flagge deutschland,\n"
    "#️⃣ Taste: #\t taste,\n";

std::string found(const EmojiTable& table, const QString& query) {
  QStringList emoji;
  for (const qsizetype index : table.search(query)) emoji << table.emoji(index);
  return emoji.join(u' ').toStdString();
}

TEST(EmojiTableTest, FindsByTheBeginningOfWordsInBothLanguages) {
  const EmojiTable table(kEnglish, kGerman);
  const struct {
    QString query;
    std::string emoji;
  } cases[] = {
      {u""_s, "😀 👩‍🚀 🚀 🇩🇪 #️⃣"},
      {u"  "_s, "😀 👩‍🚀 🚀 🇩🇪 #️⃣"},
      {u"gr"_s, "😀 👩‍🚀"},
      {u"GRIN"_s, "😀"},
      {u"rin"_s, ""},
      {u"face grin"_s, "😀"},
      {u"face rocket"_s, ""},
      {u"gesicht face"_s, "😀"},
      {u"Lächeln"_s, "😀"},
      {u"große"_s, "👩‍🚀"},
      {u"rock"_s, "👩‍🚀 🚀"},
      {u"rocket"_s, "🚀 👩‍🚀"},
      {u"Rakete"_s, "🚀 👩‍🚀"},
      {u"flag-germany!"_s, "🇩🇪"},
      {u"flag germ"_s, "🇩🇪"},
      {u"🚀"_s, "🚀"},
      {u" #️⃣ "_s, "#️⃣"},
      {u"people"_s, ""},
      {u"things"_s, ""},
      {u"1"_s, ""},
      {u"#"_s, ""},
      {u","_s, ""},
      {u"x"_s.repeated(10'000), ""},
  };
  for (const auto& each : cases) EXPECT_EQ(found(table, each.query), each.emoji) << each.query.left(20).toStdString();
  EXPECT_EQ(table.search({}, 2).size(), 2);
  EXPECT_EQ(table.search(u"rocket"_s, 1), QList<qsizetype>{2});
}

TEST(EmojiTableTest, NamesInTheUsersLanguage) {
  const EmojiTable english(kEnglish);
  const EmojiTable german(kEnglish, kGerman);
  EXPECT_EQ(english.name(3), u"flag: Germany"_s);
  EXPECT_EQ(german.name(3), u"Flagge: Deutschland"_s);
  EXPECT_EQ(german.group(1), u"Faces & People"_s);
  EXPECT_EQ(german.group(2), u"Things"_s);
  EXPECT_EQ(german.indexOf(u"🚀"_s), 2);
  // A part of another emoji, another's words and nothing are none.
  for (const auto& none : {u"👩"_s, u"rocket"_s, u"\tThings"_s, u"emoji"_s, QString()})
    EXPECT_EQ(german.indexOf(none), -1) << none.toStdString();
}

TEST(EmojiTableTest, ALanguageThatDoesNotFitIsLeftOut) {
  const std::string german(kGerman);
  std::string otherStamp = german;
  otherStamp.replace(8, 1, "9");
  const std::string cases[] = {{},
                               otherStamp,
                               german.substr(0, german.rfind("#️⃣")),
                               german + "🚀 Rakete\t\n",
                               german.substr(0, german.size() - 1),
                               german.substr(0, 17),
                               std::string(german.size(), '\0')};
  for (const std::string& other : cases) {
    const EmojiTable table(kEnglish, other);
    EXPECT_EQ(table.name(2), u"rocket"_s) << other;
    EXPECT_EQ(found(table, u"rakete"_s), "") << other;
  }
  // Lines without what belongs in them have no name.
  const EmojiTable torn(kEnglish, "emoji 1 12345678\n\n😀\n \n\n\n");
  for (qsizetype i = 0; i < torn.size(); ++i) EXPECT_EQ(torn.name(i), QString());
  EXPECT_EQ(found(torn, u"rocket"_s), "🚀 👩‍🚀");
  EXPECT_EQ(EmojiTable("").size(), 0);
}

TEST(EmojiTableTest, FoldsLikeTheTables) {
  const struct {
    QString text;
    QString folded;
  } cases[] = {
      {u"  Heart-Eyes  "_s, u"heart eyes"_s}, {u"Straße"_s, u"strasse"_s},        {u"É\u0301clair's"_s, u"eclair s"_s},
      {u"ﬁne № 1"_s, u"fine no 1"_s},         {u"हिन्दी"_s, u"हिन्दी"_s},           {u"!?"_s, u""_s},
      {u"한"_s, u"\u1112\u1161\u11AB"_s},     {u"Ω Ångström"_s, u"ω angstrom"_s},
  };
  for (const auto& each : cases) EXPECT_EQ(EmojiTable::folded(each.text), each.folded) << each.text.toStdString();
}

TEST(EmojiTableTest, TheFilesOfALanguageEndWhereEnglishIsRead) {
  const struct {
    QStringList languages;
    QStringList names;
  } cases[] = {
      {{u"en-US"_s, u"en"_s}, {}},
      {{u"de-CH"_s, u"de"_s}, {u"tarnwick-emoji-de_CH"_s, u"tarnwick-emoji-de"_s}},
      {{u"pt-BR"_s, u"en-GB"_s, u"de"_s}, {u"tarnwick-emoji-pt_BR"_s}},
      {{}, {}},
  };
  for (const auto& each : cases) EXPECT_EQ(EmojiTable::fileNames(each.languages), each.names);
}

TEST(EmojiTableTest, HoldsTheKeyboardsEmojiInOrder) {
  const EmojiTable table(kEnglishEmoji);
  EXPECT_LT(kEnglishEmoji.size(), 150'000u);
  EXPECT_GT(table.size(), 1'500);
  QStringList groups;
  QSet<QString> seen;
  for (qsizetype i = 0; i < table.size(); ++i) {
    const QString emoji = table.emoji(i);
    for (const char32_t code : emoji.toUcs4()) EXPECT_FALSE(code >= 0x1F3FB && code <= 0x1F3FF) << "a skin tone";
    EXPECT_FALSE(seen.contains(emoji)) << emoji.toStdString();
    seen << emoji;
    EXPECT_FALSE(table.name(i).isEmpty()) << emoji.toStdString();
    if (groups.isEmpty() || groups.last() != table.group(i)) groups << table.group(i);
  }
  EXPECT_EQ(groups, (QStringList{u"Smileys & Emotion"_s, u"People & Body"_s, u"Animals & Nature"_s, u"Food & Drink"_s,
                                 u"Travel & Places"_s, u"Activities"_s, u"Objects"_s, u"Symbols"_s, u"Flags"_s}));
  const struct {
    QString query;
    QString first;
  } cases[] = {{u"grinning face"_s, u"😀"_s},  {u"fire"_s, u"🔥"_s},     {u"cof"_s, u"☕"_s},
               {u"red heart"_s, u"❤️"_s}, {u"chart up"_s, u"📈"_s}, {u"heart-eyes"_s, u"😍"_s},
               {u"germany"_s, u"🇩🇪"_s},       {u"shrug"_s, u"🤷"_s}};
  for (const auto& each : cases) {
    const auto indexes = table.search(each.query, 1);
    ASSERT_FALSE(indexes.isEmpty()) << each.query.toStdString();
    EXPECT_EQ(table.emoji(indexes.first()), each.first) << each.query.toStdString();
  }
}

}  // namespace
}  // namespace tarnwick
