#include <gtest/gtest.h>

#include "platform/dbus/LoginSessionEvents.h"
#include "platform_dbus/FakeLocks.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kPath = "/org/freedesktop/login1"_L1;
constexpr auto kManager = "org.freedesktop.login1.Manager"_L1;

TEST(LoginSessionEvents, HoldsSleepBackUntilTheHandlersRan) {
  PrivateBus bus;
  FakeService login(bus.connection(), u"org.freedesktop.login1"_s);
  FakeLocks locks(login);
  LoginSessionEvents events(bus.connection());
  ASSERT_TRUE(waitFor([&] { return locks.held() == 1; }));
  EXPECT_EQ(locks.last()[0], u"sleep:shutdown"_s);
  EXPECT_EQ(locks.last()[3], u"delay"_s);

  QStringList seen;
  const auto note = [&](const QString& what) { seen << what + (locks.held() == 1 ? u", held"_s : u", free"_s); };
  QObject::connect(&events, &SessionEvents::willSleep, &events, [&] {
    note(u"sleep"_s);
    QMetaObject::invokeMethod(
        &events, [&] { note(u"queued by a handler"_s); }, Qt::QueuedConnection);
  });
  QObject::connect(&events, &SessionEvents::didWake, &events, [&] { note(u"wake"_s); });
  QObject::connect(&events, &SessionEvents::ending, &events, [&] { note(u"ending"_s); });

  login.emitSignal(kPath, kManager, u"PrepareForSleep"_s, {true});
  ASSERT_TRUE(waitFor([&] { return locks.held() == 0; }));
  login.emitSignal(kPath, kManager, u"PrepareForSleep"_s, {false});
  ASSERT_TRUE(waitFor([&] { return locks.held() == 1; })) << "taken again for the next time";
  login.emitSignal(kPath, kManager, u"PrepareForShutdown"_s, {true});
  ASSERT_TRUE(waitFor([&] { return locks.held() == 0; }));
  EXPECT_EQ(seen, (QStringList{u"sleep, held"_s, u"queued by a handler, held"_s, u"wake, free"_s, u"ending, held"_s}));
}

TEST(LoginSessionEvents, TakesTheLockFromALoginManagerThatComesLaterAndIgnoresImpostors) {
  PrivateBus bus;
  LoginSessionEvents events(bus.connection());
  LoginSessionEvents withoutBus(QDBusConnection(u"there is no such connection"_s));
  int slept = 0;
  QObject::connect(&events, &SessionEvents::willSleep, &events, [&] { ++slept; });
  FakeService impostor(bus.connection(), u"org.example.Impostor"_s);
  {
    FakeService first(bus.connection(), u"org.freedesktop.login1"_s);
    FakeLocks locks(first);
    ASSERT_TRUE(waitFor([&] { return locks.held() == 1; }));
  }
  FakeService second(bus.connection(), u"org.freedesktop.login1"_s);
  FakeLocks locks(second);
  ASSERT_TRUE(waitFor([&] { return locks.held() == 1; }));
  impostor.emitSignal(kPath, kManager, u"PrepareForSleep"_s, {true});
  second.emitSignal(kPath, kManager, u"PrepareForSleep"_s, {true});
  ASSERT_TRUE(waitFor([&] { return locks.held() == 0; }));
  EXPECT_EQ(slept, 1);
}

}  // namespace
}  // namespace tarnwick
