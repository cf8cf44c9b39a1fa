#include <array>

#include "views/families/meetings/ZoomPanel.h"
#include "views/families/meetings/ZoomTile.h"
#include "views/panels/Room.h"
#include "views/tiles/ReadingServices.h"
#include "widgets/catalog/Kinds.h"
#include "windows/ZoomMeetingService.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

void readMeeting(ReadingFacts& readings, const ReadingServices& services) {
  const ZoomMeetingService& meeting = services.meeting;
  const QString microphone = meeting.actions().value(ZoomAction::Microphone);
  readings.meeting = MeetingFacts{.connected = meeting.connected(),
                                  .muted = microphone.startsWith("unmute"_L1, Qt::CaseInsensitive),
                                  .participants = meeting.participants(),
                                  .duration = meeting.duration().value_or(QString()),
                                  .problem = meeting.error()};
}

void pictureMeeting(TileSources& sources) {
  sources.readings.meeting =
      MeetingFacts{.connected = true, .muted = false, .participants = 6, .duration = u"24:10"_s, .problem = {}};
}

void sampleMeeting(TileSources& sources, const TileSources& samples) {
  if (!sources.readings.meeting || !sources.readings.meeting->connected)
    sources.readings.meeting = samples.readings.meeting;
}

constexpr std::array kKinds = {
    RoomRow{.of = kind::zoomMeeting,
            .content = contentOf<makeZoom>,
            .panel = makeZoomPanel,
            .hasForm = false,
            .read = readMeeting,
            .sample = sampleMeeting},
};

}  // namespace

extern const Room kMeetingsRoom;
constinit const Room kMeetingsRoom{.name = "meetings"_L1, .kinds = kKinds, .picture = pictureMeeting};

}  // namespace tarnwick
