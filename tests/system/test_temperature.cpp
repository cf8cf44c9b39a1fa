#include <QCoreApplication>
#include <QtEndian>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

#include "platform/linux/SensorTemperatures.h"
#include "support/FileTest.h"
#include "support/Wait.h"
#include "system/SmcTemperatures.h"
#include "system/SystemTemperature.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// A controller that holds what a test puts in, and refuses where a call is not as it must be.
struct ScriptedController final : SmcTransport {
  struct Key {
    const char* type;
    QByteArray bytes;
    int fails = 0;              ///< What the call itself returns.
    quint8 result = 0;          ///< What the controller says.
    std::size_t answered = 80;  ///< Bytes that come back.
    quint32 size = 0;           ///< Where it is not that of the bytes.
  };
  std::map<std::string, Key> keys;
  bool isThere = true;
  QStringList asked;
  int opened = 0;

  bool open() override {
    opened += isThere ? 1 : 0;
    return isThere;
  }
  void close() override { --opened; }

  int call(const SmcRecord& question, SmcRecord& answer, std::size_t& answered) override {
    quint32 name = 0;
    std::memcpy(&name, question.data(), 4);
    std::array<char, 5> text{};
    qToBigEndian(name, text.data());
    const quint8 command = question[42];
    if (command == 9) asked.append(QString::fromLatin1(text.data()));
    const auto found = keys.find(text.data());
    if (found == keys.end()) {
      answer[40] = 132;
      return 0;
    }
    const Key& key = found->second;
    const quint32 size = key.size ? key.size : static_cast<quint32>(key.bytes.size());
    if (command == 9) {
      const auto type = qFromBigEndian<quint32>(key.type);
      std::memcpy(answer.data() + 28, &size, 4);
      std::memcpy(answer.data() + 32, &type, 4);
    } else {
      quint32 passed = 0;
      std::memcpy(&passed, question.data() + 28, 4);
      if (command != 5 || passed != size) return 1;
      std::memcpy(answer.data() + 48, key.bytes.constData(), static_cast<std::size_t>(key.bytes.size()));
    }
    answer[40] = key.result;
    answered = key.answered;
    return key.fails;
  }
};

QByteArray number(float value) { return QByteArray(reinterpret_cast<const char*>(&value), 4); }

TEST(SmcTemperatures, AKeyGivesAPlausibleTemperatureOrNothing) {
  constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
  const struct {
    const char* what;
    ScriptedController::Key key;
    std::optional<double> value;
  } cases[] = {
      {"fixed point", {"sp78", "\x2A\x80"}, 42.5},
      {"below zero", {"sp78", QByteArray("\xD8\x00", 2)}, -40.0},
      {"too cold", {"sp78", "\xD7\xFF"}, {}},
      {"a float", {"flt ", number(61.25f)}, 61.25},
      {"the highest", {"flt ", number(150.0f)}, 150.0},
      {"too hot", {"flt ", number(151.0f)}, {}},
      {"no number", {"flt ", number(kNaN)}, {}},
      {"another type", {"ui8 ", "\x2A"}, {}},
      {"fixed point of another size", {"sp78", "\x2A\x80\x01"}, {}},
      {"a float of another size", {"flt ", "\x2A\x80"}, {}},
      {"no bytes", {"sp78", ""}, {}},
      {"more bytes than there is room for", {.type = "sp78", .bytes = "\x2A\x80", .size = 33}, {}},
      {"the call fails", {.type = "sp78", .bytes = "\x2A\x80", .fails = 5}, {}},
      {"the controller says no", {.type = "sp78", .bytes = "\x2A\x80", .result = 1}, {}},
      {"half an answer", {.type = "sp78", .bytes = "\x2A\x80", .answered = 76}, {}},
  };
  for (const auto& c : cases) {
    ScriptedController controller;
    controller.keys["TC0P"] = c.key;
    double value = -1000.0;
    EXPECT_EQ(read_key(controller, "TC0P", &value), c.value ? 1 : 0) << c.what;
    EXPECT_EQ(value, c.value.value_or(-1000.0)) << c.what;
  }
}

