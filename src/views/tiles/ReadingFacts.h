#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QList>
#include <QString>
#include <QUuid>
#include <optional>

#include "clipboard/ClipboardEntry.h"
#include "system/ProcessUsage.h"

namespace tarnwick {

/// A running application, for tiles that show several.
struct RunningFacts {
  quint64 identity = 0;
  QString name;
  QString icon;
  bool front = false;

  bool operator==(const RunningFacts&) const = default;
};

/// A small picture that is known by what it was made from, so that comparing it costs nothing.
struct TilePicture {
  QString key;
  QImage image;

  bool operator==(const TilePicture& other) const { return key == other.key && image.isNull() == other.image.isNull(); }
};

/// A screenshot that lies in its folder.
struct ScreenshotFacts {
  TilePicture picture;
  QDateTime taken;

  bool operator==(const ScreenshotFacts&) const = default;
};

/// A file in the stack that a folder's tile shows.
struct StackedFile {
  QString name;
  TilePicture picture;  ///< Without an image for a file that has none.

  bool operator==(const StackedFile&) const = default;
};

/// A meeting in which the user takes part.
struct MeetingFacts {
  bool connected = false;
  bool muted = false;
  std::optional<int> participants;
  QString duration;  ///< As the meeting program writes it; empty where it is not told.
  QString problem;   ///< Why no meeting is seen, as a sentence.

  bool operator==(const MeetingFacts&) const = default;
};

/// What is played, as one reading found it.
struct PlaybackFacts {
  QString title, artist;
  QString source;       ///< Who plays; empty where nobody does.
  double duration = 0;  ///< Seconds; 0 where it is not known.
  double elapsed = 0;   ///< Seconds at `timestamp`; what has a known length goes on from there while it plays.
  QDateTime timestamp;
  bool playing = false;
  TilePicture cover;

  bool operator==(const PlaybackFacts&) const = default;
};

/// What plays on this desktop.
struct MediaFacts {
  bool connected = false;  ///< The user lets it be shown.
  PlaybackFacts playback;
  std::optional<PlaybackFacts> video;  ///< What plays of the video hosts; absent for nothing.
  QString problem;                     ///< Why there is nothing, as a sentence.

  bool operator==(const MediaFacts&) const = default;
};

/// What tiles show of the machine and of the user's files, beside the figures of MetricsSnapshot.
struct ReadingFacts {
  std::optional<double> celsius;  ///< Of the processor; absent without a sensor.
  bool hasNoSensor = false;       ///< Whether the processor's sensors were asked, and there is none.
  QList<double> celsiusHistory;
  QList<ProcessUsage> processes;
  QString processMessage;
  QStringList recentNames;                            ///< Of the files that were open last, the latest first.
  std::optional<QList<ScreenshotFacts>> screenshots;  ///< The newest first; absent until the folder was read.
  QHash<QString, QList<StackedFile>> stacks;          ///< By folder, the newest first; of those shown as a stack.
  QString screenshotProblem;                          ///< Why the folder could not be read; else empty.
  bool sendsNearby = false;              ///< Whether a program is installed that sends files to devices nearby.
  std::optional<qint64> bookmarks;       ///< Absent until they were counted.
  std::optional<ClipboardEntry> copied;  ///< The newest of the history; absent while that is empty.
  bool copiedIsFolder = false;
  QHash<QUuid, TilePicture> pinnedWindows;  ///< By widget: how its window looks, as far as that was seen.
  std::optional<MeetingFacts> meeting;      ///< Absent until somebody looked.
  std::optional<MediaFacts> media;          ///< The same.
  QString clipboardProblem;                 ///< Why there is no history; else empty.
  QHash<QString, double> rates;             ///< Of currencies that tiles convert, by their codes: "EUR/USD".
};

}  // namespace tarnwick
