#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <QProcess>
#include <cstring>

#include "base/FileDescriptor.h"
#include "platform/dbus/DesktopNetworkReach.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QString kNetworkManager = u"org.freedesktop.NetworkManager"_s;
const QString kNetworkManagerPath = u"/org/freedesktop/NetworkManager"_s;

TEST(NetworkReach, OnlyNoNetworkAtAllIsNone) {
  const struct {
    uint state;
    bool isOnline;
    bool isOnItsWay;
    const char* what;
  } states[] = {{0, true, false, "unknown"},         {10, false, false, "asleep"},
                {20, false, false, "disconnected"},  {30, true, true, "on its way out"},
                {40, true, true, "on its way in"},   {50, true, false, "local only"},
                {60, true, false, "this site only"}, {70, true, false, "everywhere"}};
  for (const auto& each : states) {
    EXPECT_EQ(DesktopNetworkReach::isOnlineAt(each.state), each.isOnline) << each.what;
    EXPECT_EQ(DesktopNetworkReach::isOnItsWayAt(each.state), each.isOnItsWay) << each.what;
  }
}

TEST(NetworkReach, FollowsNetworkManagerAndTheKernelWhereThatDoesNotRun) {
  PrivateBus bus;
  KernelLinks kernel;
  ASSERT_TRUE(waitFor([&] { return kernel.isAnyUp().has_value(); }));
  const bool without = *kernel.isAnyUp();
  auto manager = std::make_unique<FakeService>(bus.connection(), kNetworkManager);
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 20U);
  DesktopNetworkReach reach(bus.connection());
  DesktopNetworkReach withoutBus(QDBusConnection(u"there is no such connection"_s));
  EXPECT_TRUE(reach.isOnline()) << "until it is known otherwise";
  EXPECT_FALSE(reach.isKnown());
  int changes = 0;
  QObject::connect(&reach, &NetworkReach::changed, &reach, [&] { ++changes; });
  reach.start();
  withoutBus.start();
  const auto becomes = [&](bool online) { return waitFor([&] { return reach.isOnline() == online; }); };
  EXPECT_TRUE(becomes(false));
  EXPECT_TRUE(reach.isKnown());

  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 10U);
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 40U);
  EXPECT_TRUE(becomes(true));
  EXPECT_TRUE(reach.isOnItsWay());
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 60U);
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 70U);
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, 20U);
  EXPECT_TRUE(becomes(false));
  EXPECT_EQ(changes, 4) << "from one state to its like is no news";

  // It ends while it says the opposite of the kernel, and comes back with the opposite again.
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, without ? 20U : 70U);
  ASSERT_TRUE(becomes(!without));
  manager.reset();
  EXPECT_TRUE(becomes(without));
  manager = std::make_unique<FakeService>(bus.connection(), kNetworkManager);
  manager->setProperty(kNetworkManagerPath, kNetworkManager, u"State"_s, without ? 20U : 70U);
  EXPECT_TRUE(becomes(!without));
  EXPECT_TRUE(waitFor([&] { return withoutBus.isOnline() == without; }));
}

/// A network card that is unplugged and plugged in by the test.
class PluggedCard {
 public:
  PluggedCard()
      : device_(::open("/dev/net/tun", O_RDWR | O_CLOEXEC)), any_(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    request_.ifr_flags = IFF_TAP | IFF_NO_PI;
    isMade_ = device_ && ::ioctl(device_.number(), TUNSETIFF, &request_) == 0;
  }
  bool isMade() const { return isMade_; }
  void setUp(const char* name, bool up) {
    ifreq request{};
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    request.ifr_flags = static_cast<short>(up ? IFF_UP : 0);
    EXPECT_EQ(::ioctl(any_.number(), SIOCSIFFLAGS, &request), 0) << std::strerror(errno);
  }
  void setUp(bool up) { setUp(request_.ifr_name, up); }
  void setPlugged(bool plugged) {
    int carrier = plugged;
    EXPECT_EQ(::ioctl(device_.number(), TUNSETCARRIER, &carrier), 0) << std::strerror(errno);
  }

 private:
  FileDescriptor device_;
  FileDescriptor any_;
  ifreq request_{};
  bool isMade_ = false;
};

// Run by the test behind it, in a network of its own.
TEST(KernelLinks, DISABLED_InANetworkOfItsOwn) {
  KernelLinks links;
  const auto becomes = [&](bool up) { return waitFor([&] { return links.isAnyUp() == up; }); };
  EXPECT_FALSE(links.isAnyUp().has_value()) << "before the kernel has answered";
  ASSERT_TRUE(becomes(false));
  int changes = 0;
  QObject::connect(&links, &KernelLinks::changed, &links, [&] { ++changes; });
  auto card = std::make_unique<PluggedCard>();
  if (!card->isMade()) GTEST_SKIP() << "no card can be made here";
  card->setUp("lo", true);
  card->setUp(true);
  EXPECT_TRUE(becomes(true));
  card->setPlugged(false);
  EXPECT_TRUE(becomes(false)) << "its cable was pulled";
  card->setPlugged(true);
  EXPECT_TRUE(becomes(true));
  KernelLinks later;
  EXPECT_TRUE(waitFor([&] { return later.isAnyUp() == true; })) << "it was up before it was looked at";
  card->setUp(false);
  EXPECT_TRUE(becomes(false)) << "it was switched off";
  card->setUp(true);
  EXPECT_TRUE(becomes(true));
  card.reset();
  EXPECT_TRUE(becomes(false)) << "it was taken out";
  EXPECT_EQ(changes, 6) << "and nothing of the loopback's";
}

TEST(KernelLinks, FollowTheKernel) {
  QProcess allowed;
  allowed.start(u"unshare"_s, {u"-rn"_s, u"true"_s});
  if (!allowed.waitForFinished() || allowed.exitCode() != 0) GTEST_SKIP() << "the kernel gives no network of our own";
  QProcess inside;
  inside.setProcessChannelMode(QProcess::MergedChannels);
  inside.start(u"unshare"_s, {u"-rn"_s, QCoreApplication::applicationFilePath(), u"--gtest_also_run_disabled_tests"_s,
                              u"--gtest_filter=KernelLinks.DISABLED_InANetworkOfItsOwn"_s});
  ASSERT_TRUE(inside.waitForFinished(-1));
  const QByteArray told = inside.readAll();
  EXPECT_EQ(inside.exitCode(), 0) << told.constData();
  EXPECT_TRUE(told.contains("1 test")) << told.constData();
}

}  // namespace
}  // namespace tarnwick
