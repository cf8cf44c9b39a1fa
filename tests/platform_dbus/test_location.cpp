#include <gtest/gtest.h>

#include <QDBusObjectPath>

#include "base/Cancelled.h"
#include "platform/dbus/GeoClueLocation.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Reason = LocationFailure::Reason;

const QString kGeoClue = u"org.freedesktop.GeoClue2"_s;
const QString kGeoCluePath = u"/org/freedesktop/GeoClue2/Manager"_s;
const QString kGeoClueManager = u"org.freedesktop.GeoClue2.Manager"_s;
const QString kClient = u"org.freedesktop.GeoClue2.Client"_s;
const QString kLocation = u"org.freedesktop.GeoClue2.Location"_s;
const QString kClientPath = u"/org/freedesktop/GeoClue2/Client/7"_s;
const QString kLocationPath = u"/org/freedesktop/GeoClue2/Client/7/Location/0"_s;

QVariant path(const QString& text) { return QVariant::fromValue(QDBusObjectPath(text)); }

/// The service, with one client that a test lets find the machine.
class FakeGeoClue {
 public:
  explicit FakeGeoClue(const QDBusConnection& bus) : service_(bus, kGeoClue) {
    service_.setProperty(kGeoCluePath, kGeoClueManager, u"AvailableAccuracyLevel"_s, 8U);
    service_.setProperty(kClientPath, kClient, u"DesktopId"_s, QString());
    note(u"CreateClient"_s, [] { return QVariantList{path(kClientPath)}; });
    note(u"Start"_s, [this] {
      if (!isAnswering) return QVariantList();
      // A path that leads nowhere comes first, as long as nothing is found.
      tell(u"/"_s);
      tell(kLocationPath);
      return QVariantList();
    });
    note(u"Stop"_s, [] { return QVariantList(); });
    note(u"DeleteClient"_s, [] { return QVariantList(); });
    service_.setProperty(kLocationPath, kLocation, u"Latitude"_s, 51.9);
    service_.setProperty(kLocationPath, kLocation, u"Longitude"_s, -4.5);
  }

  void tell(const QString& location) {
    service_.emitSignal(kClientPath, kClient, u"LocationUpdated"_s, {path(u"/"_s), path(location)});
  }
  FakeService& service() { return service_; }
  bool isAnswering = true;
  QStringList calls;

 private:
  void note(const QString& method, const std::function<QVariantList()>& answer) {
    service_.answer(method, [this, method, answer](const QDBusMessage&) {
      calls << method;
      return answer();
    });
  }

  FakeService service_;
};

struct Located {
  std::stop_source stop;
  bool isOver = false;
  bool isCancelled = false;
  std::optional<Coordinate> found;
  std::optional<Reason> failure;
};

QCoro::Task<> follow(std::shared_ptr<GeoClueLocation> source, std::shared_ptr<Located> located) {
  try {
    const Coordinate found = co_await source->locate(located->stop.get_token());
    located->found = found;
  } catch (const Cancelled&) {
    located->isCancelled = true;
  } catch (const LocationFailure& failure) {
    located->failure = failure.reason();
  }
  located->isOver = true;
}

struct GeoClue : ::testing::Test {
  std::shared_ptr<Located> ask(std::chrono::milliseconds patience = GeoClueLocation::kPatience) {
    const auto located = std::make_shared<Located>();
    follow(std::make_shared<GeoClueLocation>(bus.connection(), patience), located);
    return located;
  }
  std::shared_ptr<Located> endOf(const std::shared_ptr<Located>& located) {
    EXPECT_TRUE(waitFor([&] { return located->isOver; }));
    return located;
  }
  bool isReleased(const FakeGeoClue& geoClue) {
    return waitFor([&] { return geoClue.calls.endsWith(u"DeleteClient"_s); }) && geoClue.calls.contains(u"Stop"_s);
  }

  PrivateBus bus;
};

TEST_F(GeoClue, FindsTheMachineOnceAndLeavesNoClientBehind) {
  FakeGeoClue geoClue(bus.connection());
  const auto located = endOf(ask());
  EXPECT_EQ(located->found, (Coordinate{51.9, -4.5}));
  EXPECT_TRUE(isReleased(geoClue));
  EXPECT_EQ(geoClue.calls, (QStringList{u"CreateClient"_s, u"Start"_s, u"Stop"_s, u"DeleteClient"_s}));
  EXPECT_EQ(geoClue.service().property(kClientPath, kClient, u"DesktopId"_s), u"com.brindlemoor.Tarnwick"_s);
  EXPECT_EQ(geoClue.service().property(kClientPath, kClient, u"RequestedAccuracyLevel"_s).toUInt(), 4U);
}

TEST_F(GeoClue, TellsARefusalFromLocationsThatAreOffAndFromNoService) {
  EXPECT_EQ(endOf(ask())->failure, Reason::Disabled) << "there is no such service";
  EXPECT_EQ(endOf([] {
              const auto located = std::make_shared<Located>();
              follow(std::make_shared<GeoClueLocation>(QDBusConnection(u"there is no such connection"_s)), located);
              return located;
            }())
                ->failure,
            Reason::Disabled)
      << "there is no bus";
  FakeGeoClue geoClue(bus.connection());
  geoClue.service().answer(u"Start"_s, {});
  EXPECT_EQ(endOf(ask())->failure, Reason::Refused);
  EXPECT_TRUE(isReleased(geoClue));
  geoClue.calls.clear();
  geoClue.service().setProperty(kGeoCluePath, kGeoClueManager, u"AvailableAccuracyLevel"_s, 0U);
  EXPECT_EQ(endOf(ask())->failure, Reason::Disabled);
  EXPECT_TRUE(isReleased(geoClue));
  geoClue.service().answer(u"CreateClient"_s, {});
  EXPECT_EQ(endOf(ask())->failure, Reason::Refused) << "not even a client";
}

TEST_F(GeoClue, WaitsNoLongerThanItsTime) {
  FakeGeoClue geoClue(bus.connection());
  geoClue.isAnswering = false;
  EXPECT_EQ(endOf(ask(std::chrono::milliseconds(300)))->failure, Reason::TimedOut);
  EXPECT_TRUE(isReleased(geoClue));
}

TEST_F(GeoClue, IsGivenUpAtOnceWhereverItStands) {
  FakeGeoClue geoClue(bus.connection());
  geoClue.isAnswering = false;
  const auto early = ask();
  early->stop.request_stop();
  EXPECT_TRUE(early->isCancelled);
  EXPECT_TRUE(isReleased(geoClue)) << "the client that came afterwards";
  EXPECT_FALSE(geoClue.calls.contains(u"Start"_s));
  geoClue.calls.clear();

  const auto late = ask();
  ASSERT_TRUE(waitFor([&] { return geoClue.calls.contains(u"Start"_s); }));
  late->stop.request_stop();
  EXPECT_TRUE(late->isCancelled);
  EXPECT_TRUE(isReleased(geoClue));
  geoClue.tell(kLocationPath);
  QCoreApplication::processEvents();
  EXPECT_FALSE(late->found.has_value());
}

TEST_F(GeoClue, AServiceThatEndsIsNotWaitedFor) {
  auto geoClue = std::make_unique<FakeGeoClue>(bus.connection());
  geoClue->isAnswering = false;
  const auto located = ask();
  ASSERT_TRUE(waitFor([&] { return geoClue->calls.contains(u"Start"_s); }));
  geoClue.reset();
  EXPECT_EQ(endOf(located)->failure, Reason::Disabled);
}

}  // namespace
}  // namespace tarnwick
