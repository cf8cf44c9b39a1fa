#include <QSignalSpy>

#include "commandbar/CommandBarRows.h"
#include "commandbar/CommandBarTest.h"
#include "commandbar/CommandExtras.h"
#include "commandbar/ScriptedPlaces.h"

namespace tarnwick {
namespace {

class CommandBarRowsTest : public CommandBarTest {
 protected:
  CommandBarRowsTest() {
    CommandBarChoices choices;
    choices.findsWidgets = choices.findsSymbols = false;
    model->setChoices(choices);
    extras.setChoices({.findsEmoji = false});
    for (const auto& title : {u"Map size"_s, u"Map colors"_s, u"Zoom"_s})
      places.places << SettingsPlace{u"page/"_s + title, title, u"Appearance"_s, u"paintpalette"_s};
  }

  std::string shown() const {
    QStringList ids;
    for (const CommandRow& row : list.rows()) ids << (row.below ? u"| "_s : QString()) + row.item.id;
    return ids.join(u", "_s).toStdString();
  }
  std::string selectedId() const { return list.selected() ? list.selected()->id.toStdString() : "-"; }
  /// The emphasised parts of a row's words.
  std::string emphasised(int row) const {
    const CommandItem& item = list.rows()[row].item;
    const QString& words = item.kind == CommandItem::Kind::Symbol ? item.subtitle : item.title;
    QStringList parts;
    for (const auto& span : list.rows()[row].matched) parts << words.sliced(span.begin, span.length);
    return parts.join(u'|').toStdString();
  }

