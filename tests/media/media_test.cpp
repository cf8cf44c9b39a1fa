#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <limits>

#include "base/DomainError.h"
#include "config/MediaConnection.h"
#include "media/MediaService.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using Status = MediaPlayer::Status;

/// Players that answer when the test says so.
struct TestPlayers final : Players {
  void follow(bool wanted) override {
    isFollowed = wanted;
    ++follows;
  }
  bool isAvailable() const override { return isThere; }
  bool isKnown() const override { return isListed; }
  QList<MediaPlayer> all() const override { return isFollowed && isListed ? players : QList<MediaPlayer>(); }
  void read(const QString& service, QObject*, std::function<void(bool)> done) override {
    asked << (service.isEmpty() ? u"all"_s : service);
    waiting << std::move(done);
  }
  void act(const QString& service, const MediaAction& action, QObject*, std::function<void(bool)> done) override {
    acted.append({service, action});
    done(takes);
  }
  void answer(bool hasAnswered = true) {
    for (const auto& done : std::exchange(waiting, {})) done(hasAnswered);
  }

  QList<MediaPlayer> players;
  bool isThere = true, isListed = true, takes = true, isFollowed = false;
  int follows = 0;
  QStringList asked;
  QList<std::function<void(bool)>> waiting;
  QList<std::pair<QString, MediaAction>> acted;
};

MediaPlayer player(const QString& name, Status status, const QString& track) {
  MediaPlayer made;
  made.service = u"org.mpris.MediaPlayer2."_s + name + u".instance7"_s;
  made.name = name;
  made.isRead = true;
  made.status = status;
  made.track = track;
  made.artist = u"Marlow & Finch"_s;
  made.duration = 200;
  made.elapsed = 40;
  made.canSeek = true;
  return made;
}

QByteArray png(int size = 8) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImage image(size, size, QImage::Format_RGB32);
  image.fill(Qt::red);
  image.save(&buffer, "png");
  return bytes;
}

struct MediaTest : ::testing::Test {
  MediaTest() {
    QObject::connect(&media, &MediaService::connectionChanged, &media, [this](const std::optional<QString>& source) {
      MediaConnection::set(config, source);
      ++stored;
      follow();
    });
    QObject::connect(&media, &MediaService::changed, &media, [this] { ++changes; });
  }
  void follow(bool isShown = true) {
    ActiveSets active;
    if (isShown) active = ActiveSets::of({{QUuid::createUuid(), kind::nowPlayingMini.toString(), {}, {}}});
    media.follow(config, active);
  }
  void tell(const QList<MediaPlayer>& players_) {
    players.players = players_;
    for (MediaPlayer& each : players.players) each.read = time.now();
    Q_EMIT players.changed();
  }

  test::TestScheduler time;
  TestPlayers players;
  QStringList fetched;
  std::function<void(const std::optional<QByteArray>&)> fetch;
  DockConfiguration config;
  int stored = 0, changes = 0;
  MediaService media{
      {.scheduler = time, .players = players, .fetch = [this](const QUrl& address, auto done) -> std::shared_ptr<void> {
         fetched << address.toString();
         fetch = done;
         return std::make_shared<int>();
       }}};
};

