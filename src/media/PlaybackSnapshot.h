#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>

namespace tarnwick {

struct MediaPlayer;

/// What is asked of a player.
struct MediaAction {
  enum class Kind { Toggle, Next, Previous, Seek };

  Kind kind = Kind::Toggle;
  double position = 0;  ///< Seconds from the beginning; of Seek alone.

  bool operator==(const MediaAction&) const = default;
};

/// What is played, as one reading found it. Texts are fit to be shown as plain text.
struct PlaybackSnapshot {
  QString title;  ///< "Nothing playing" in an empty one.
  QString artist, album;
  double duration = 0;  ///< Seconds; 0 where it is not known.
  double elapsed = 0;   ///< Seconds at `timestamp`.
  bool playing = false;
  bool seekable = false;              ///< The player lets itself be sent to another place.
  QDateTime timestamp;                ///< When `elapsed` was true.
  std::optional<QByteArray> artwork;  ///< An encoded picture.
  QUrl artworkURL;                    ///< Where it is from; invalid for none.
  QString source;                     ///< Who plays, to be shown.

  static PlaybackSnapshot empty(const QDateTime& now);
  static PlaybackSnapshot of(const MediaPlayer& player, const QString& source);

  /// Seconds from the beginning at a moment. What has no known length stands still between readings.
  double position(const QDateTime& at) const;
  /// A place within the length. Throws DomainError where there is no length.
  static double seek(double position, double duration);

  bool operator==(const PlaybackSnapshot&) const = default;
};

}  // namespace tarnwick
