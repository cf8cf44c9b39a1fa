#include <gtest/gtest.h>

#include <QDBusObjectPath>
#include <limits>

#include "base/Scheduler.h"
#include "platform/dbus/MprisPlayers.h"
#include "platform_dbus/FakeService.h"
#include "platform_dbus/PrivateBus.h"
#include "support/RealPlayer.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Status = MediaPlayer::Status;

const QString kMpris = u"org.mpris.MediaPlayer2"_s;
const QString kMprisPath = u"/org/mpris/MediaPlayer2"_s;
const QString kMprisPlayer = u"org.mpris.MediaPlayer2.Player"_s;

struct PlayersTest : ::testing::Test {
  std::unique_ptr<FakeService> fake(const QString& name, const QVariantMap& properties) {
    auto made = std::make_unique<FakeService>(bus.connection(), kMpris + u'.' + name);
    made->setProperty(kMprisPath, kMpris, u"Identity"_s, name.toUpper());
    for (auto each = properties.cbegin(); each != properties.cend(); ++each)
      made->setProperty(kMprisPath, kMprisPlayer, each.key(), each.value());
    return made;
  }
  MediaPlayer of(const QString& name) const {
    for (const MediaPlayer& each : players.all())
      if (each.name == name) return each;
    return {};
  }
  bool becomes(const QString& name, Status status) {
    return waitFor([&] { return of(name).isRead && of(name).status == status; });
  }

  PrivateBus bus;
  SystemScheduler scheduler;
  MprisPlayers players{bus.connection(), scheduler};
  QObject context;
};

QVariantMap metadata(const QVariantMap& entries) { return {{u"Metadata"_s, entries}}; }

TEST_F(PlayersTest, AreFollowedByWhatTheyAnnounce) {
  auto first =
      fake(u"first.instance42"_s, {{u"PlaybackStatus"_s, u"Paused"_s},
                                   {u"CanSeek"_s, true},
                                   {u"CanControl"_s, true},
                                   {u"Position"_s, qlonglong{12'000'000}},
                                   {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, u"Still Water"_s},
                                                               {u"xesam:artist"_s, QStringList{u"M"_s, u"F"_s}},
                                                               {u"mpris:length"_s, qlonglong{200'000'000}}}}});
  EXPECT_TRUE(players.all().isEmpty()) << "nobody asked";
  players.follow(true);
  ASSERT_TRUE(becomes(u"first"_s, Status::Paused));
  EXPECT_EQ(of(u"first"_s).track, u"Still Water"_s);
  EXPECT_EQ(of(u"first"_s).artist, u"M, F"_s);
  EXPECT_DOUBLE_EQ(of(u"first"_s).duration, 200);
  EXPECT_DOUBLE_EQ(of(u"first"_s).elapsed, 12);
  EXPECT_TRUE(waitFor([&] { return of(u"first"_s).title == u"FIRST.INSTANCE42"_s; }));

  auto second = fake(u"second"_s, {{u"PlaybackStatus"_s, u"Playing"_s}});
  ASSERT_TRUE(becomes(u"second"_s, Status::Playing));
  EXPECT_EQ(players.all().first().name, u"second"_s);
  first->setProperty(kMprisPath, kMprisPlayer, u"Position"_s, qlonglong{50'000'000});
  first->setProperty(kMprisPath, kMprisPlayer, u"PlaybackStatus"_s, u"Playing"_s);
  ASSERT_TRUE(becomes(u"first"_s, Status::Playing));
  EXPECT_EQ(players.all().first().name, u"first"_s) << "the one that began last";
  EXPECT_TRUE(waitFor([&] { return of(u"first"_s).elapsed == 50; })) << "its place is asked for once";
  first->emitSignal(kMprisPath, kMprisPlayer, u"Seeked"_s, {qlonglong{9'000'000}});
  EXPECT_TRUE(waitFor([&] { return of(u"first"_s).elapsed == 9; }));

  second.reset();
  EXPECT_TRUE(waitFor([&] { return players.all().size() == 1; }));
  players.follow(false);
  EXPECT_TRUE(players.all().isEmpty());
}