TEST(Playback, GoesOnByItselfWhereItsLengthIsKnown) {
  const QDateTime then(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
  const double infinite = std::numeric_limits<double>::infinity();
  const struct {
    double duration, elapsed;
    bool playing;
    int later;
    double position;
  } cases[] = {{200, 40, true, 5, 45},      {200, 40, false, 5, 40}, {200, 40, true, -5, 40},
               {200, 198, true, 5, 200},    {0, 40, true, 5, 40},    {-1, 40, true, 5, 40},
               {infinite, 40, true, 5, 40}, {200, -3, true, 5, 5},   {200, infinite, true, 5, 5}};
  for (const auto& each : cases) {
    PlaybackSnapshot snapshot = PlaybackSnapshot::empty(then);
    snapshot.duration = each.duration;
    snapshot.elapsed = each.elapsed;
    snapshot.playing = each.playing;
    EXPECT_DOUBLE_EQ(snapshot.position(then.addSecs(each.later)), each.position)
        << each.duration << ' ' << each.elapsed;
  }
  EXPECT_EQ(PlaybackSnapshot::seek(-1, 200), 0);
  EXPECT_EQ(PlaybackSnapshot::seek(300, 200), 200);
  for (const auto& [position, duration] : {std::pair{5.0, 0.0}, {infinite, 200.0}, {5.0, infinite}})
    EXPECT_THROW(PlaybackSnapshot::seek(position, duration), DomainError);
}

TEST(Sources, MeanThePlayersThatRun) {
  MediaPlayer music = player(u"spotify"_s, Status::Paused, u"Still Water"_s);
  MediaPlayer film = player(u"mpv"_s, Status::Stopped, u"Film"_s);
  MediaPlayer browser = player(u"firefox"_s, Status::Playing, u"Video"_s);
  MediaPlayer chromium = player(u"chromium"_s, Status::Paused, u"Radio"_s);
  const auto serviceOf = [](const QString& source, const QList<MediaPlayer>& among) {
    const auto found = MediaSource(source).playerAmong(among);
    return found ? found->name : QString();
  };
  EXPECT_EQ(serviceOf(u"system"_s, {music, film, browser}), u"firefox"_s);
  EXPECT_EQ(serviceOf(u"system"_s, {film, music}), u"mpv"_s) << "the one that played last";
  EXPECT_EQ(serviceOf(u"spotify"_s, {film, music}), u"spotify"_s);
  EXPECT_EQ(serviceOf(u"org.mpris.MediaPlayer2.mpv"_s, {music, film}), u"mpv"_s);
  EXPECT_EQ(serviceOf(u"org.mpris.MediaPlayer2.vlc"_s, {music, film}), QString());
  // A video is where its address says, in whatever program; else in a browser that tells none.
  EXPECT_EQ(serviceOf(u"chrome"_s, {music, film}), QString());
  EXPECT_EQ(serviceOf(u"chrome"_s, {music, browser}), u"firefox"_s);
  film.address = QUrl(u"https://www.youtube.com/watch?v=1"_s);
  EXPECT_EQ(serviceOf(u"chrome"_s, {browser, film}), u"mpv"_s);
  chromium.address = QUrl(u"https://music.youtube.com/watch?v=2"_s);
  EXPECT_EQ(serviceOf(u"chrome"_s, {film, chromium}), u"chromium"_s);
  EXPECT_EQ(serviceOf(u"brave"_s, {film, chromium}), u"mpv"_s);
  EXPECT_FALSE(MediaSource::isVideo(QUrl(u"https://www.youtube.com.example.org/"_s)));
  // What nothing here stands for is what the desktop plays.
  for (const QString& raw : {u"music"_s, u"safari"_s, u"dia"_s, u"nonsense"_s, QString()})
    EXPECT_TRUE(MediaSource(raw).isSystem()) << raw.toStdString();

  film.title = u"mpv Media Player"_s;
  QStringList titles;
  const QList<MediaPlayer> running{music, film};
  for (const MediaSource& source : MediaSource::offered(running, MediaSource(u"org.mpris.MediaPlayer2.vlc"_s)))
    titles << source.title(running);
  EXPECT_EQ(titles, (QStringList{u"System Now Playing"_s, u"Spotify"_s, u"Chrome · YouTube"_s, u"Brave · YouTube"_s,
                                 u"mpv Media Player"_s, u"Vlc"_s}));
}

TEST_F(MediaTest, FollowsWhatPlaysWhileItIsShown) {
  players.players = {player(u"mpv"_s, Status::Playing, u"Still Water"_s)};
  follow(false);
  EXPECT_FALSE(players.isFollowed) << "nobody sees it";
  follow();
  EXPECT_TRUE(players.isFollowed && media.connected() && media.loading());
  players.answer();
  EXPECT_EQ(media.snapshot().title, u"Still Water"_s);
  EXPECT_EQ(media.snapshot().source, u"Mpv"_s);
  EXPECT_TRUE(media.canSeek());

  // What comes thick is shown a few times a second; what is the same is not told.
  changes = 0;
  for (int i = 0; i < 50; ++i) {
    tell({player(u"mpv"_s, Status::Playing, u"Track %1"_s.arg(i))});
    time.advance(0.02);
  }
  EXPECT_LE(changes, 6);
  time.advance(1);
  EXPECT_EQ(media.snapshot().title, u"Track 49"_s);
  changes = 0;
  auto further = player(u"mpv"_s, Status::Playing, u"Track 49"_s);
  further.elapsed = media.snapshot().position(time.now());
  tell({further});
  EXPECT_EQ(changes, 0);

  tell({});
  time.advance(1);
  EXPECT_EQ(media.error(), u"No system media metadata is available. You can connect a player directly."_s);
  EXPECT_EQ(media.snapshot().title, u"Nothing playing"_s);
  follow(false);
  EXPECT_FALSE(players.isFollowed);
  EXPECT_EQ(stored, 0) << "nothing was chosen";
}

TEST_F(MediaTest, IsConnectedAsTheUserLeftIt) {
  players.players = {player(u"spotify"_s, Status::Playing, u"Song"_s)};
  follow();
  players.answer();
  media.disconnect(true);
  EXPECT_FALSE(media.connected() || players.isFollowed);
  EXPECT_EQ(MediaConnection::of(config), std::nullopt);
  media.refresh();
  media.control({});
  EXPECT_TRUE(players.waiting.isEmpty() && players.acted.isEmpty());
  media.connectTo(MediaSource(u"spotify"_s));
  players.answer();
  EXPECT_EQ(config.rememberedMediaSource, u"spotify"_s);
  EXPECT_EQ(media.snapshot().title, u"Song"_s);
  stored = 0;
  media.connectTo(MediaSource(u"spotify"_s));
  EXPECT_EQ(stored, 0) << "only read anew";
  EXPECT_EQ(players.waiting.size(), 1);
  // An import brings another one; nothing is stored for that.
  config.rememberedMediaSource = u"org.mpris.MediaPlayer2.mpv"_s;
  follow();
  players.answer();
  EXPECT_EQ(media.error(), u"Open Mpv, then refresh."_s);
  EXPECT_EQ(stored, 0);
  media.end();
  EXPECT_EQ(config.rememberedMediaSource, u"org.mpris.MediaPlayer2.mpv"_s);
}

TEST_F(MediaTest, DropsWhatComesTooLate) {
  players.players = {player(u"mpv"_s, Status::Paused, u"Film"_s)};
  follow();
  const auto late = players.waiting;
  time.advance(MediaService::kWatchdog);
  EXPECT_EQ(media.error(), u"System media did not respond. Connect a player directly."_s);
  EXPECT_FALSE(media.loading());
  for (const auto& done : late) done(true);
  EXPECT_EQ(media.snapshot().title, u"Nothing playing"_s);

  media.refresh();
  const auto left = players.waiting;
  media.connectTo(MediaSource(u"org.mpris.MediaPlayer2.vlc"_s));
  for (const auto& done : left) done(true);
  EXPECT_EQ(media.snapshot().title, u"Nothing playing"_s);
  EXPECT_EQ(media.error(), u"Open Vlc, then refresh."_s);

  // One that was chosen has its own time.
  media.connectTo(MediaSource(u"org.mpris.MediaPlayer2.mpv"_s));
  time.advance(MediaService::kWatchdog + 1);
  EXPECT_TRUE(media.loading());
  players.answer(false);
  EXPECT_EQ(media.error(), u"The player returned no metadata."_s);

  // It is not known yet who runs.
  players.isListed = false;
  players.waiting.clear();
  media.refresh();
  EXPECT_TRUE(media.loading() && players.waiting.isEmpty());
  players.isListed = true;
  Q_EMIT players.changed();
  players.answer();
  EXPECT_EQ(media.snapshot().title, u"Film"_s);

  players.isThere = false;
  media.refresh();
  EXPECT_EQ(media.error(), u"System media is unavailable on this macOS version. Connect a player directly."_s);
}

TEST_F(MediaTest, SendsCommandsToWhatIsShown) {
  players.players = {player(u"mpv"_s, Status::Paused, u"Film"_s)};
  follow();
  players.answer();
  const QString service = players.players[0].service;
  media.control({MediaAction::Kind::Seek, 500});
  EXPECT_EQ(players.acted.last(), std::pair(service, MediaAction{MediaAction::Kind::Seek, 200}));
  media.control({MediaAction::Kind::Next});
  EXPECT_EQ(players.acted.size(), 1) << "one after the other";
  players.answer();
  EXPECT_EQ(media.error(), QString());

  players.takes = false;
  media.control({MediaAction::Kind::Next});
  players.answer();
  EXPECT_EQ(media.error(), u"This playback command is unavailable."_s);
  Q_EMIT players.changed();
  time.advance(1);
  EXPECT_EQ(media.error(), u"This playback command is unavailable."_s) << "until something else is played";
  tell({player(u"mpv"_s, Status::Playing, u"Next"_s)});
  time.advance(1);
  EXPECT_EQ(media.error(), QString());

  auto stream = player(u"mpv"_s, Status::Playing, u"Radio"_s);
  stream.duration = 0;
  tell({stream});
  time.advance(1);
  players.acted.clear();
  media.control({MediaAction::Kind::Seek, 5});
  EXPECT_EQ(media.error(), u"This item has no seekable timeline."_s);
  EXPECT_TRUE(players.acted.isEmpty() && !media.loading());
  tell({});
  time.advance(1);
  media.control({});
  EXPECT_TRUE(players.acted.isEmpty());
}

TEST_F(MediaTest, ShowsCoversFromFilesAndTheOneHost) {
  QTemporaryDir folder;
  const auto write = [&](const QString& name, const QByteArray& bytes) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return QUrl::fromLocalFile(file.fileName());
  };
  const auto play = [&](const QUrl& cover) {
    auto playing = player(u"mpv"_s, Status::Playing, cover.toString());
    playing.artwork = cover;
    tell({playing});
    time.advance(1);
  };
  players.players = {player(u"mpv"_s, Status::Playing, u"Film"_s)};
  follow();
  players.answer();
  play(write(u"cover.png"_s, png()));
  ASSERT_TRUE(waitFor([&] { return !media.cover().isNull(); }));
  EXPECT_EQ(media.snapshot().artwork, png());
  Q_EMIT players.changed();
  EXPECT_FALSE(media.cover().isNull()) << "the same is not loaded anew";

  // What is no picture leaves none, and the next one comes nevertheless.
  const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>";
  for (const QUrl& bad :
       {write(u"cover.svg"_s, svg), write(u"text.png"_s, "no picture"), QUrl(u"file:///dev/zero"_s),
        QUrl(u"file:///nowhere.png"_s), QUrl(u"http://i.scdn.co/1"_s), QUrl(u"https://scdn.co/1"_s)}) {
    play(bad);
    EXPECT_TRUE(media.cover().isNull()) << bad.toString().toStdString();
  }
  EXPECT_TRUE(fetched.isEmpty());
  play(QUrl(u"https://i.scdn.co/image/1"_s));
  const auto late = fetch;
  play(QUrl(u"https://i.scdn.co/image/2"_s));
  late(png());
  fetch(png(600));
  ASSERT_TRUE(waitFor([&] { return !media.cover().isNull(); }));
  EXPECT_EQ(media.cover().width(), Artwork::kPixels) << "the later one, made small";
  QByteArray large = png();
  large.append(QByteArray(Artwork::kMostBytes - large.size(), '\0'));
  EXPECT_TRUE(Artwork::decode(large));
  EXPECT_FALSE(Artwork::decode(large + '\0'));
}

TEST(MediaConnections, OutliveOthersAndAreTakenAwayByTheUserAlone) {
  DockConfiguration config;
  EXPECT_EQ(MediaConnection::of(config), u"system"_s);
  config.nativeConnections = QStringList{u"calendarFolder:/home"_s};
  MediaConnection::set(config, u"spotify"_s);
  EXPECT_EQ(MediaConnection::of(config), u"spotify"_s);
  MediaConnection::set(config, std::nullopt);
  EXPECT_EQ(MediaConnection::of(config), std::nullopt);
  EXPECT_EQ(config.nativeConnections, QStringList{u"calendarFolder:/home"_s});
}

}  // namespace
}  // namespace tarnwick
