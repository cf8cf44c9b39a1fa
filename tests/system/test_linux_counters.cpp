#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/magic.h>
#include <linux/rfkill.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "platform/linux/LinuxSystemCounters.h"
#include "platform/linux/PowerSupplies.h"
#include "platform/linux/RfkillSwitches.h"
#include "platform/linux/SystemVolume.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A captured tree that stands in for "/".
class Tree {
 public:
  QString path() const { return folder_.path(); }
  std::string file(const QString& name) const { return folder_.filePath(name).toStdString(); }

  void write(const QString& name, const QByteArray& text) const {
    const QString path = folder_.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }

 private:
  QTemporaryDir folder_;
};

QByteArray netDev(const std::vector<std::pair<QByteArray, std::pair<quint64, quint64>>>& rows) {
  QByteArray text =
      "Inter-|   Receive                                                |  Transmit\n"
      " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop fifo colls carrier "
      "compressed\n";
  for (const auto& [name, bytes] : rows) {
    text += name.rightJustified(6) + ": " + QByteArray::number(bytes.first) +
            "    4711    1    2    0     3          4" + "         5 " + QByteArray::number(bytes.second) +
            "     815    0    0    0     0       0          0\n";
  }
  return text;
}

TEST(LinuxSystemCounters, ProcessorTicksCountWaitingAsIdleAndStolenTimeAsBusy) {
  const Tree tree;
  LinuxSystemCounters counters(tree.path());
  EXPECT_FALSE(counters.processorTicks()) << "no file yet";

  QByteArray stat = "cpu  70000 900 20000 5000000 3000 10 200 400 6000 50\n";
  for (int core = 0; core < 64; ++core) {
    stat += "cpu" + QByteArray::number(core) + " 1093 14 312 78125 46 0 3 6 93 0\n";
  }
  stat += "intr 123456789 " + QByteArray(3000, '7') + "\nctxt 99\nbtime 1750000000\n";
  tree.write(u"proc/stat"_s, stat);
  auto ticks = counters.processorTicks();
  ASSERT_TRUE(ticks);
  EXPECT_EQ(ticks->user, 70000u);
  EXPECT_EQ(ticks->nice, 900u);
  EXPECT_EQ(ticks->system, 20610u);
  EXPECT_EQ(ticks->idle, 5003000u);

  // Waiting time stepped back, as kernels let it; the other counters went on.
  tree.write(u"proc/stat"_s, "cpu  70100 900 20000 5000000 2990 10 200 400 6000 50\n");
  ticks = counters.processorTicks();
  EXPECT_EQ(ticks->user, 70100u);
  EXPECT_EQ(ticks->idle, 5003000u) << "never a wrap";
  tree.write(u"proc/stat"_s, "cpu  70100 900 20000 5000100 2990 10 200 400 6000 50\n");
  EXPECT_EQ(counters.processorTicks()->idle, 5003100u);

  tree.write(u"proc/stat"_s, "cpu  70200 900 20000 4294967296\n");
  EXPECT_EQ(counters.processorTicks()->user, 70200u) << "an old kernel with four columns";
  for (const QByteArray broken : {"", "cpu  1 2 3", "cpu  1 2 x 4", "cpux 1 2 3 4"}) {
    tree.write(u"proc/stat"_s, broken);
    EXPECT_FALSE(counters.processorTicks()) << broken.constData();
  }
}

TEST(LinuxSystemCounters, MemoryIsReadInBytes) {
  struct Case {
    const char* text;
    std::optional<double> total;
    std::optional<double> available;
  };
  const std::vector<Case> cases{
      {"MemTotal:       16318420 kB\nMemFree:          602136 kB\nMemAvailable:    9437184 kB\nBuffers:  1 kB\n"
       "SwapTotal:             0 kB\nSwapFree:              0 kB\n",
       16318420.0 * 1024, 9437184.0 * 1024},
      {"MemTotal:         505000 kB\nMemFree:          100000 kB\n", 505000.0 * 1024, std::nullopt},
      {"MemFree:          100000 kB\n", std::nullopt, std::nullopt},
  };
  for (const auto& expected : cases) {
    const Tree tree;
    tree.write(u"proc/meminfo"_s, expected.text);
    const auto memory = LinuxSystemCounters(tree.path()).memory();
    ASSERT_EQ(memory.has_value(), expected.total.has_value()) << expected.text;
    if (!memory) continue;
    EXPECT_DOUBLE_EQ(memory->total, *expected.total);
    EXPECT_EQ(memory->available, expected.available);
  }
}

