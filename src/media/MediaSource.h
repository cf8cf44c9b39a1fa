#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

#include "media/ports/Players.h"

namespace tarnwick {

/// Whose playback is shown and controlled: that of the desktop, of one service, or of any other player by its name.
/// A value; the settings keep rawValue().
class MediaSource {
 public:
  /// Those that have a title of their own, in the order in which they are offered. The others are players.
  enum class Case { System, Music, Spotify, Safari, Chrome, Brave, Arc, Dia, Player };

  MediaSource() = default;
  /// From what the settings keep; what they cannot mean here is the desktop's.
  explicit MediaSource(const QString& rawValue);
  static MediaSource of(const MediaPlayer& player);

  static MediaSource system() { return {}; }

  Case which() const { return case_; }
  /// What a user calls it. `players` are those that run: a player says itself what it is called.
  QString title(const QList<MediaPlayer>& players = {}) const;
  const QString& rawValue() const { return raw_; }
  /// Of Player alone.
  QString playerName() const;
  bool isSystem() const { return case_ == Case::System; }
  /// It is a video in a browser.
  bool isBrowser() const;

  /// Of those that run the one that it means, which is the first that fits; absent for none.
  std::optional<MediaPlayer> playerAmong(const QList<MediaPlayer>& players) const;
  /// What can be chosen while these run. The source that is in use is always among it.
  static QList<MediaSource> offered(const QList<MediaPlayer>& players, const MediaSource& current);

  /// What plays a video of the web, or may: of those that tell no address a browser.
  static std::optional<MediaPlayer> anyVideo(const QList<MediaPlayer>& players);
  /// Whether an address is that of a video which a browser source shows.
  static bool isVideo(const QUrl& address);

  bool operator==(const MediaSource& other) const { return raw_ == other.raw_; }

 private:
  Case case_ = Case::System;
  QString raw_ = QStringLiteral("system");
};

}  // namespace tarnwick