TEST(SmcTemperatures, OlderKeysAreReadOnlyWhereNewOnesGiveNothing) {
  const QStringList primary{u"Tp09"_s, u"Tp0T"_s, u"Tp01"_s, u"Tp05"_s, u"Tp0D"_s, u"Tp0H"_s, u"Tp06"_s, u"Tp0E"_s};
  const QStringList all = primary + QStringList{u"TC0P"_s, u"TC0D"_s, u"TC0E"_s};
  const struct {
    const char* what;
    std::map<std::string, float> keys;
    quint32 capacity;
    QList<double> values;
    QStringList asked;
  } cases[] = {
      {"new ones", {{"Tp0T", 50.f}, {"Tp0E", 40.f}, {"TC0P", 9.f}}, 12, {50, 40}, primary},
      {"old ones", {{"TC0E", 44.f}, {"TC0P", 55.f}}, 12, {55, 44}, all},
      {"one that says nonsense is left out", {{"Tp09", 151.f}, {"Tp01", 30.f}}, 12, {30}, primary},
      {"room for one", {{"Tp09", 41.f}, {"Tp0T", 42.f}}, 1, {41}, {u"Tp09"_s}},
      {"none", {}, 12, {}, all},
      {"no room", {{"Tp09", 41.f}}, 0, {}, {}},
  };
  for (const auto& c : cases) {
    ScriptedController controller;
    for (const auto& [key, value] : c.keys) controller.keys[key] = {"flt ", number(value)};
    std::array<double, 12> values{};
    const quint32 count = tw_smc_temperatures(controller, values.data(), c.capacity);
    EXPECT_EQ(QList<double>(values.begin(), values.begin() + count), c.values) << c.what;
    EXPECT_EQ(controller.asked, c.asked) << c.what;
    EXPECT_EQ(controller.opened, 0) << c.what;
  }
  ScriptedController controller;
  EXPECT_EQ(tw_smc_temperatures(controller, nullptr, 12), 0u);
  controller.isThere = false;
  double value = 0;
  EXPECT_EQ(tw_smc_temperatures(controller, &value, 1), 0u);
}

TEST(SystemTemperature, ShowsTheMeanAndKeepsTheLastForty) {
  int argc = 0;
  const QCoreApplication app(argc, nullptr);
  auto owned = std::make_unique<ScriptedController>();
  auto& controller = *owned;
  SystemTemperature temperature(std::make_unique<SmcTemperatures>(std::move(owned)));
  int changes = 0;
  QObject::connect(&temperature, &SystemTemperature::changed, &temperature, [&] { ++changes; });
  const auto refresh = [&] {
    const int before = changes;
    temperature.refresh();
    temperature.refresh();
    EXPECT_TRUE(temperature.busy());
    EXPECT_TRUE(waitFor([&] { return changes > before; }));
    EXPECT_EQ(changes, before + 1);
    EXPECT_FALSE(temperature.busy());
  };
  refresh();
  EXPECT_EQ(temperature.celsius(), std::nullopt);
  for (int i = 0; i < 41; ++i) {
    controller.keys["Tp09"] = {"flt ", number(static_cast<float>(i))};
    controller.keys["Tp0T"] = {"flt ", number(static_cast<float>(i + 10))};
    refresh();
  }
  EXPECT_EQ(temperature.celsius(), 45.0);
  EXPECT_EQ(temperature.sensorCount(), 2);
  controller.isThere = false;
  refresh();
  EXPECT_EQ(temperature.celsius(), std::nullopt);
  EXPECT_EQ(temperature.sensorCount(), 0);
  ASSERT_EQ(temperature.history().size(), 40);
  EXPECT_EQ(temperature.history().first(), 6.0);
  EXPECT_EQ(temperature.history().last(), 45.0);
}

