#pragma once

#include <QString>

#include "services/RemoteReading.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// How a fetched value stands, in words, whatever it is.
struct RemoteState {
  bool hasFailed = false;
  bool isLoading = false;  ///< For so long that it is worth a sign.
  bool isWaiting = false;  ///< For something that is not there, before it is fetched.
  QString problem;         ///< Why this is not what there is now, in finished sentences; empty where it is.
  QString age;             ///< "12 min ago", where the value is older than one expects; else empty.
  QString pause;           ///< "Paused until 14:30"; else empty.
  QString until;           ///< Its time alone.

  static RemoteState of(const RemoteReading& reading, const TileSources& sources);

  /// What is said in place of when it was fetched; empty for a value that is as it should be.
  QString remark() const { return pause.isEmpty() ? age : pause; }
  bool operator==(const RemoteState&) const = default;
};

/// What is known of a widget: its own value, or else the example of its kind; absent where there is neither.
std::optional<RemoteReading> remoteOf(const TileSources& sources, const DockWidget& widget);

class TileCanvas;

/// The line at the foot of a tile whose value is being fetched.
void paintLoading(TileCanvas& canvas);
/// The dot of a value that could not be fetched.
void paintFailure(TileCanvas& canvas);
/// The right edge of a headline beside that dot.
inline constexpr double kFailureWidth = 12;

}  // namespace tarnwick