TEST_F(PlayersTest, MaySayAnything) {
  const QString huge(1'000'000, u'x');
  const QVariantMap nested{{u"a"_s, QVariantMap{{u"b"_s, 1}}}};
  const struct {
    const char* what;
    QVariantMap properties;
  } cases[] = {
      {"a number for a title", metadata({{u"xesam:title"_s, 7}, {u"mpris:length"_s, u"long"_s}})},
      {"a huge title", metadata({{u"xesam:title"_s, huge}})},
      {"negative", metadata({{u"mpris:length"_s, qlonglong{-5}}})},
      {"a map for a cover", metadata({{u"mpris:artUrl"_s, nested}, {u"xesam:artist"_s, nested}})},
      {"a huge address", metadata({{u"mpris:artUrl"_s, huge}, {u"xesam:url"_s, huge}})},
      {"no map", {{u"Metadata"_s, u"no map"_s}}},
      {"a list", {{u"Metadata"_s, QStringList{u"no map"_s}}}},
      {"a number for a status", {{u"PlaybackStatus"_s, 3}}},
      {"an endless place", {{u"Position"_s, std::numeric_limits<double>::infinity()}}},
  };
  players.follow(true);
  int number = 0;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    const QString name = u"odd%1"_s.arg(++number);
    const auto odd = fake(name, each.properties);
    ASSERT_TRUE(waitFor([&] { return of(name).isRead; }));
    const MediaPlayer said = of(name);
    EXPECT_LE(said.track.size(), 310);
    EXPECT_EQ(said.duration, 0);
    EXPECT_EQ(said.elapsed, 0);
    EXPECT_TRUE(said.artwork.isEmpty() && said.address.isEmpty() && said.artist.isEmpty());
  }
}

TEST_F(PlayersTest, TakeCommandsTheyCan) {
  QStringList called;
  auto odd =
      fake(u"odd"_s, {{u"PlaybackStatus"_s, u"Playing"_s},
                      {u"CanGoNext"_s, false},
                      {u"CanSeek"_s, true},
                      {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, u"A"_s},
                                                  {u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(u"/1"_s))},
                                                  {u"mpris:length"_s, qlonglong{90'000'000}}}}});
  odd->answer(u"SetPosition"_s, [&](const QDBusMessage& message) {
    called << u"%1 %2"_s.arg(message.arguments()[0].value<QDBusObjectPath>().path())
                  .arg(message.arguments()[1].toLongLong());
    return QVariantList{true};
  });
  odd->answer(u"PlayPause"_s, {});
  players.follow(true);
  ASSERT_TRUE(becomes(u"odd"_s, Status::Playing));
  const auto takes = [&](const MediaAction& action) {
    std::optional<bool> taken;
    players.act(kMpris + u".odd"_s, action, &context, [&](bool is) { taken = is; });
    EXPECT_FALSE(taken) << "later";
    EXPECT_TRUE(waitFor([&] { return taken.has_value(); }));
    return taken.value_or(false);
  };
  EXPECT_TRUE(takes({MediaAction::Kind::Seek, 30}));
  EXPECT_EQ(called, QStringList{u"/1 30000000"_s});
  EXPECT_FALSE(takes({MediaAction::Kind::Next})) << "it says that it can't";
  EXPECT_FALSE(takes({MediaAction::Kind::Toggle})) << "it refuses";
  EXPECT_FALSE(takes({MediaAction::Kind::Previous})) << "it has no such thing";
}

TEST_F(PlayersTest, AreRealPrograms) {
  RealPlayer player;
  players.follow(true);
  ASSERT_TRUE(waitFor([&] { return of(u"mpv"_s).isRead && of(u"mpv"_s).duration > 0; }));
  EXPECT_EQ(of(u"mpv"_s).track, u"Still Water"_s);
  EXPECT_NEAR(of(u"mpv"_s).duration, RealPlayer::kSeconds, 0.1);
  const QString service = of(u"mpv"_s).service;
  const auto act = [&](const MediaAction& action) {
    bool taken = false;
    players.act(service, action, &context, [&](bool is) { taken = is; });
    return waitFor([&] { return taken; });
  };
  EXPECT_TRUE(act({MediaAction::Kind::Seek, 30}));
  EXPECT_TRUE(waitFor([&] { return of(u"mpv"_s).elapsed >= 29; }));
  EXPECT_TRUE(act({MediaAction::Kind::Toggle}));
  EXPECT_TRUE(becomes(u"mpv"_s, Status::Playing));
  EXPECT_TRUE(act({MediaAction::Kind::Toggle}));
  EXPECT_TRUE(becomes(u"mpv"_s, Status::Paused));
  player.kill();
  EXPECT_TRUE(waitFor([&] { return players.all().isEmpty(); })) << "one that disappears is gone";
}

}  // namespace
}  // namespace tarnwick