TEST_F(FolderTest, TheKernelsSensorsStandForTheController) {
  // "chip file=text": what a sensor's folder holds.
  const struct {
    const char* what;
    const char* files;
    QList<double> values;
  } cases[] = {
      {"nothing", "", {}},
      {"the package speaks for its cores",
       "hwmon/a name=coretemp,hwmon/a temp1_input=61000,hwmon/a temp1_label=Package id 0,hwmon/a temp2_input=58000,"
       "hwmon/a temp2_label=Core 0,hwmon/b name=nvme,hwmon/b temp1_input=40000,"
       "thermal/thermal_zone0 type=x86_pkg_temp,thermal/thermal_zone0 temp=62000",
       {61}},
      {"the die before what is made up for the fans",
       "hwmon/a name=k10temp,hwmon/a temp1_input=87250,hwmon/a temp1_label=Tctl,hwmon/a temp2_input=60250,"
       "hwmon/a temp2_label=Tdie",
       {60.25}},
      {"cores where the package says nonsense",
       "hwmon/a name=coretemp,hwmon/a temp1_input=160000,hwmon/a temp1_label=Package id 0,hwmon/a temp2_input=50000,"
       "hwmon/a temp3_input=52000,hwmon/a temp4_input=broken,hwmon/a temp5_input=",
       {50, 52}},
      {"zones where no monitor tells",
       "hwmon/a name=coretemp,thermal/thermal_zone0 type=acpitz,thermal/thermal_zone0 temp=27800,"
       "thermal/thermal_zone1 type=cpu0-thermal,thermal/thermal_zone1 temp=-40000,"
       "thermal/thermal_zone2 type=battery,thermal/thermal_zone2 temp=30000",
       {-40}},
      {"the firmware's zone at last", "thermal/thermal_zone0 type=acpitz,thermal/thermal_zone0 temp=27800", {27.8}},
  };
  for (const auto& c : cases) {
    QDir(at(u"sys"_s)).removeRecursively();
    for (const QString& file : QString::fromLatin1(c.files).split(u',', Qt::SkipEmptyParts)) {
      const QString path = file.section(u'=', 0, 0).replace(u' ', u'/');
      put("sys/class/"_L1 + path, file.section(u'=', 1).toLatin1() + '\n');
    }
    SensorTemperatures sensors(folder_.path());
    std::array<double, 12> values{};
    const quint32 count = sensors.read(values.data(), 12);
    EXPECT_EQ(QList<double>(values.begin(), values.begin() + count), c.values) << c.what;
    EXPECT_EQ(sensors.read(values.data(), 1), std::min(count, 1u)) << c.what;
    EXPECT_EQ(sensors.read(nullptr, 12), 0u);
  }
}

TEST_F(FolderTest, ASensorThatSleepsIsNotAskedAndStandsAsItWas) {
  const QString chip = u"sys/class/hwmon/a"_s;
  const auto set = [&](const char* thousandths, const char* status) {
    put(chip + u"/temp1_input"_s, thousandths);
    put(chip + u"/device/power/runtime_status"_s, status);
  };
  put(chip + u"/name"_s, "coretemp\n");
  SensorTemperatures sensors(folder_.path());
  const auto read = [&] {
    std::array<double, 4> values{};
    const quint32 count = sensors.read(values.data(), 4);
    return QList<double>(values.begin(), values.begin() + count);
  };
  set("50000\n", "suspended\n");
  EXPECT_EQ(read(), QList<double>());
  set("50000\n", "active\n");
  EXPECT_EQ(read(), QList<double>{50});
  set("60000\n", "suspended\n");
  EXPECT_EQ(read(), QList<double>{50});
  set("60000\n", "unsupported\n");
  EXPECT_EQ(read(), QList<double>{60});
}

}  // namespace
}  // namespace tarnwick
