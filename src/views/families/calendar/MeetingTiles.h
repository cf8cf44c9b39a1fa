#pragma once

#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// A figure about meetings: how many are left today, or how long until the next one.
struct MeetingContent {
  QString figure;
  QString unit;
  QString caption;
  QString spoken;

  bool operator==(const MeetingContent&) const = default;
};
MeetingContent makeMeetings(const TileRequest& request);
MeetingContent makeNextMeeting(const TileRequest& request);
TileText describe(const MeetingContent& content, const QString& name);
void paint(TileCanvas& canvas, const MeetingContent& content);

/// The meeting that one would join now, and the button that does it.
struct MeetingCenterContent {
  QString title;
  QString caption;
  bool joins = false;

  bool operator==(const MeetingCenterContent&) const = default;
};
MeetingCenterContent makeMeetingCenter(const TileRequest& request);
TileText describe(const MeetingCenterContent& content, const QString& name);
void paint(TileCanvas& canvas, const MeetingCenterContent& content);
/// 0 for the button.
std::optional<int> partAt(const MeetingCenterContent& content, const TileClick& click);

}  // namespace tarnwick
