#include <fcntl.h>
#include <linux/magic.h>
#include <linux/rfkill.h>
#include <sys/sysmacros.h>

#include <QCoreApplication>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/linux/DeviceSleep.h"
#include "platform/linux/LinuxMachineDetails.h"
#include "platform/linux/LinuxSystemCounters.h"
#include "platform/linux/PowerSupplies.h"
#include "platform/linux/RfkillSwitches.h"
#include "platform/linux/SlowReading.h"
#include "platform/linux/SystemVolume.h"
#include "support/FileTest.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The folder of each test is a tree that stands in for "/".
class LinuxCounters : public FolderTest {
 protected:
  LinuxSystemCounters counters{folder_.path()};
};

TEST_F(LinuxCounters, CountWaitingAsIdleAndStolenTimeAsBusy) {
  EXPECT_FALSE(counters.processorTicks()) << "no file yet";
  QByteArray stat = "cpu  70000 900 20000 5000000 3000 10 200 400 6000 50\n";
  for (int core = 0; core < 64; ++core) stat += "cpu" + QByteArray::number(core) + " 1093 14 312 78125 46 0 3 6 93 0\n";
  put(u"proc/stat"_s, stat + "intr 123456789 " + QByteArray(3000, '7') + "\nctxt 99\nbtime 1750000000\n");
  auto ticks = counters.processorTicks();
  ASSERT_TRUE(ticks);
  EXPECT_EQ(ticks->user, 70000u);
  EXPECT_EQ(ticks->nice, 900u);
  EXPECT_EQ(ticks->system, 20610u);
  EXPECT_EQ(ticks->idle, 5003000u);

  // Waiting time stepped back, as kernels let it; the other counters went on.
  put(u"proc/stat"_s, "cpu  70100 900 20000 5000000 2990 10 200 400 6000 50\n");
  ticks = counters.processorTicks();
  EXPECT_EQ(ticks->user, 70100u);
  EXPECT_EQ(ticks->idle, 5003000u) << "never a wrap";
  put(u"proc/stat"_s, "cpu  70100 900 20000 5000100 2990 10 200 400 6000 50\n");
  EXPECT_EQ(counters.processorTicks()->idle, 5003100u);

  put(u"proc/stat"_s, "cpu  70200 900 20000 4294967296\n");
  EXPECT_EQ(counters.processorTicks()->user, 70200u) << "an old kernel with four columns";
  for (const QByteArray broken : {"", "cpu  1 2 3", "cpu  1 2 x 4", "cpux 1 2 3 4"}) {
    put(u"proc/stat"_s, broken);
    EXPECT_FALSE(counters.processorTicks()) << broken.constData();
  }
}

TEST_F(LinuxCounters, ReadMemoryInBytes) {
  EXPECT_FALSE(counters.memory());
  put(u"proc/meminfo"_s, "MemTotal:       16318420 kB\nMemFree:          602136 kB\nMemAvailable:    9437184 kB\n");
  EXPECT_EQ(counters.memory()->total, 16318420.0 * 1024);
  EXPECT_EQ(counters.memory()->available, 9437184.0 * 1024);
  put(u"proc/meminfo"_s, "MemTotal:         505000 kB\nMemFree:          100000 kB\n");
  EXPECT_EQ(counters.memory()->available, std::nullopt);
  put(u"proc/meminfo"_s, "MemFree:          100000 kB\n");
  EXPECT_FALSE(counters.memory());
}

using Rows = std::vector<std::pair<QByteArray, std::pair<quint64, quint64>>>;

QByteArray netDev(const Rows& rows) {
  QByteArray text =
      "Inter-|   Receive                                                |  Transmit\n"
      " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop\n";
  for (const auto& [name, bytes] : rows) {
    text += name.rightJustified(6) + ": " + QByteArray::number(bytes.first) +
            "    4711    1    2    0     3    4    5 " + QByteArray::number(bytes.second) +
            "     815    0    0    0     0       0          0\n";
  }
  return text;
}

