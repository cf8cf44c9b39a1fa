#include "media/MediaSource.h"

#include <algorithm>
#include <array>

#include "media/MediaWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What a player is remembered by begins so, like its name on the bus.
constexpr auto kPlayers = "org.mpris.MediaPlayer2."_L1;

struct Row {
  MediaSource::Case which;
  QLatin1StringView raw;
  const char* title;
  std::array<QLatin1StringView, 3> players;  ///< Their names here; none where nothing of the kind runs here.
};

constexpr std::array kRows = {
    Row{MediaSource::Case::System, "system"_L1, QT_TRANSLATE_NOOP("MediaWords", "System Now Playing"), {}},
    Row{MediaSource::Case::Music, "music"_L1, QT_TRANSLATE_NOOP("MediaWords", "Apple Music"), {}},
    Row{MediaSource::Case::Spotify, "spotify"_L1, QT_TRANSLATE_NOOP("MediaWords", "Spotify"), {"spotify"_L1}},
    Row{MediaSource::Case::Safari, "safari"_L1, QT_TRANSLATE_NOOP("MediaWords", "Safari · YouTube"), {}},
    Row{MediaSource::Case::Chrome,
        "chrome"_L1,
        QT_TRANSLATE_NOOP("MediaWords", "Chrome · YouTube"),
        {"chrome"_L1, "chromium"_L1}},
    Row{MediaSource::Case::Brave, "brave"_L1, QT_TRANSLATE_NOOP("MediaWords", "Brave · YouTube"), {"brave"_L1}},
    Row{MediaSource::Case::Arc, "arc"_L1, QT_TRANSLATE_NOOP("MediaWords", "Arc · YouTube"), {}},
    Row{MediaSource::Case::Dia, "dia"_L1, QT_TRANSLATE_NOOP("MediaWords", "Dia · YouTube"), {}},
};

/// Programs that browse the web, as their players are called.
constexpr std::array kBrowsers = {"chrome"_L1,  "chromium"_L1, "brave"_L1,    "firefox"_L1,
                                  "vivaldi"_L1, "opera"_L1,    "epiphany"_L1, "plasma-browser-integration"_L1};

bool isBrowserPlayer(const MediaPlayer& player) {
  return std::ranges::any_of(kBrowsers, [&](QLatin1StringView name) { return player.name == name; });
}

const Row* rowOf(MediaSource::Case which) {
  const auto* const row = std::ranges::find(kRows, which, &Row::which);
  return row == kRows.end() ? nullptr : row;
}

/// Sources of which nothing runs on this desktop are not offered, and mean what the desktop plays.
bool runsHere(const Row& row) { return row.which == MediaSource::Case::System || !row.players.front().isEmpty(); }

bool isOf(const Row& row, const MediaPlayer& player) {
  return std::ranges::any_of(row.players,
                             [&](QLatin1StringView name) { return !name.isEmpty() && player.name == name; });
}

template <class Fits>
std::optional<MediaPlayer> firstOf(const QList<MediaPlayer>& players, const Fits& fits) {
  const auto found = std::ranges::find_if(players, fits);
  return found == players.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

MediaSource::MediaSource(const QString& rawValue) {
  const auto* const row = std::ranges::find(kRows, rawValue, &Row::raw);
  if (row != kRows.end() && runsHere(*row)) {
    case_ = row->which;
    raw_ = rawValue;
  } else if (rawValue.startsWith(kPlayers) && rawValue.size() > kPlayers.size()) {
    case_ = Case::Player;
    raw_ = rawValue;
  }
}

MediaSource MediaSource::of(const MediaPlayer& player) {
  for (const Row& row : kRows)
    if (row.which == Case::Spotify && isOf(row, player)) return MediaSource(QString(row.raw));
  return MediaSource(kPlayers + player.name);
}

QString MediaSource::playerName() const { return case_ == Case::Player ? raw_.sliced(kPlayers.size()) : QString(); }

bool MediaSource::isBrowser() const { return case_ == Case::Chrome || case_ == Case::Brave; }

QString MediaSource::title(const QList<MediaPlayer>& players) const {
  if (const Row* const row = rowOf(case_)) return MediaWords::tr(row->title);
  const auto player = playerAmong(players);
  if (player && !player->title.isEmpty()) return player->title;
  QString name = playerName();
  if (!name.isEmpty()) name[0] = name[0].toUpper();
  return name;
}

std::optional<MediaPlayer> MediaSource::playerAmong(const QList<MediaPlayer>& players) const {
  if (case_ == Case::Player)
    return firstOf(players, [this](const MediaPlayer& player) { return player.name == playerName(); });
  if (isSystem()) {
    const auto playing = firstOf(players, [](const MediaPlayer& player) {
      return player.isRead && player.status == MediaPlayer::Status::Playing;
    });
    return playing ? playing : firstOf(players, [](const MediaPlayer& player) { return player.isRead; });
  }
  const Row& row = *rowOf(case_);
  if (!isBrowser()) return firstOf(players, [&](const MediaPlayer& player) { return isOf(row, player); });
  const auto own =
      firstOf(players, [&](const MediaPlayer& player) { return isOf(row, player) && isVideo(player.address); });
  return own ? own : anyVideo(players);
}

std::optional<MediaPlayer> MediaSource::anyVideo(const QList<MediaPlayer>& players) {
  const auto told = firstOf(players, [](const MediaPlayer& player) { return isVideo(player.address); });
  if (told) return told;
  return firstOf(players,
                 [](const MediaPlayer& player) { return isBrowserPlayer(player) && player.address.isEmpty(); });
}

QList<MediaSource> MediaSource::offered(const QList<MediaPlayer>& players, const MediaSource& current) {
  QList<MediaSource> sources;
  const auto add = [&](const MediaSource& source) {
    if (!sources.contains(source)) sources.append(source);
  };
  for (const Row& row : kRows) {
    const MediaSource source{QString(row.raw)};
    if (!runsHere(row)) continue;
    if (source.isSystem() || source == current || source.playerAmong(players)) add(source);
  }
  for (const MediaPlayer& player : players) add(of(player));
  add(current);
  return sources;
}

bool MediaSource::isVideo(const QUrl& address) {
  constexpr std::array kHosts = {"www.youtube.com"_L1, "youtube.com"_L1, "m.youtube.com"_L1, "music.youtube.com"_L1};
  const QString host = address.host();
  return std::ranges::any_of(kHosts, [&](QLatin1StringView one) { return host == one; });
}

}  // namespace tarnwick
