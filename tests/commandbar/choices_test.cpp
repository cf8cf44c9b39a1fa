#include <gtest/gtest.h>

#include "commandbar/StoredChoices.h"

namespace tarnwick {
namespace {

TEST(StoredChoices, EachSettingChangesItsOwnChoiceAlone) {
  EXPECT_EQ(storedChoices({}), CommandBarChoices());
  const struct {
    bool DeskOptions::*stored;
    bool CommandBarChoices::*choice;
  } cases[] = {
      {&DeskOptions::barApps, &CommandBarChoices::findsApps},
      {&DeskOptions::barWindows, &CommandBarChoices::findsWindows},
      {&DeskOptions::barWidgets, &CommandBarChoices::findsWidgets},
      {&DeskOptions::barSymbols, &CommandBarChoices::findsSymbols},
      {&DeskOptions::barClipboard, &CommandBarChoices::findsClipboard},
      {&DeskOptions::barFiles, &CommandBarChoices::findsFiles},
      {&DeskOptions::barWeb, &CommandBarChoices::searchesWeb},
  };
  for (const auto& each : cases) {
    DeskOptions desk;
    desk.*each.stored = false;
    CommandBarChoices expected;
    expected.*each.choice = false;
    EXPECT_EQ(storedChoices(desk), expected) << &each - cases;
  }
  DeskOptions desk;
  desk.webSearch = QStringLiteral("ecosia");
  EXPECT_EQ(storedChoices(desk).webSearch, desk.webSearch);
}

}  // namespace
}  // namespace tarnwick
