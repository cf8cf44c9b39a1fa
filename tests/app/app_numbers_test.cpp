#include <gtest/gtest.h>

#include <QList>

#include "app/AppNumbers.h"
#include "desktop/VirtualKeys.h"
#include "support/TestScheduler.h"

namespace tarnwick {
namespace {

struct ToldModifiers final : HeldModifiers {
  bool isWatched = false;
  Capability capability() const override { return Capability::yes(); }
  void watch(bool watched) override { isWatched = watched; }
};

constexpr quint32 kSuperKey = VirtualKeys::kCommand;
constexpr double kKey = -1;       // A key of an app is pressed.
constexpr double kOtherKey = -2;  // A key that another program has.

TEST(AppNumbers, AreShownAMomentAfterSuperAloneAndGoWithAnythingElse) {
  struct Step {
    quint32 modifiers;
    double seconds;  ///< That pass after it.
  };
  struct Case {
    const char* name;
    QList<Step> steps;
    bool shown;
  };
  const Case cases[] = {
      {"at once", {{kSuperKey, 0.2}}, false},
      {"after a moment", {{kSuperKey, 0.31}}, true},
      {"let go before", {{kSuperKey, 0.2}, {0, 1}}, false},
      {"let go", {{kSuperKey, 1}, {0, 0}}, false},
      {"again", {{kSuperKey, 1}, {0, 1}, {kSuperKey, 1}}, true},
      {"another modifier", {{kSuperKey, 1}, {kSuperKey | VirtualKeys::kShift, 0}}, false},
      {"which is let go again", {{kSuperKey, 1}, {kSuperKey | VirtualKeys::kShift, 0}, {kSuperKey, 1}}, false},
      {"Super after another",
       {{VirtualKeys::kControl, 0}, {VirtualKeys::kControl | kSuperKey, 0}, {kSuperKey, 1}},
       false},
      {"another alone", {{VirtualKeys::kOption, 1}}, false},
      {"a key before", {{kSuperKey, 0.2}, {0, kKey}}, false},
      {"a key", {{kSuperKey, 1}, {0, kKey}}, false},
      {"another program's key before", {{kSuperKey, 0.2}, {0, kOtherKey}}, false},
      {"another program's key", {{kSuperKey, 1}, {0, kOtherKey}}, false},
      {"after a key", {{kSuperKey, 1}, {0, kKey}, {0, 0}, {kSuperKey, 1}}, true},
  };
  for (const Case& each : cases) {
    test::TestScheduler scheduler;
    ToldModifiers modifiers;
    AppNumbers numbers(scheduler, modifiers);
    EXPECT_FALSE(modifiers.isWatched);
    numbers.setOn(true);
    EXPECT_TRUE(modifiers.isWatched);
    for (const Step& step : each.steps) {
      if (step.seconds < 0) {
        if (step.seconds == kKey)
          numbers.hide();
        else
          Q_EMIT modifiers.usedWithSuper();
        scheduler.advance(1);
        continue;
      }
      Q_EMIT modifiers.changed(step.modifiers);
      scheduler.advance(step.seconds);
    }
    EXPECT_EQ(numbers.areShown(), each.shown) << each.name;
    numbers.setOn(false);
    EXPECT_FALSE(numbers.areShown() || modifiers.isWatched) << each.name;
    Q_EMIT modifiers.changed(kSuperKey);
    scheduler.advance(1);
    EXPECT_FALSE(numbers.areShown()) << "no app has a key";
  }
}

}  // namespace
}  // namespace tarnwick
