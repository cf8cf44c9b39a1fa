#include <gtest/gtest.h>

#include <cmath>

#include "dock/rules/DropRouting.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Kind = DropRouting::Target::Kind;

bool isFolder(const QString& path) { return path == "/there"_L1; }

TEST(DropRouting, FindsTheTileUnderAPoint) {
  const QList<DropRouting::Tile> tiles{{u"cpu"_s, u"metric"_s, {}, 50}, {u"folderLauncher"_s, u"files"_s, {}, 50}};
  const std::pair<double, qsizetype> cases[] = {{9.9, -1}, {10, 0},    {59.9, 0}, {60, -1}, {66.9, -1},
                                                {67, 1},   {116.9, 1}, {117, -1}, {-5, -1}, {std::nan(""), -1}};
  for (const auto& [x, expected] : cases) EXPECT_EQ(DropRouting::indexAt(x, tiles, 7, 10), expected) << x;
  EXPECT_EQ(DropRouting::route(10, {}, 7, 10, isFolder), DropRouting::Target());
}

TEST(DropRouting, OnlyAFolderThatIsThereAndDevicesNearbyTakeFiles) {
  struct Case {
    DropRouting::Tile tile;
    DropRouting::Target expected;
  };
  const Case cases[] = {
      {{u"folderLauncher"_s, u"files"_s, u"/there"_s, 100}, {Kind::Folder, 0, u"/there"_s}},
      {{u"downloads"_s, u"files"_s, u"/there"_s, 100}, {Kind::Folder, 0, u"/there"_s}},
      {{u"folderLauncher"_s, u"files"_s, u"/gone"_s, 100}, {}},
      {{u"trash"_s, u"files"_s, {}, 70}, {}},
      {{u"appLauncher"_s, u"launcher"_s, u"/there"_s, 70}, {}},
      {{u"airdrop"_s, u"airdrop"_s, {}, 76}, {Kind::AirDrop, -1, {}}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DropRouting::route(20, {c.tile}, 7, 10, isFolder), c.expected) << qPrintable(c.tile.kind);
  }
  const QList<DropRouting::Tile> two{cases[5].tile, cases[0].tile};
  EXPECT_EQ(DropRouting::route(100, two, 7, 10, isFolder).at, 1);
}

}  // namespace
}  // namespace tarnwick