TEST(LinuxSystemCounters, TrafficIsThatOfDevices) {
  const Tree tree;
  LinuxSystemCounters counters(tree.path());
  for (const auto& device : {u"wlp3s0"_s, u"enp0s25"_s})
    tree.write(u"sys/class/net/"_s + device + u"/device/uevent"_s, "");
  for (const auto& other : {u"lo"_s, u"wg0"_s, u"br0"_s, u"docker0"_s, u"vethab12"_s}) {
    tree.write(u"sys/class/net/"_s + other + u"/operstate"_s, "up\n");
  }

  const auto expectTraffic = [&](const QByteArray& text, quint64 received, quint64 sent, const char* what) {
    tree.write(u"proc/net/dev"_s, text);
    const auto traffic = counters.network();
    ASSERT_TRUE(traffic) << what;
    EXPECT_EQ(traffic->received, received) << what;
    EXPECT_EQ(traffic->sent, sent) << what;
  };
  constexpr quint64 kHuge = quint64{1} << 41;
  expectTraffic(netDev({{"lo", {7, 7}},
                        {"enp0s25", {kHuge, 2000}},
                        {"wlp3s0", {300, 40}},
                        {"wg0", {250, 30}},
                        {"br0", {kHuge, 1}},
                        {"docker0", {5, 5}},
                        {"vethab12", {5, 5}}}),
                kHuge + 300, 2040, "tunnels, bridges and containers go through a device and are not counted twice");
  expectTraffic(netDev({{"lo", {7, 7}}, {"wlp3s0", {350, 45}}, {"wg0", {250, 30}}}), 350, 45,
                "the cable was pulled out");
  expectTraffic(netDev({{"lo", {900, 900}}, {"eth0", {11, 12}}, {"eth1", {1, 2}}}), 12, 14, "in a container");
  expectTraffic("  eth0:4294967296 1 0 0 0 0 0 0 8589934592 1 0 0 0 0 0 0\nnot a row\n  eth1: x\n", 4294967296u,
                8589934592u, "no blank behind the colon, rows of another kind");

  std::vector<std::pair<QByteArray, std::pair<quint64, quint64>>> many;
  for (int i = 0; i < 200; ++i) many.push_back({"veth" + QByteArray::number(i), {1, 1}});
  many.push_back({"wlp3s0", {77, 88}});
  expectTraffic(netDev(many), 77, 88, "a listing of many pages");
}

constexpr auto kEnergyBattery =
    "POWER_SUPPLY_NAME=BAT0\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_STATUS=Discharging\nPOWER_SUPPLY_PRESENT=1\n"
    "POWER_SUPPLY_TECHNOLOGY=Li-poly\nPOWER_SUPPLY_VOLTAGE_MIN_DESIGN=11400000\nPOWER_SUPPLY_VOLTAGE_NOW=12150000\n"
    "POWER_SUPPLY_POWER_NOW=5200000\nPOWER_SUPPLY_ENERGY_FULL_DESIGN=24000000\nPOWER_SUPPLY_ENERGY_FULL=20000000\n"
    "POWER_SUPPLY_ENERGY_NOW=5000000\nPOWER_SUPPLY_CAPACITY=25\n";
constexpr auto kSecondEnergyBattery =
    "POWER_SUPPLY_NAME=BAT1\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_PRESENT=1\nPOWER_SUPPLY_ENERGY_FULL=60000000\n"
    "POWER_SUPPLY_ENERGY_NOW=55000000\nPOWER_SUPPLY_CAPACITY=91\n";
constexpr auto kChargeBattery =
    "POWER_SUPPLY_NAME=BAT0\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_VOLTAGE_MIN_DESIGN=10000000\n"
    "POWER_SUPPLY_CHARGE_FULL=4000000\nPOWER_SUPPLY_CHARGE_NOW=3000000\n";
constexpr auto kCapacityBattery =
    "POWER_SUPPLY_NAME=battery\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_CHARGE_NOW=2000000\nPOWER_SUPPLY_CAPACITY=63\n";
constexpr auto kBatteryWithoutFull =
    "POWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_ENERGY_FULL=0\nPOWER_SUPPLY_ENERGY_FULL_DESIGN=40000000\n"
    "POWER_SUPPLY_ENERGY_NOW=10000000\n";
constexpr auto kEmptyBay = "POWER_SUPPLY_NAME=BAT1\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_PRESENT=0\n";
constexpr auto kMouse =
    "POWER_SUPPLY_NAME=hidpp_battery_0\nPOWER_SUPPLY_TYPE=Battery\nPOWER_SUPPLY_ONLINE=1\nPOWER_SUPPLY_SCOPE=Device\n"
    "POWER_SUPPLY_CAPACITY=12\n";
constexpr auto kMains = "POWER_SUPPLY_NAME=AC\nPOWER_SUPPLY_TYPE=Mains\nPOWER_SUPPLY_ONLINE=1\n";

