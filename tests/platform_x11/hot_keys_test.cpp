#include <gtest/gtest.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QSignalSpy>

#include "desktop/VirtualKeys.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11HotKeys.h"
#include "support/VirtualDisplay.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

// X codes of keys by their place.
constexpr quint8 kKeyQ = 24, kKeyA = 38, kKeyD = 40, kShift = 50, kControl = 37, kAlt = 64, kSuper = 133, kNumLock = 77,
                 kCapsLock = 66, kMenu = 135;
constexpr quint32 kVirtualKeyA = 0, kVirtualKeyD = 2;
constexpr quint32 kControlAlt = VirtualKeys::kControl | VirtualKeys::kOption;

class X11HotKeysTest : public ::testing::Test {
 protected:
  ~X11HotKeysTest() override { setLayout({u"us"_s}); }

  void setLayout(const QStringList& layout) {
    EXPECT_TRUE(display.execute(QStringList{u"setxkbmap"_s, u"-option"_s, QString(), u"-layout"_s} + layout));
    display.settle();
  }
  /// The identifiers that the key brings.
  QList<quint32> tap(quint8 key, const QList<quint8>& held) {
    display.settle();
    QSignalSpy pressed(&keys, &HotKeys::pressed);
    display.tap(key, held);
    display.settle();
    QList<quint32> identifiers;
    for (const QVariantList& arguments : pressed) identifiers.append(arguments[0].toUInt());
    return identifiers;
  }
  void grabAsAnother(quint8 key, bool taken) {
    const quint16 modifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    if (taken) {
      xcb_grab_key(display.connection(), 0, display.root(), modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    } else {
      xcb_ungrab_key(display.connection(), key, display.root(), modifiers);
    }
    display.settle();
  }

  VirtualDisplay& display = VirtualDisplay::current();
  X11Events events;
  X11HotKeys keys{events};
};

using Ids = QList<quint32>;

TEST_F(X11HotKeysTest, FireWhateverLocksAreOn) {
  EXPECT_EQ(keys.bind(1, {kVirtualKeyD, kControlAlt}), (HotKeyBinding{true, u"Ctrl+Alt+D"_s, {}}));
  EXPECT_TRUE(keys.bind(2, {kVirtualKeyD, VirtualKeys::kCommand | VirtualKeys::kShift}).bound);
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{1});
  EXPECT_EQ(tap(kKeyD, {kSuper, kShift}), Ids{2});
  EXPECT_EQ(tap(kKeyD, {}), Ids{});
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt, kShift}), Ids{});
  for (const quint8 lock : {kNumLock, kCapsLock}) {
    display.tap(lock);
    EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{1}) << int{lock};
  }
  display.tap(kCapsLock);
  display.tap(kNumLock);

  EXPECT_TRUE(keys.bind(1, {kVirtualKeyA, kControlAlt}).bound);
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{}) << "bound anew";
  EXPECT_EQ(tap(kKeyA, {kControl, kAlt}), Ids{1});
  keys.unbindAll();
  EXPECT_EQ(tap(kKeyA, {kControl, kAlt}), Ids{});
}

TEST_F(X11HotKeysTest, FireOnceWhileAKeyIsHeld) {
  struct Counter final : QAbstractNativeEventFilter {
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
      presses += (static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7f) == XCB_KEY_PRESS;
      return false;
    }
    int presses = 0;
  } counter;
  ASSERT_TRUE(display.execute({u"xset"_s, u"r"_s, u"rate"_s, u"100"_s, u"50"_s}));
  ASSERT_TRUE(keys.bind(1, {kVirtualKeyD, kControlAlt}).bound);
  const QSignalSpy pressed(&keys, &HotKeys::pressed);
  QCoreApplication::instance()->installNativeEventFilter(&counter);
  for (const quint8 key : {kControl, kAlt, kKeyD}) display.key(key, true);
  EXPECT_TRUE(VirtualDisplay::waitUntil([&] { return counter.presses > 3; }));
  for (const quint8 key : {kKeyD, kAlt, kControl}) display.key(key, false);
  QCoreApplication::instance()->removeNativeEventFilter(&counter);
  EXPECT_EQ(pressed.size(), 1);
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{1});
}

TEST_F(X11HotKeysTest, LeaveATakenKeyToItsOwner) {
  grabAsAnother(kKeyD, true);
  EXPECT_EQ(keys.bind(1, {kVirtualKeyD, kControlAlt}),
            (HotKeyBinding{false, {}, u"Ctrl+Alt+D is already used by another app."_s}));
  EXPECT_TRUE(keys.bind(2, {kVirtualKeyA, kControlAlt}).bound);
  EXPECT_EQ(keys.bind(3, {kVirtualKeyA, kControlAlt}).reason,
            u"Ctrl+Alt+A is already used by another Tarnwick shortcut."_s);
  EXPECT_EQ(keys.bind(4, {200, kControlAlt}).reason, u"The keyboard cannot produce Ctrl+Alt+Key 200."_s);
  EXPECT_EQ(tap(kKeyA, {kControl, kAlt}), Ids{2});
  grabAsAnother(kKeyD, false);
  EXPECT_TRUE(keys.bind(1, {kVirtualKeyD, kControlAlt}).bound);
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{1});
}

TEST_F(X11HotKeysTest, FollowTheLayout) {
  ASSERT_TRUE(keys.bind(1, {kVirtualKeyA, kControlAlt}).bound);
  const struct {
    QStringList layout;
    bool switches;
    quint8 fires;
    quint8 rests;
  } rows[] = {
      {{u"fr"_s}, false, kKeyQ, kKeyA},
      {{u"ru"_s}, false, kKeyA, kKeyQ},
      {{u"us"_s}, false, kKeyA, kKeyQ},
      {{u"us,fr"_s, u"-option"_s, u"grp:menu_toggle"_s}, false, kKeyA, kKeyQ},
      {{u"us,fr"_s, u"-option"_s, u"grp:menu_toggle"_s}, true, kKeyQ, kKeyA},
      {{u"us,ru"_s, u"-option"_s, u"grp:menu_toggle"_s}, true, kKeyA, kKeyQ},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.layout.join(u' ').toStdString() + (row.switches ? ", second" : ""));
    setLayout(row.layout);
    if (row.switches) display.tap(kMenu);
    EXPECT_EQ(tap(row.fires, {kControl, kAlt}), Ids{1});
    EXPECT_EQ(tap(row.rests, {kControl, kAlt}), Ids{});
    if (row.switches) display.tap(kMenu);
  }
}

TEST_F(X11HotKeysTest, TellWhatANewLayoutCosts) {
  ASSERT_TRUE(keys.bind(1, {kVirtualKeyA, kControlAlt}).bound);
  ASSERT_TRUE(keys.bind(2, {kVirtualKeyD, kControlAlt}).bound);
  grabAsAnother(kKeyQ, true);
  const QSignalSpy lost(&keys, &HotKeys::lost);
  setLayout({u"fr"_s});
  EXPECT_EQ(lost, (QList<QVariantList>{{QVariant(1U)}}));
  EXPECT_EQ(tap(kKeyD, {kControl, kAlt}), Ids{2});
  grabAsAnother(kKeyQ, false);
  setLayout({u"us"_s});
  EXPECT_EQ(tap(kKeyA, {kControl, kAlt}), Ids{1}) << "taken back";
}

}  // namespace
}  // namespace tarnwick::testing
