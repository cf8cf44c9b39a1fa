#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "config/DockWidget.h"
#include "services/RemoteFetch.h"
#include "services/RemoteReading.h"
#include "services/RemoteValue.h"

namespace tarnwick {

/// Which widgets show fetched values, when a fetch for one makes sense, and what stands for its value meanwhile.
struct RemoteRules {
  /// How long a service is left alone that asked for it without saying how long, in seconds.
  static constexpr qint64 kPause = 300;
  /// From this age on, in seconds, a value is shown with its age. Twice the beat: one missed answer is no news.
  static constexpr qint64 kStale = 20 * 60;

  /// Whether widgets of this kind show a fetched value at all.
  static bool isRemote(const QString& kind);
  /// Whether all are refreshed with the others: those alone that are set up.
  static bool isSetUp(const DockWidget& widget);
  /// Whether its fetch asks somebody on the net, and so waits while there is none.
  static bool asksTheNet(const DockWidget& widget);

  /// What is shown while a fetch runs: the headline stays, nothing else.
  static RemoteValue placeholder(const std::optional<RemoteValue>& previous, const QDateTime& now);
  /// What is shown of a fetch that failed: the headline stays, under the sentence.
  static RemoteValue failed(const std::optional<RemoteValue>& previous, const QString& sentence, const QDateTime& now);
  /// What a refresh waits for, as a finished sentence.
  static QString sentenceOf(RemoteWait wait);
  /// A value as it may be shown: texts cleaned of what could act on others, addresses that must not open left out.
  static RemoteValue cleaned(RemoteValue value);
  /// Until when a service wants to be left alone; absent when the failure was another.
  static std::optional<QDateTime> pause(const FetchFailure& failure, const QDateTime& now);
};

}  // namespace tarnwick
