#include <gtest/gtest.h>

#include "commandbar/CommandBarKeys.h"

namespace tarnwick {
namespace {

TEST(CommandBarKeysTest, EachKeyCountsWithItsModifiersAlone) {
  using enum CommandBarKeys::Action;
  constexpr Qt::KeyboardModifiers kNone = Qt::NoModifier;
  constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
  constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;
  constexpr Qt::KeyboardModifiers kPad = Qt::KeypadModifier;
  const struct {
    int key;
    Qt::KeyboardModifiers modifiers;
    CommandBarKeys::Action action;
  } cases[] = {
      {Qt::Key_C, kControl, CopyPath},
      {Qt::Key_C, kNone, None},
      {Qt::Key_C, kControl | kShift, None},
      {Qt::Key_C, Qt::MetaModifier, None},
      {Qt::Key_R, kControl, Reveal},
      {Qt::Key_R, kNone, None},
      {Qt::Key_R, kControl | Qt::AltModifier, None},
      {Qt::Key_Tab, kNone, Next},
      {Qt::Key_Tab, kShift, Previous},
      {Qt::Key_Tab, kControl, None},
      {Qt::Key_Tab, kControl | kShift, None},
      {Qt::Key_Backtab, kShift, Previous},
      {Qt::Key_Backtab, kNone, Previous},
      {Qt::Key_Backtab, kControl | kShift, None},
      {Qt::Key_Backtab, Qt::AltModifier, None},
      {Qt::Key_Down, kNone, Next},
      {Qt::Key_Down, kPad, Next},
      {Qt::Key_Down, kShift, None},
      {Qt::Key_Down, kControl | kPad, None},
      {Qt::Key_Up, kNone, Previous},
      {Qt::Key_Up, kPad, Previous},
      {Qt::Key_Up, Qt::AltModifier, None},
      {Qt::Key_Escape, kNone, Hide},
      {Qt::Key_Escape, kControl | kShift, Hide},
      {Qt::Key_Return, kNone, None},
      {Qt::Key_X, kControl, None},
  };
  for (const auto& each : cases)
    EXPECT_EQ(CommandBarKeys::action(each.key, each.modifiers), each.action)
        << std::hex << each.key << " with " << each.modifiers.toInt();
}

}  // namespace
}  // namespace tarnwick
