#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QSignalSpy>

#include "platform/dbus/DBusSessionApplication.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(DBusSessionApplicationTest, TakesItsNameAgainWhenTheBusIsBack) {
  PrivateBus bus;
  bool isBack = false;
  int looks = 0;
  DBusSessionApplication program(bus.connection(), [&](const QString& name) {
    ++looks;
    return isBack ? QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name)
                  : QDBusConnection(name);
  });
  ASSERT_TRUE(program.own());
  QSignalSpy activated(&program, &SessionApplication::activated);
  // Twice: the second time the connection is one that the program made itself.
  for (int i = 1; i <= 2; ++i) {
    isBack = false;
    looks = 0;
    bus.stop();
    EXPECT_TRUE(waitFor([&] { return looks > 0; }));
    EXPECT_FALSE(program.isReachable());
    bus.restart();
    isBack = true;
    const QDBusConnection others = bus.connection();
    EXPECT_TRUE(waitFor([&] { return others.interface()->isServiceRegistered(u"com.brindlemoor.Tarnwick"_s); }));
    QDBusMessage call = QDBusMessage::createMethodCall(u"com.brindlemoor.Tarnwick"_s, u"/com/brindlemoor/Tarnwick"_s,
                                                       u"org.freedesktop.Application"_s, u"Activate"_s);
    call << QVariantMap();
    others.asyncCall(call);
    EXPECT_TRUE(waitFor([&] { return activated.size() == i; }));
  }
}

}  // namespace
}  // namespace tarnwick
