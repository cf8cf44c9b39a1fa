#include <gtest/gtest.h>

#include <algorithm>

#include "base/Text.h"
#include "commandbar/SymbolTable.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(SymbolTable, HasItsRowsInOrder) {
  const auto& entries = SymbolTable::entries();
  ASSERT_EQ(entries.size(), 78);
  QString all;
  for (const auto& entry : entries) all += entry.character;
  EXPECT_EQ(all,
            u"😀😂🙂😉😍🤔😅😭😊🙃😎🥲😴🤯👍👎👋🙏👏🤝💪🫡"
            u"❤️🔥✨🎉🚀⭐⚡💡🐛🔒🔑📌📎🗑️📝📅⏰☕✅❌⚠️➡️⬅️"
            u"→←↑↓—–…“”’·•°×÷±≈≠≤≥∞€£¥©®™⌘⌥⇧⌃⏎⌫"_s);

  for (const auto& entry : entries) {
    const std::string name = entry.name.toStdString();
    EXPECT_EQ(Text::characters(entry.character).size(), 1) << name;
    EXPECT_TRUE(entry.keywords.size() >= 2 && entry.keywords.size() <= 5) << name;
    EXPECT_EQ((entry.name + entry.keywords.join(u' ')).toLower(), entry.name + entry.keywords.join(u' ')) << name;
    EXPECT_FALSE(entry.keywords.contains(QString())) << name;
    EXPECT_EQ(QStringList(entry.keywords).removeDuplicates(), 0) << name;
  }

  const struct {
    const char16_t* character;
    const char16_t* keywords;
  } telling[] = {
      {u"😂", u"laugh cry joy lol"},          {u"🔥", u"fire hot lit flame"},      {u"✅", u"check done tick yes"},
      {u"🚀", u"rocket ship launch fast"},    {u"⭐", u"star favourite favorite"}, {u"→", u"arrow right to"},
      {u"≈", u"approx approximately about"}, {u"⌘", u"command cmd apple key"},   {u"⌫", u"delete backspace key"},
      {u"¥", u"yen yuan currency"},
  };
  for (const auto& row : telling) {
    const auto found = std::ranges::find(entries, QString::fromUtf16(row.character), &SymbolTable::Entry::character);
    ASSERT_NE(found, entries.end());
    EXPECT_EQ(found->keywords.join(u' '), QString::fromUtf16(row.keywords));
  }
}

}  // namespace
}  // namespace tarnwick
