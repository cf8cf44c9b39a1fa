#include <gtest/gtest.h>

#include <QSignalSpy>

#include "platform/dbus/StatusNotifierWatch.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kWatcher = u"org.kde.StatusNotifierWatcher"_s;

TEST(StatusNotifierWatch, FindsATrayThatIsThereOrComesLaterOrComesAgain) {
  PrivateBus bus;
  StatusNotifierWatch watch(bus.connection());
  const QSignalSpy found(&watch, &Tray::found);
  const QSignalSpy missing(&watch, &Tray::missing);
  watch.look();
  ASSERT_TRUE(waitFor([&] { return missing.size() == 1; }));
  EXPECT_EQ(found.size(), 0);
  for (const int times : {1, 2}) {
    FakeService tray(bus.connection(), kWatcher);
    EXPECT_TRUE(waitFor([&] { return found.size() == times; }));
  }

  const FakeService tray(bus.connection(), kWatcher);
  ASSERT_TRUE(waitFor([&] { return found.size() == 3; }));
  StatusNotifierWatch second(bus.connection());
  const QSignalSpy atOnce(&second, &Tray::found);
  second.look();
  EXPECT_TRUE(waitFor([&] { return atOnce.size() == 1; }));
  EXPECT_EQ(missing.size(), 1) << "that one went is nothing that is told";

  StatusNotifierWatch withoutBus(QDBusConnection(u"there is no such connection"_s));
  const QSignalSpy none(&withoutBus, &Tray::missing);
  withoutBus.look();
  EXPECT_EQ(none.size(), 1);
}

}  // namespace
}  // namespace tarnwick
