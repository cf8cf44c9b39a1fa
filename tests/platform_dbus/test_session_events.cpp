#include <gtest/gtest.h>
#include <unistd.h>

#include <QDBusObjectPath>

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

struct SessionEnd {
  const char* what;
  /// What the login manager answers when asked for our session; null where it says that we are in none.
  const char* ours;
  const char* environment;
  const char* signal;
  QVariant first;
  const char* path;
  bool ends;
};

TEST(LoginSessionEvents, EndsWithItsOwnSessionOrUserAndWithNoOther) {
  const uint user = ::getuid();
  const SessionEnd cases[] = {
      {"ours goes", "/s/3", "3", "SessionRemoved", u"3"_s, "/s/3", true},
      {"another goes", "/s/3", "3", "SessionRemoved", u"4"_s, "/s/4", false},
      {"the environment is of another", "/s/3", "4", "SessionRemoved", u"4"_s, "/s/4", false},
      {"only the environment tells", nullptr, "3", "SessionRemoved", u"3"_s, "/s/3", true},
      {"only the environment, and another goes", nullptr, "3", "SessionRemoved", u"4"_s, "/s/4", false},
      {"nothing tells", nullptr, "", "SessionRemoved", QString(), "/s/4", false},
      {"the user goes", nullptr, "", "UserRemoved", user, "/u/us", true},
      {"another user goes", "/s/3", "3", "UserRemoved", user + 1, "/u/other", false},
  };
  for (const SessionEnd& each : cases) {
    SCOPED_TRACE(each.what);
    PrivateBus bus;
    FakeService login(bus.connection(), u"org.freedesktop.login1"_s);
    FakeLocks locks(login);
    bool answered = !each.ours;
    if (each.ours) {
      login.answer(u"GetSessionByPID"_s, [&](const QDBusMessage&) {
        answered = true;
        return QVariantList{QVariant::fromValue(QDBusObjectPath(QString::fromLatin1(each.ours)))};
      });
    }
    qputenv("XDG_SESSION_ID", each.environment);
    LoginSessionEvents events(bus.connection());
    qunsetenv("XDG_SESSION_ID");
    int ends = 0;
    int sleeps = 0;
    QObject::connect(&events, &SessionEvents::ending, &events, [&] { ++ends; });
    QObject::connect(&events, &SessionEvents::willSleep, &events, [&] { ++sleeps; });
    ASSERT_TRUE(waitFor([&] { return answered && locks.held() == 1; }));

    login.emitSignal(kPath, kManager, QString::fromLatin1(each.signal),
                     {each.first, QVariant::fromValue(QDBusObjectPath(QString::fromLatin1(each.path)))});
    // What comes behind it on the same bus shows that it was received.
    login.emitSignal(kPath, kManager, u"PrepareForSleep"_s, {true});
    ASSERT_TRUE(waitFor([&] { return sleeps == 1; }));
    EXPECT_EQ(ends, each.ends ? 1 : 0);
  }
}

TEST(LoginSessionEvents, TellsWhenItsSessionIsLocked) {
  const QString own = u"/org/freedesktop/login1/session/_32"_s;
  const QString other = u"/org/freedesktop/login1/session/_33"_s;
  const QString session = u"org.freedesktop.login1.Session"_s;
  PrivateBus bus;
  LoginSessionEvents events(bus.connection());
  QList<bool> told;
  QObject::connect(&events, &SessionEvents::lockedChanged, &events, [&](bool locked) { told << locked; });
  const auto answerTo = [&](FakeService& login, bool locked) {
    login.setProperty(own, session, u"LockedHint"_s, locked);
    login.setProperty(other, session, u"LockedHint"_s, false);
    login.answer(u"GetSession"_s, [own](const QDBusMessage& question) -> QVariantList {
      if (question.arguments() != QVariantList{u"auto"_s}) return {};
      return {QVariant::fromValue(QDBusObjectPath(own))};
    });
  };
  {
    FakeService login(bus.connection(), u"org.freedesktop.login1"_s);
    answerTo(login, true);
    ASSERT_TRUE(waitFor([&] { return told.size() == 1; })) << "it was locked before the login manager was found";
    LoginSessionEvents late(bus.connection());
    bool isLocked = false;
    bool isKnownAsLocked = false;
    QObject::connect(&late, &SessionEvents::lockedChanged, &late, [&](bool locked) { isLocked = locked; });
    QObject::connect(&late, &SessionEvents::lockKnown, &late, [&] { isKnownAsLocked = isLocked; });
    EXPECT_FALSE(late.isLockKnown());
    ASSERT_TRUE(waitFor([&] { return late.isLockKnown(); }));
    EXPECT_TRUE(isKnownAsLocked);
    login.setProperty(other, session, u"LockedHint"_s, true);
    login.setProperty(own, session, u"LockedHint"_s, false);
    ASSERT_TRUE(waitFor([&] { return told.size() == 2; }));
    login.setProperty(own, session, u"LockedHint"_s, true);
    ASSERT_TRUE(waitFor([&] { return told.size() == 3; }));
  }
  FakeService second(bus.connection(), u"org.freedesktop.login1"_s);
  answerTo(second, false);
  ASSERT_TRUE(waitFor([&] { return told.size() == 4; })) << "another login manager knows better";
  EXPECT_EQ(told, (QList<bool>{true, false, true, false}));
}

TEST(LoginSessionEvents, WithoutASessionNothingIsLocked) {
  PrivateBus bus;
  LoginSessionEvents events(bus.connection());
  bool isTold = false;
  QObject::connect(&events, &SessionEvents::lockedChanged, &events, [&] { isTold = true; });
  FakeService login(bus.connection(), u"org.freedesktop.login1"_s);
  FakeLocks locks(login);
  int asked = 0;
  login.answer(u"GetSession"_s, [&](const QDBusMessage&) -> QVariantList {
    ++asked;
    return {};
  });
  ASSERT_TRUE(waitFor([&] { return asked == 1 && locks.held() == 1 && events.isLockKnown(); }));
  EXPECT_FALSE(isTold);
  LoginSessionEvents alone(QDBusConnection(u"there is no such connection"_s));
  EXPECT_TRUE(waitFor([&] { return alone.isLockKnown(); })) << "where nobody manages sessions";
}

}  // namespace
}  // namespace tarnwick