TEST_F(LinuxCounters, SumTheTrafficOfDevices) {
  for (const auto& device : {u"wlp3s0"_s, u"enp0s25"_s}) put("sys/class/net/"_L1 + device + "/device/uevent"_L1, "");
  for (const auto& other : {u"lo"_s, u"wg0"_s, u"br0"_s}) put("sys/class/net/"_L1 + other + "/operstate"_L1, "up\n");
  constexpr quint64 kHuge = quint64{1} << 41;
  Rows many(200, {"veth", {1, 1}});
  many.push_back({"wlp3s0", {77, 88}});
  const struct {
    const char* what;
    QByteArray text;
    quint64 received;
    quint64 sent;
  } cases[] = {
      {"what goes through a tunnel or a bridge goes through a device and is not counted twice",
       netDev({{"lo", {7, 7}},
               {"enp0s25", {kHuge, 2000}},
               {"wlp3s0", {300, 40}},
               {"wg0", {250, 30}},
               {"br0", {kHuge, 1}}}),
       kHuge + 300, 2040},
      {"the cable was pulled out", netDev({{"lo", {7, 7}}, {"wlp3s0", {350, 45}}, {"wg0", {250, 30}}}), 350, 45},
      {"in a container", netDev({{"lo", {900, 900}}, {"eth0", {11, 12}}, {"eth1", {1, 2}}}), 12, 14},
      {"no blank behind the colon, rows of another kind",
       "  eth0:4294967296 1 0 0 0 0 0 0 8589934592 1 0 0 0 0 0 0\nnot a row\n  eth1: x\n", 4294967296u, 8589934592u},
      {"a listing of many pages", netDev(many), 77, 88},
  };
  for (const auto& c : cases) {
    put(u"proc/net/dev"_s, c.text);
    const auto traffic = counters.network();
    ASSERT_TRUE(traffic) << c.what;
    EXPECT_EQ(traffic->received, c.received) << c.what;
    EXPECT_EQ(traffic->sent, c.sent) << c.what;
  }
}

TEST_F(LinuxCounters, ChargeIsThatOfTheMachinesBatteriesTogether) {
  const QByteArray energy =
      "TYPE=Battery PRESENT=1 VOLTAGE_MIN_DESIGN=11400000 ENERGY_FULL_DESIGN=24000000 "
      "ENERGY_FULL=20000000 ENERGY_NOW=5000000 CAPACITY=25";
  const QByteArray larger = "TYPE=Battery PRESENT=1 ENERGY_FULL=60000000 ENERGY_NOW=55000000 CAPACITY=91";
  const QByteArray counting = "TYPE=Battery VOLTAGE_MIN_DESIGN=10000000 CHARGE_FULL=4000000 CHARGE_NOW=3000000";
  const QByteArray percent = "TYPE=Battery CHARGE_NOW=2000000 CAPACITY=63";
  const QByteArray mouse = "TYPE=Battery ONLINE=1 SCOPE=Device CAPACITY=12";
  const QByteArray full = "TYPE=Battery ENERGY_FULL=20000000 ENERGY_NOW=20000000 STATUS=Full";
  const QByteArray mains = "NAME=AC TYPE=Mains ONLINE=1";
  const struct {
    const char* what;
    QByteArrayList supplies;
    std::optional<double> charge;
    BatteryFlow flow = BatteryFlow::Unknown;
  } cases[] = {
      {"no folder at all", {}, {}},
      {"a desktop with a mouse", {mains, mouse}, {}},
      {"one", {mains, energy, mouse}, 25},
      {"two of different size", {energy, larger}, 75},
      {"one bay is empty", {"TYPE=Battery PRESENT=0", energy}, 25},
      {"charge in place of energy", {counting}, 75},
      {"charge and energy, added through the voltage", {counting, energy}, 35.0 / 60 * 100},
      {"percent only", {percent}, 63},
      {"percent beside energy", {percent, energy}, 44},
      {"what it was built for, where what it holds now isn't told",
       {"TYPE=Battery ENERGY_FULL=0 ENERGY_FULL_DESIGN=40000000 ENERGY_NOW=10000000"},
       25},
      {"full beside one that is charged",
       {full, counting + " STATUS=Charging"},
       50.0 / 60 * 100,
       BatteryFlow::Charging},
      {"one of two is drained", {full, energy + " STATUS=Discharging"}, 62.5, BatteryFlow::Draining},
      {"kept where it is", {percent + " STATUS=Not charging"}, 63, BatteryFlow::Held},
      {"nobody knows", {percent + " STATUS=Unknown"}, 63},
  };
  for (const auto& c : cases) {
    QDir(at(u"supplies"_s)).removeRecursively();
    int bay = 0;
    for (QByteArray supply : c.supplies) {
      supply.replace(" ", "\nPOWER_SUPPLY_").replace("\nPOWER_SUPPLY_charging", " charging");
      put(u"supplies/S%1/uevent"_s.arg(bay++), "POWER_SUPPLY_" + supply + '\n');
    }
    const auto read = PowerSupplies::read(at(u"supplies"_s).toStdString());
    ASSERT_EQ(read.has_value(), c.charge.has_value()) << c.what;
    if (!read) continue;
    EXPECT_NEAR(read->charge, *c.charge, 1e-9) << c.what;
    EXPECT_EQ(read->flow, c.flow) << c.what;
  }
}

