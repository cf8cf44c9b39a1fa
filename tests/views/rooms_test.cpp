#include <gtest/gtest.h>

#include <QSet>
#include <QTemporaryDir>
#include <algorithm>

#include "DockFixture.h"
#include "views/families/Rooms.h"
#include "views/tiles/GenericTile.h"
#include "widgets/DropRules.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

qsizetype roomsThatName(const QString& word, std::span<const RoomRow> Room::*list) {
  qsizetype count = 0;
  for (const Room* room : Rooms::all()) count += std::ranges::count(room->*list, word, &RoomRow::of);
  return count;
}

TEST(Rooms, EachKindBelongsToExactlyOne) {
  for (const WidgetDefinition& definition : Catalog::items()) {
    const qsizetype byKind = roomsThatName(definition.id, &Room::kinds);
    EXPECT_LE(byKind, 1) << qPrintable(definition.id);
    EXPECT_EQ(roomsThatName(definition.family, &Room::families), 1) << qPrintable(definition.family);
    EXPECT_TRUE(Rooms::of(definition)) << qPrintable(definition.id);
  }
}

TEST(Rooms, NameOnlyWhatTheCatalogHas) {
  const QList<WidgetDefinition>& items = Catalog::items();
  for (const Room* room : Rooms::all()) {
    for (const RoomRow& row : room->kinds)
      EXPECT_TRUE(std::ranges::any_of(items, [&](const auto& item) { return item.id == row.of; }))
          << room->name.data() << ": " << row.of.data();
    for (const RoomRow& row : room->families)
      EXPECT_TRUE(std::ranges::any_of(items, [&](const auto& item) { return item.family == row.of; }))
          << room->name.data() << ": " << row.of.data();
  }
}

TEST(Rooms, AKindsRowGoesBeforeItsFamilys) {
  const auto accent = [](const QString& kind) { return tileAccent(Catalog::find(kind)); };
  EXPECT_EQ(accent(u"digitalClock"_s), Accent::Orange);
  EXPECT_EQ(accent(u"dayNumber"_s), Accent::Red);
  EXPECT_EQ(Rooms::options(u"exercise"_s).size(), 1u) << "a duration, as all timers";
  EXPECT_TRUE(Rooms::options(u"stopwatch"_s).empty()) << "a stopwatch has none";
  EXPECT_FALSE(Rooms::hasForm(u"dockSpace"_s));
}

// A row holds its words as one text, so the compiler does not see a misspelt one.
TEST(Rooms, AConnectionIsOneOfTheWordsThatOptionsNames) {
  const QStringList named{QString(), value::native, value::codexLocal, value::geminiHistory,
                          value::claudeActivity, value::perplexitySession};
  QSet<QString> offered;
  for (const WidgetDefinition& definition : Catalog::items())
    for (const WidgetOption& each : Rooms::options(definition.id)) {
      if (QLatin1StringView(each.key) != option::connectionMode) continue;
      for (const QString& word : QString::fromLatin1(each.value).split(u',')) {
        EXPECT_TRUE(named.contains(word)) << qPrintable(definition.id) << ": " << qPrintable(word);
        offered.insert(word);
      }
    }
  EXPECT_EQ(offered.size(), named.size()) << "a word that no kind offers";
}

TEST(Rooms, WhatNothingFillsSaysThatItComesLaterAndInvitesToNothing) {
  TileSources sources = morning();
  sources.weather = {};
  for (const WidgetDefinition& definition : Catalog::items()) {
    SCOPED_TRACE(definition.id.toStdString());
    const TileContent content = makeTileContent(widget(definition.id), definition, sources);
    const QString said = content.describe(definition.name).value;
    if (Rooms::comesLater(definition.id)) {
      EXPECT_EQ(said, u"Comes with a later version"_s);
      const auto* generic = content.as<GenericContent>();
      EXPECT_FALSE(generic && generic->opensEditor);
    } else {
      EXPECT_NE(said, u"Comes with a later version"_s);
      EXPECT_NE(said, u"Not available"_s) << "no computer lacks it: no room tells what its tile shows";
    }
  }
  EXPECT_FALSE(Rooms::comesLater(u"dropbox"_s));
  EXPECT_FALSE(Rooms::comesLater(u"analyticsGitHub"_s));
  EXPECT_FALSE(Rooms::comesLater(u"cpu"_s));
}

TEST(Rooms, AFolderThatTakesWhatIsDroppedCanBeChosen) {
  const QTemporaryDir folder;
  for (const WidgetDefinition& definition : Catalog::items()) {
    DockWidget tile = widget(definition.id);
    tile.options.insert(u"path"_s, folder.path());
    if (DropRules::takerOf(tile) != DropRules::Taker::Folder) continue;
    const auto options = Rooms::options(definition.id);
    EXPECT_TRUE(std::ranges::any_of(options, [](const WidgetOption& each) {
      return each.key == "path"_L1 && each.shape == FieldShape::Folder;
    })) << qPrintable(definition.id);
  }
}

}  // namespace
}  // namespace tarnwick::testing
