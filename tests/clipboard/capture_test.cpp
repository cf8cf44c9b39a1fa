#include <gtest/gtest.h>

#include "clipboard/ClipboardCapture.h"
#include "clipboard/ClipboardColor.h"
#include "clipboard/ClipboardGroup.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClipboardEntry::Kind;

TEST(ClipboardCapture, TextsAreOfAKind) {
  const struct {
    QString text;
    Kind kind;
  } cases[] = {
      {u"#abc"_s, Kind::Color},
      {u"#abcd"_s, Kind::Color},
      {u"#aabbcc"_s, Kind::Color},
      {u"#AABBCCdd"_s, Kind::Color},
      {u"#abcde"_s, Kind::Text},
      {u"#"_s, Kind::Text},
      {u"#ab"_s, Kind::Text},
      {u"#aabbccd"_s, Kind::Text},
      {u"#aabbccdde"_s, Kind::Text},
      {u"#ggg"_s, Kind::Text},
      {u"# abc"_s, Kind::Text},
      {u"#abc;"_s, Kind::Text},
      {u" #abc\n"_s, Kind::Color},
      {u"rgb(999)"_s, Kind::Color},
      {u"rgb( )"_s, Kind::Color},
      {u"rgb()"_s, Kind::Text},
      {u"rgb(1, 2, 3"_s, Kind::Text},
      {u"rgba(1,2,3,0.5)"_s, Kind::Color},
      {u"hsl(120, 50%, 50%)"_s, Kind::Color},
      {u"hsla(120, 50%, 50%, .5)"_s, Kind::Color},
      {u"rgb(١٢٣)"_s, Kind::Color},
      {u"rgb(-1, 2, 3)"_s, Kind::Text},
      {u"rgb(1 / 2)"_s, Kind::Text},
      {u"rgb((1))"_s, Kind::Text},
      {u"RGB(1,2,3)"_s, Kind::Text},
      {u"hsv(1,2,3)"_s, Kind::Text},
      {u"example.com"_s, Kind::Link},
      {u"\thttps://example.com/a?b#c\n"_s, Kind::Link},
      {u"http://x"_s, Kind::Link},
      {u"foo.txt"_s, Kind::Text},
      {u"see example.com"_s, Kind::Text},
      {u"https://example.com\nhttps://example.org"_s, Kind::Text},
      {u"  \n"_s, Kind::Text},
  };
  for (const auto& each : cases) {
    const auto capture = ClipboardCapture::ofText(each.text);
    ASSERT_TRUE(capture) << each.text.toStdString();
    EXPECT_EQ(capture->kind, each.kind) << each.text.toStdString();
    EXPECT_EQ(capture->value, each.text) << "as it was";
  }
  EXPECT_FALSE(ClipboardCapture::ofText({}));
}

TEST(ClipboardColor, IsWhatAStyleSheetMeans) {
  struct Case {
    QString text;
    std::optional<QColor> color;
  };
  for (const Case& each : std::initializer_list<Case>{
           {u"#fff"_s, QColor(255, 255, 255)},
           {u" #2E8C94 "_s, QColor(0x2e, 0x8c, 0x94)},
           {u"#f008"_s, QColor(255, 0, 0, 0x88)},
           {u"#11223344"_s, QColor(0x11, 0x22, 0x33, 0x44)},
           {u"#12345"_s, std::nullopt},
           {u"#xyz"_s, std::nullopt},
           {u"rgb(255, 0,51)"_s, QColor(255, 0, 51)},
           {u"rgb(100% 0% 20%)"_s, QColor(255, 0, 51)},
           {u"rgb(999)"_s, std::nullopt},
           {u"rgb(999, 0, 0)"_s, QColor(255, 0, 0)},
           {u"rgb(1, 2, 3, 4, 5)"_s, std::nullopt},
           {u"rgba(0, 0, 255, 0.2)"_s, QColor(0, 0, 255, 51)},
           {u"hsl(120, 100%, 50%)"_s, QColor(0, 255, 0)},
           {u"hsl(480, 100%, 50%)"_s, QColor(0, 255, 0)},
           {u"hsla(240, 100%, 50%, 20%)"_s, QColor(0, 0, 255, 51)},
           {u"rgb(..., 1, 2)"_s, std::nullopt},
           {u"plain"_s, std::nullopt},
       }) {
    const auto color = ClipboardColor::of(each.text);
    ASSERT_EQ(color.has_value(), each.color.has_value()) << each.text.toStdString();
    EXPECT_EQ(color.value_or(QColor()).rgba(), each.color.value_or(QColor()).rgba()) << each.text.toStdString();
  }
}

QList<ClipboardEntry> oneOfEach() {
  QList<ClipboardEntry> entries;
  for (const auto& row : RawValues<Kind>::table) {
    entries.append({.id = {}, .kind = row.value, .value = row.text, .imageFile = {}, .added = {}, .favourite = false});
  }
  return entries;
}

QStringList textsOf(const QList<ClipboardEntry>& entries) {
  QStringList values;
  for (const auto& entry : entries) values.append(entry.value);
  return values;
}

TEST(ClipboardGroup, HoldsWhatItsNameSays) {
  QList<ClipboardEntry> entries = oneOfEach();
  entries[1].favourite = true;
  const struct {
    ClipboardGroup group;
    QString label, symbol;
    QStringList held;
  } cases[] = {
      {ClipboardGroup::Recent, u"Recent"_s, u"clock"_s, {u"text"_s, u"link"_s, u"color"_s, u"file"_s, u"image"_s}},
      {ClipboardGroup::Favourites, u"Favourites"_s, u"star"_s, {u"link"_s}},
      {ClipboardGroup::Images, u"Images"_s, u"photo"_s, {u"image"_s}},
      {ClipboardGroup::Colors, u"Colours"_s, u"paintpalette"_s, {u"color"_s}},
      {ClipboardGroup::Links, u"Links"_s, u"link"_s, {u"link"_s}},
      {ClipboardGroup::Text, u"Text"_s, u"text.alignleft"_s, {u"text"_s}},
      {ClipboardGroup::Files, u"Files"_s, u"doc"_s, {u"file"_s}},
  };
  QList<ClipboardGroup> all;
  for (const auto& each : cases) {
    all.append(each.group);
    EXPECT_EQ(ClipboardGroups::label(each.group), each.label);
    EXPECT_EQ(ClipboardGroups::symbol(each.group), each.symbol);
    EXPECT_EQ(textsOf(ClipboardGroups::filter(each.group, entries)), each.held) << each.label.toStdString();
  }
  EXPECT_EQ(ClipboardGroups::available(entries), all);
  EXPECT_EQ(ClipboardGroups::available(entries.mid(2, 1)),
            (QList<ClipboardGroup>{ClipboardGroup::Recent, ClipboardGroup::Colors}));
  EXPECT_TRUE(ClipboardGroups::available({}).isEmpty());
}

TEST(ClipboardGroup, RecentAreTheFirstTwenty) {
  QList<ClipboardEntry> entries;
  for (int round = 0; round < 5; ++round) entries += oneOfEach();
  EXPECT_EQ(ClipboardGroups::filter(ClipboardGroup::Recent, entries), entries.first(20));
  EXPECT_EQ(ClipboardGroups::filter(ClipboardGroup::Recent, entries, 3), entries.first(3));
  EXPECT_EQ(ClipboardGroups::filter(ClipboardGroup::Text, entries, 3).size(), 5) << "the others are not cut";
}

}  // namespace
}  // namespace tarnwick