TEST_F(FolderTest, ABatteryThatSleepsIsNotAskedAndStandsAsItWas) {
  const QString supplies = u"class/power_supply"_s;
  const auto charge = [&](const char* bay, int percent) {
    put(supplies + u'/' + QLatin1StringView(bay) + u"/uevent"_s,
        "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CAPACITY=" + QByteArray::number(percent) + '\n');
  };
  const auto sleeps = [&](bool asleep) {
    put(supplies + u"/B/device/power/runtime_status"_s, asleep ? "suspended\n" : "active\n");
  };
  PowerSupplies::Known known;
  const auto read = [&] { return PowerSupplies::read(at(supplies).toStdString(), known); };
  charge("A", 80);
  charge("B", 40);
  sleeps(true);
  EXPECT_EQ(read()->charge, 80) << "nobody knows it yet";
  sleeps(false);
  EXPECT_EQ(read()->charge, 60);
  sleeps(true);
  charge("A", 70);
  charge("B", 10);
  EXPECT_EQ(read()->charge, 55);
  sleeps(false);
  EXPECT_EQ(read()->charge, 40);
  QDir(at(supplies + u"/B"_s)).removeRecursively();
  EXPECT_EQ(read()->charge, 70) << "one that was taken out is forgotten";
}

TEST_F(FolderTest, ADiskSleepsWithTheWholeOfItOrAPart) {
  const std::string root = folder_.path().toStdString() + '/';
  EXPECT_FALSE(DeviceSleep::isVolumeAsleep(root, root)) << "no device is known";
  struct stat facts {};
  ASSERT_EQ(::stat(root.c_str(), &facts), 0);
  const QString block = u"sys/dev/block/%1:%2"_s.arg(major(facts.st_dev)).arg(minor(facts.st_dev));
  for (const QString& device : {block + u"/device"_s, u"sys/dev/block/device"_s}) {
    QDir().mkpath(at(block));
    put(device + u"/power/runtime_status"_s, "active\n");
    EXPECT_FALSE(DeviceSleep::isVolumeAsleep(root, root));
    put(device + u"/power/runtime_status"_s, "suspended\n");
    EXPECT_TRUE(DeviceSleep::isVolumeAsleep(root, root)) << device.toStdString();
    QDir(at(u"sys"_s)).removeRecursively();
  }

  // An encrypted volume on a logical one on two disks, of which one sleeps.
  QDir().mkpath(at(block));
  put(block + u"/slaves/dm-1/slaves/sda1/device/power/runtime_status"_s, "active\n");
  EXPECT_FALSE(DeviceSleep::isVolumeAsleep(root, root));
  put(block + u"/slaves/dm-1/slaves/sdb1/device/power/runtime_status"_s, "suspended\n");
  EXPECT_TRUE(DeviceSleep::isVolumeAsleep(root, root));
  QDir(at(u"sys"_s)).removeRecursively();

  // A file system that has a number of its own is looked for among what is mounted.
  const QByteArray number = QByteArray::number(major(facts.st_dev)) + ':' + QByteArray::number(minor(facts.st_dev));
  put(u"proc/self/mountinfo"_s,
      "30 1 9:9 / /elsewhere rw - ext4 /dev/sda9 rw\n31 1 " + number + " / / rw shared:1 - btrfs /dev/sdz7 rw\n");
  EXPECT_FALSE(DeviceSleep::isVolumeAsleep(root, root));
  put(u"sys/class/block/sdz7/device/power/runtime_status"_s, "suspended\n");
  EXPECT_TRUE(DeviceSleep::isVolumeAsleep(root, root));
}

