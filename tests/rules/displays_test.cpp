#include <gtest/gtest.h>

#include "dock/rules/DesktopMath.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

Screen screen(const QString& id, const QString& legacy = {}) {
  Screen screen;
  screen.id = id;
  screen.legacyId = legacy;
  return screen;
}

TEST(DisplayMigration, RewritesOlderIdentitiesEverywhere) {
  DockConfiguration old;
  old.display = u"69"_s;
  old.floatingPositions = {{u"69"_s, {1, 2}}, {u"70"_s, {3, 4}}, {u"71"_s, {5, 6}}};
  old.desktop.attachedDisplays = {u"70"_s, u"71"_s, u"A"_s, u"69"_s};
  old.desktop.displayNames = {{u"69"_s, u"Desk"_s}, {u"A"_s, u"Wall"_s}};
  old.desktop.displayProfiles = {{u"70"_s, u"P"_s}};

  const auto current = DesktopMath::migrated(old, {screen(u"A"_s, u"69"_s), screen(u"B"_s, u"70"_s)});
  ASSERT_TRUE(current);
  EXPECT_EQ(current->display, u"A"_s);
  // A display that is not connected keeps its old identity until it comes.
  EXPECT_EQ(current->floatingPositions,
            (QMap<QString, QList<double>>{{u"A"_s, {1, 2}}, {u"B"_s, {3, 4}}, {u"71"_s, {5, 6}}}));
  EXPECT_EQ(current->desktop.attachedDisplays, QStringList({u"B"_s, u"71"_s, u"A"_s}));
  EXPECT_EQ(current->desktop.displayNames, (QMap<QString, QString>{{u"A"_s, u"Wall"_s}})) << "the newer entry stays";
  EXPECT_EQ(current->desktop.displayProfiles, (QMap<QString, QString>{{u"B"_s, u"P"_s}}));
}

TEST(DisplayMigration, LeavesEverythingElseAlone) {
  DockConfiguration config;
  config.floatingPositions = {{u"A"_s, {1, 2}}};
  for (const QList<Screen>& screens :
       {QList<Screen>(), {screen(u"A"_s)}, {screen(u"A"_s, u"A"_s)}, {screen(u"A"_s, u"69"_s)}}) {
    EXPECT_FALSE(DesktopMath::migrated(config, screens));
  }
  // Settings of the first format have no section for displays yet.
  config.display = u"69"_s;
  const auto current = DesktopMath::migrated(config, {screen(u"A"_s, u"69"_s)});
  ASSERT_TRUE(current);
  config.display = u"A"_s;
  EXPECT_EQ(*current, config);
}

TEST(RememberedDisplays, KeepTheOrderOfTheirFirstConnection) {
  const QStringList none = DesktopMath::remembered({}, {screen(u"B"_s), screen(u"A"_s)});
  EXPECT_EQ(none, QStringList({u"B"_s, u"A"_s}));
  EXPECT_EQ(DesktopMath::remembered(none, {screen(u"A"_s), screen(u"C"_s)}), QStringList({u"B"_s, u"A"_s, u"C"_s}));
  EXPECT_EQ(DesktopMath::remembered(none, {}), none);
}

}  // namespace
}  // namespace tarnwick