  ScriptedPlaces places;
  CommandExtras extras{{.commands = commands, .settings = &places}};
  CommandBarRows list{*model, extras};
};

TEST_F(CommandBarRowsTest, TheSecondListStandsBelowAndTheSelectionGoesThroughBoth) {
  EXPECT_EQ(list.selected(), nullptr);
  list.moveSelection(1);
  EXPECT_EQ(list.selection(), 0);
  model->setQuery(u"map"_s);
  ASSERT_EQ(shown(), "app:/apps/maps.desktop, web:search, | setting:page/Map size, | setting:page/Map colors");
  const struct {
    int by;
    int place;
    qsizetype told;
  } steps[] = {{1, 1, 1}, {1, 2, 1}, {1, 3, 1}, {1, 0, 0}, {-1, 3, 0}, {-2, 1, 1}, {1, 2, 1}, {-1, 1, 1}, {-5, 0, 0}};
  for (const auto& step : steps) {
    QSignalSpy changes(&list, &CommandBarRows::changed);
    list.moveSelection(step.by);
    EXPECT_EQ(list.selection(), step.place);
    EXPECT_EQ(model->selection(), step.told);
    EXPECT_EQ(changes.size(), 1);
  }
}

TEST_F(CommandBarRowsTest, AQueryBeginsAtTheTopAndIsAnnouncedOnce) {
  model->setQuery(u"map"_s);
  list.moveSelection(-1);
  ASSERT_EQ(selectedId(), "setting:page/Map colors");
  QSignalSpy changes(&list, &CommandBarRows::changed);
  model->setQuery(u"map "_s);
  EXPECT_EQ(list.selection(), 0);
  EXPECT_EQ(changes.size(), 1);
  model->setQuery(u"m"_s);
  EXPECT_EQ(shown().find('|'), std::string::npos);
  model->closed();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(selectedId(), "-");
}

TEST_F(CommandBarRowsTest, WhatComesLaterKeepsTheRowThatIsSelectedBelow) {
  model->setQuery(u"map"_s);
  list.moveSelection(-1);
  time.advance(0.15);
  findFiles({u"map 1"_s, u"map 2"_s});
  EXPECT_EQ(list.selection(), 5);
  EXPECT_EQ(selectedId(), "setting:page/Map colors");
  places.places.removeFirst();
  Q_EMIT extras.changed();
  EXPECT_EQ(list.selection(), 4);
  EXPECT_EQ(selectedId(), "setting:page/Map colors");
  extras.setChoices({.findsEmoji = false, .findsSettings = false});
  EXPECT_EQ(list.selection(), 0);
  EXPECT_EQ(list.rows().size(), 4);
}

TEST_F(CommandBarRowsTest, WhatOnlyTheWebAnswersBeginsWithTheSecondList) {
  model->setQuery(u"zoom"_s);
  ASSERT_EQ(shown(), "web:search, | setting:page/Zoom");
  EXPECT_EQ(selectedId(), "setting:page/Zoom");
  EXPECT_TRUE(list.activate(list.selection()));
  EXPECT_EQ(places.shown, QStringList{u"page/Zoom"_s});
  // What comes late changes nothing of that.
  time.advance(0.15);
  findFiles({u"zoom"_s});
  EXPECT_EQ(list.rows().first().item.kind, CommandItem::Kind::File);
  EXPECT_EQ(selectedId(), "setting:page/Zoom");
  model->setQuery(u"zoom "_s);
  time.advance(0.15);
  findFiles({});
  ASSERT_EQ(selectedId(), "setting:page/Zoom");
  list.moveSelection(-1);
  EXPECT_EQ(selectedId(), "web:search");
  Q_EMIT extras.changed();
  EXPECT_EQ(selectedId(), "web:search");
  model->setQuery(u"sqrt(4)"_s);
  ASSERT_EQ(shown(), "web:search, | answer:2");
  EXPECT_TRUE(list.activate(list.selection()));
  EXPECT_EQ(commands.asked.last(), u"copy 2"_s);
}

TEST_F(CommandBarRowsTest, TellsWhetherFilesAreLookedFor) {
  model->setQuery(u"zq"_s);
  QSignalSpy changes(&list, &CommandBarRows::changed);
  time.advance(0.15);
  EXPECT_EQ(changes.size(), 1);
  findFiles({});
  EXPECT_EQ(changes.size(), 2);
}

TEST_F(CommandBarRowsTest, RowsAreDoneByTheListThatTheyStandIn) {
  model->setQuery(u"map"_s);
  EXPECT_TRUE(list.activate(0));
  EXPECT_EQ(commands.asked, QStringList{u"start /apps/maps.desktop"_s});
  EXPECT_TRUE(list.activate(2, true));
  EXPECT_EQ(places.opened, QStringList{u"page/Map size"_s});
  EXPECT_TRUE(list.reveal(0));
  EXPECT_EQ(commands.asked.last(), u"reveal /apps/maps.desktop"_s);
  for (const int row : {-1, 1, 2, 4}) EXPECT_FALSE(list.reveal(row)) << row;
  for (const int row : {-1, 4}) EXPECT_FALSE(list.activate(row)) << row;
  EXPECT_EQ(commands.asked.size(), 2);
  // Only the app counts as used.
  model.reset();
  EXPECT_EQ(CommandUsageStore::load(folder_.path()).records.size(), 1);
}

TEST_F(CommandBarRowsTest, EmphasisesWhatAnswersTheQuery) {
  model->setChoices({});
  const struct {
    QString query;
    QString id;
    std::string parts;
  } cases[] = {
      {u"mps"_s, u"app:/apps/maps.desktop"_s, "M|ps"},
      {u"map c"_s, u"setting:page/Map colors"_s, "Map c"},
      {u"rocket"_s, u"symbol:🚀"_s, "rocket"},
      {u"tears"_s, u"symbol:😂"_s, "tears"},
      {u"joke"_s, u"symbol:😉"_s, ""},
  };
  for (const auto& each : cases) {
    model->setQuery(each.query);
    const auto at = std::ranges::find_if(list.rows(), [&](const CommandRow& row) { return row.item.id == each.id; });
    ASSERT_NE(at, list.rows().end()) << each.id.toStdString();
    EXPECT_EQ(emphasised(static_cast<int>(at - list.rows().begin())), each.parts) << each.query.toStdString();
  }
}

}  // namespace
}  // namespace tarnwick