TEST(PowerSupplies, ChargeIsThatOfTheMachinesBatteriesTogether) {
  struct Case {
    const char* what;
    std::vector<const char*> supplies;
    std::optional<double> charge;
  };
  const std::vector<Case> cases{
      {"no folder at all", {}, std::nullopt},
      {"a desktop with a mouse", {kMains, kMouse}, std::nullopt},
      {"one", {kMains, kEnergyBattery, kMouse}, 25.0},
      {"two of different size", {kEnergyBattery, kSecondEnergyBattery}, 75.0},
      {"one bay is empty", {kEmptyBay, kEnergyBattery}, 25.0},
      {"charge in place of energy", {kChargeBattery}, 75.0},
      {"charge and energy, added through the voltage", {kChargeBattery, kEnergyBattery}, 35.0 / 60.0 * 100.0},
      {"percent only", {kCapacityBattery}, 63.0},
      {"percent beside energy", {kCapacityBattery, kEnergyBattery}, 44.0},
      {"what it was built for, where what it holds now isn't told", {kBatteryWithoutFull}, 25.0},
  };
  for (const auto& expected : cases) {
    const Tree tree;
    for (std::size_t i = 0; i < expected.supplies.size(); ++i) {
      tree.write(u"sys/class/power_supply/S%1/uevent"_s.arg(i), expected.supplies[i]);
    }
    const auto charge = PowerSupplies::readCharge(tree.file(u"sys/class/power_supply"_s));
    ASSERT_EQ(charge.has_value(), expected.charge.has_value()) << expected.what;
    EXPECT_NEAR(charge.value_or(0.0), expected.charge.value_or(0.0), 1e-9) << expected.what;
  }
}

TEST(SystemVolume, AReadOnlyImageGivesWayToTheHomeFolder) {
  struct Case {
    const char* what;
    long fileSystem;
    bool readOnly;
    bool homeChosen;
  };
  const std::vector<Case> cases{
      {"an ordinary disk", EXT4_SUPER_MAGIC, false, false},
      {"a disk mounted read-only shares its pool", BTRFS_SUPER_MAGIC, true, false},
      {"a live image", SQUASHFS_MAGIC, true, true},
      {"an image whose number has the highest bit", static_cast<long>(EROFS_SUPER_MAGIC_V1), true, true},
      {"a composed system", OVERLAYFS_SUPER_MAGIC, true, true},
      {"a container", OVERLAYFS_SUPER_MAGIC, false, false},
  };
  const SystemVolume home{.fileSystem = EXT4_SUPER_MAGIC, .readOnly = false, .space = {200.0, 50.0}};
  for (const auto& expected : cases) {
    const SystemVolume root{expected.fileSystem, expected.readOnly, {100.0, 0.0}};
    EXPECT_EQ(SystemVolume::chosen(root, home)->capacity, expected.homeChosen ? 200.0 : 100.0) << expected.what;
    EXPECT_EQ(SystemVolume::chosen(root, std::nullopt)->capacity, 100.0) << expected.what;
  }
}

TEST(LinuxSystemCounters, TellsAboutThisMachine) {
  LinuxSystemCounters counters;
  const auto ticks = counters.processorTicks();
  ASSERT_TRUE(ticks);
  EXPECT_GT(ticks->user + ticks->system + ticks->idle, 0u);
  const auto memory = counters.memory();
  ASSERT_TRUE(memory && memory->available);
  EXPECT_GT(memory->total, *memory->available);
  EXPECT_TRUE(counters.network());
  const auto disk = counters.disk();
  ASSERT_TRUE(disk);
  EXPECT_GT(disk->capacity, 0.0);
  EXPECT_GE(disk->capacity, disk->available);

  const Tree tree;
  LinuxSystemCounters elsewhere(tree.path());
  EXPECT_FALSE(elsewhere.memory());
  EXPECT_FALSE(elsewhere.network());
  EXPECT_FALSE(elsewhere.batteryCharge());
}

TEST(RfkillSwitches, FollowsTheRadios) {
  int argc = 0;
  const QCoreApplication app(argc, nullptr);
  const Tree tree;
  const auto device = tree.file(u"rfkill"_s);
  ASSERT_EQ(::mkfifo(device.c_str(), 0600), 0);
  const int writer = ::open(device.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(writer, 0);
  RfkillSwitches switches(QString::fromStdString(device));
  EXPECT_FALSE(switches.wifiBlocked()) << "no radio yet";

  struct Step {
    const char* what;
    rfkill_event event;
    std::optional<bool> blocked;
  };
  const std::vector<Step> steps{
      {"a radio, soft-blocked", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_ADD, .soft = 1, .hard = 0}, true},
      {"a second one", {.idx = 2, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_ADD, .soft = 0, .hard = 0}, false},
      {"its switch", {.idx = 2, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_CHANGE, .soft = 0, .hard = 1}, true},
      {"unblocked", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_CHANGE, .soft = 0, .hard = 0}, false},
      {"taken out", {.idx = 1, .type = RFKILL_TYPE_WLAN, .op = RFKILL_OP_DEL, .soft = 0, .hard = 0}, true},
  };
  const rfkill_event bluetooth{.idx = 9, .type = RFKILL_TYPE_BLUETOOTH, .op = RFKILL_OP_ADD, .soft = 0, .hard = 0};
  for (const auto& step : steps) {
    int heard = 0;
    const auto connection = QObject::connect(&switches, &RfkillSwitches::changed, &switches, [&] { ++heard; });
    ASSERT_EQ(::write(writer, &bluetooth, sizeof bluetooth), static_cast<ssize_t>(sizeof bluetooth));
    ASSERT_EQ(::write(writer, &step.event, sizeof step.event), static_cast<ssize_t>(sizeof step.event));
    while (heard == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(switches.wifiBlocked(), step.blocked) << step.what;
    QObject::disconnect(connection);
  }
  ::close(writer);
}

}  // namespace
}  // namespace tarnwick