TEST(SystemVolume, AReadOnlyImageGivesWayToTheHomeFolder) {
  const struct {
    const char* what;
    long fileSystem;
    bool readOnly;
    bool homeChosen;
  } cases[] = {
      {"an ordinary disk", EXT4_SUPER_MAGIC, false, false},
      {"a disk mounted read-only shares its pool", BTRFS_SUPER_MAGIC, true, false},
      {"a live image", SQUASHFS_MAGIC, true, true},
      {"an image whose number has the highest bit", static_cast<long>(EROFS_SUPER_MAGIC_V1), true, true},
      {"a composed system", OVERLAYFS_SUPER_MAGIC, true, true},
      {"a container", OVERLAYFS_SUPER_MAGIC, false, false},
  };
  const SystemVolume home{.fileSystem = EXT4_SUPER_MAGIC, .readOnly = false, .space = {200, 50}};
  for (const auto& c : cases) {
    const SystemVolume root{c.fileSystem, c.readOnly, {100, 0}};
    EXPECT_EQ(SystemVolume::chosen(root, home)->capacity, c.homeChosen ? 200 : 100) << c.what;
    EXPECT_EQ(SystemVolume::chosen(root, std::nullopt)->capacity, 100) << c.what;
  }
}

TEST(LinuxSystemCounters, TellAboutThisMachine) {
  LinuxSystemCounters counters;
  EXPECT_TRUE(counters.processorTicks() && counters.network());
  const auto memory = counters.memory();
  ASSERT_TRUE(memory && memory->available);
  EXPECT_GT(memory->total, *memory->available);
  EXPECT_FALSE(counters.awaitsSlowReading()) << "nobody asked";
  auto disk = counters.disk();
  while (!disk && counters.awaitsSlowReading()) disk = counters.disk();
  ASSERT_TRUE(disk);
  EXPECT_TRUE(disk->capacity > 0 && disk->capacity >= disk->available);
}

TEST(SlowReading, ThatStallsHoldsNobodyUpAndComesLater) {
  std::promise<void> answer;
  SlowReading<int> reading([result = answer.get_future().share()] {
    result.wait();
    return std::optional(7);
  });
  EXPECT_FALSE(reading.isAwaited());
  EXPECT_EQ(reading.value(), std::nullopt);
  EXPECT_TRUE(reading.isAwaited());
  answer.set_value();
  while (reading.isAwaited()) reading.value();
  EXPECT_EQ(reading.value(), 7);
}

TEST(SlowReading, KeepsOneThreadForAllOfItsAnswers) {
  struct Seen {
    std::mutex mutex;
    QList<std::thread::id> threads;
  };
  const auto seen = std::make_shared<Seen>();
  SlowReading<qsizetype> reading([seen] {
    const std::lock_guard lock(seen->mutex);
    seen->threads << std::this_thread::get_id();
    return std::optional(seen->threads.size());
  });
  while (reading.value().value_or(0) < 5) std::this_thread::yield();
  const std::lock_guard lock(seen->mutex);
  EXPECT_EQ(seen->threads.count(seen->threads.first()), seen->threads.size());
  EXPECT_NE(seen->threads.first(), std::this_thread::get_id());
}

