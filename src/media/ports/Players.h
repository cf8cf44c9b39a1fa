#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>

#include "media/PlaybackSnapshot.h"

namespace tarnwick {

/// A running player, as it told of itself last. Texts are one line each and short; numbers are finite.
struct MediaPlayer {
  enum class Status { Stopped, Paused, Playing };

  QString service;       ///< What it is asked by; no two that run have the same.
  QString name;          ///< The same without what tells two copies of a program apart: of another run too.
  QString title;         ///< As it calls itself; may be empty.
  QString desktopEntry;  ///< Without its ending; may be empty.
  bool isRead = false;   ///< It has told what follows.
  Status status = Status::Stopped;
  QString track, artist, album;
  double duration = 0;  ///< Seconds; 0 where it is not known.
  double elapsed = 0;   ///< Seconds at `read`.
  QDateTime read;
  bool canSeek = false;
  QUrl artwork;  ///< Invalid for none.
  QUrl address;  ///< Of what is played; invalid where it is not told.

  bool operator==(const MediaPlayer&) const = default;
};

/// The players that run on this desktop. They are followed by what they announce; nothing is asked by a clock.
/// Main thread; nothing blocks.
class Players : public QObject {
  Q_OBJECT
 public:
  /// How long one may take to answer.
  static constexpr double kPatience = 10;

  /// Begins or ends to follow them; before and after there are none.
  virtual void follow(bool wanted) = 0;
  /// Whether there is anything by which they could be asked.
  virtual bool isAvailable() const = 0;
  /// Since it began to follow them it has learned which run. `changed` tells that.
  virtual bool isKnown() const = 0;
  /// Those that run, the one that began to play last first.
  virtual QList<MediaPlayer> all() const = 0;
  /// Asks one anew; all that run where `service` is empty. `done` says later, unless `context` is gone, whether each
  /// has answered within kPatience.
  virtual void read(const QString& service, QObject* context, std::function<void(bool hasAnswered)> done) = 0;
  /// Asks one to do something; `done` says later, unless `context` is gone, whether it took it.
  virtual void act(const QString& service, const MediaAction& action, QObject* context,
                   std::function<void(bool isTaken)> done) = 0;

 Q_SIGNALS:
  /// all() is another, or a player went on elsewhere.
  void changed();
};

}  // namespace tarnwick
