#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>

#include "desktop/VirtualKeys.h"
#include "platform/x11/X11HeldModifiers.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

// X codes of keys by their place.
constexpr quint8 kLetter = 38, kLeftShift = 50, kLeftSuper = 133, kCaps = 66;

TEST(X11HeldModifiers, TellWhichAreHeldWhateverElseIsTypedAndOnlyWhileWatched) {
  VirtualDisplay& display = VirtualDisplay::current();
  X11Events events;
  X11HeldModifiers modifiers(events);
  ASSERT_TRUE(modifiers.capability());
  QSignalSpy changed(&modifiers, &HeldModifiers::changed);
  const auto told = [&] {
    display.settle();
    QList<quint32> masks;
    for (const QVariantList& arguments : changed) masks << arguments[0].toUInt();
    changed.clear();
    return masks;
  };
  display.tap(kLeftSuper);
  EXPECT_EQ(told(), QList<quint32>()) << "nobody wants to know";

  modifiers.watch(true);
  display.tap(kLetter);
  display.tap(kCaps);
  display.tap(kCaps);
  EXPECT_EQ(told(), QList<quint32>()) << "neither letters nor locks";
  display.key(kLeftSuper, true);
  EXPECT_EQ(told(), QList<quint32>{VirtualKeys::kCommand});
  display.key(kLeftShift, true);
  EXPECT_EQ(told(), QList<quint32>{VirtualKeys::kCommand | VirtualKeys::kShift});
  display.key(kLeftShift, false);
  display.key(kLeftSuper, false);
  EXPECT_EQ(told(), (QList<quint32>{VirtualKeys::kCommand, 0}));

  modifiers.watch(false);
  display.tap(kLeftSuper);
  EXPECT_EQ(told(), QList<quint32>());
}

#ifdef TARNWICK_HAS_XCB_SYNC
TEST(X11HeldModifiers, TellThatAnotherKeyIsPressedWithSuperAndOnlyThen) {
  VirtualDisplay& display = VirtualDisplay::current();
  X11Events events;
  X11HeldModifiers modifiers(events);
  QSignalSpy used(&modifiers, &HeldModifiers::usedWithSuper);
  modifiers.watch(true);
  display.tap(kLetter);
  display.settle();
  EXPECT_EQ(used.size(), 0) << "what is typed is nobody's business";
  display.key(kLeftSuper, true);
  // The server counts in milliseconds how long the keyboard has been idle, and keys that follow at once are one use.
  QElapsedTimer idle;
  idle.start();
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] {
    if (idle.hasExpired(100)) {
      display.tap(kLetter);
      idle.restart();
    }
    display.settle();
    return used.size() > 0;
  }));
  display.key(kLeftSuper, false);
  display.settle();
  const qsizetype before = used.size();
  display.tap(kLetter);
  display.settle();
  EXPECT_EQ(used.size(), before) << "Super is let go";
  modifiers.watch(false);
}
#endif

}  // namespace
}  // namespace tarnwick::testing