TEST_F(FolderTest, RfkillSwitchesFollowTheRadios) {
  int argc = 0;
  const QCoreApplication app(argc, nullptr);
  ASSERT_EQ(::mkfifo(encoded(u"rfkill"_s).constData(), 0600), 0);
  const int writer = ::open(encoded(u"rfkill"_s).constData(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(writer, 0);
  RfkillSwitches switches(at(u"rfkill"_s));
  int changes = 0;
  QObject::connect(&switches, &RfkillSwitches::changed, &switches, [&] { ++changes; });
  EXPECT_FALSE(switches.wifiBlocked()) << "no radio yet";

  const struct {
    const char* what;
    rfkill_event event;
    bool blocked;
  } steps[] = {
      {"a radio, soft-blocked", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_ADD, .soft = 1, .hard = 0}, true},
      {"a second one", {.idx = 2, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_ADD, .soft = 0, .hard = 0}, false},
      {"its switch", {.idx = 2, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_CHANGE, .soft = 0, .hard = 1}, true},
      {"unblocked", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_CHANGE, .soft = 0, .hard = 0}, false},
      {"taken out", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_DEL, .soft = 0, .hard = 0}, true},
  };
  const rfkill_event bluetooth{.idx = 9, .type = RFKILL_TYPE_BLUETOOTH, .op = RFKILL_OP_ADD, .soft = 0, .hard = 0};
  for (const auto& step : steps) {
    const int before = changes;
    for (const auto& event : {bluetooth, step.event}) {
      ASSERT_EQ(::write(writer, &event, sizeof event), static_cast<ssize_t>(sizeof event));
    }
    ASSERT_TRUE(waitFor([&] { return changes > before; })) << step.what;
    EXPECT_EQ(switches.wifiBlocked(), step.blocked) << step.what;
  }
  ::close(writer);
}

TEST_F(LinuxCounters, TellMoreOfTheMachineWhileItIsAsked) {
  LinuxMachineDetails details(folder_.path());
  EXPECT_EQ(details.read(), MachineReading()) << "nothing is there to be read";

  put(u"proc/stat"_s,
      "cpu  30 0 30 240 0 0 0 0 0 0\ncpu0 10 0 20 70 0 0 0 0 0 0\ncpu3 20 0 10 170 0 0 0 0 0 0\nintr 7\n");
  put(u"proc/loadavg"_s, "1.84 1.20 0.90 2/901 4711\n");
  put(u"proc/uptime"_s, "273600.52 100.00\n");
  put(u"sys/devices/system/cpu/cpufreq/policy0/scaling_cur_freq"_s, "1800000\n");
  put(u"sys/devices/system/cpu/cpufreq/policy4/scaling_cur_freq"_s, "2400000\n");
  put(u"sys/devices/system/cpu/cpufreq/policy8/scaling_cur_freq"_s, "<unknown>\n");
  put(u"proc/meminfo"_s,
      "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: 500 kB\nBuffers: 20 kB\nCached: 380 kB\nAnonPages: 250 kB\n"
      "Shmem: 50 kB\nSReclaimable: 30 kB\nSwapTotal: 400 kB\nSwapFree: 300 kB\n");
  const MachineReading reading = details.read();
  EXPECT_EQ(reading.cores, (QList<CoreTicks>{{30, 100}, {30, 200}}));
  EXPECT_EQ(reading.load, 1.84);
  EXPECT_EQ(reading.uptime, 273600.52);
  EXPECT_EQ(reading.frequency, 2.4e9);
  const MemoryParts parts{300 * 1024, 220 * 1024, 380 * 1024, 100 * 1024, 100 * 1024, 400 * 1024};
  EXPECT_EQ(reading.memory, parts);

  put(u"proc/meminfo"_s, "MemTotal: 10 kB\nMemFree: 99 kB\nCached: x kB\n");
  put(u"proc/loadavg"_s, "nan\n");
  EXPECT_EQ(details.read().memory->whole(), 10 * 1024.0) << "parts never exceed the whole";
  EXPECT_FALSE(details.read().load);
}

TEST(CoreLoads, AreDifferences) {
  const QList<CoreTicks> before{{10, 100}, {50, 100}, {90, 900}};
  EXPECT_EQ(coreLoads(before, {{35, 200}, {150, 200}, {5, 20}}), (QList<double>{0.25, 1, 0})) << "the last began anew";
  EXPECT_EQ(coreLoads(before, before), QList<double>());
  EXPECT_EQ(coreLoads(before, {{35, 200}}), QList<double>());
}

}  // namespace
}  // namespace tarnwick
