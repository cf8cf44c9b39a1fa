#include "widgets/catalog/SearchWords.h"

#include <QCoreApplication>
#include <QStringList>
#include <span>

#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

namespace {

/// What each kind of a family, or one kind, is called. Some kinds have the name of a family.
struct SearchRow {
  QLatin1StringView of;
  const char* words;
};

// clang-format off
constexpr SearchRow kFamilies[] = {
    {familyText(Family::Clock),            QT_TRANSLATE_NOOP("Search", "time hour watch")},
    {familyText(Family::Calendar),         QT_TRANSLATE_NOOP("Search", "events agenda appointments schedule date ics")},
    {familyText(Family::Progress),         QT_TRANSLATE_NOOP("Search", "percent elapsed remaining")},
    {familyText(Family::Reminders),        QT_TRANSLATE_NOOP("Search", "tasks due to-do")},
    {familyText(Family::Todos),            QT_TRANSLATE_NOOP("Search", "tasks checklist to-do list")},
    {familyText(Family::Water),            QT_TRANSLATE_NOOP("Search", "glass health hydration")},
    {familyText(Family::Habit),            QT_TRANSLATE_NOOP("Search", "streak daily routine")},
    {familyText(Family::Metric),           QT_TRANSLATE_NOOP("Search", "monitor usage computer")},
    {familyText(Family::Temperature),      QT_TRANSLATE_NOOP("Search", "heat sensor processor degrees")},
    {familyText(Family::Processes),        QT_TRANSLATE_NOOP("Search", "task manager kill busy")},
    {familyText(Family::Toggles),          QT_TRANSLATE_NOOP("Search", "wifi wi-fi bluetooth dark mode do not disturb mute sound caffeine awake switches")},
    {familyText(Family::Apps),             QT_TRANSLATE_NOOP("Search", "programs start launch menu")},
    {familyText(Family::Launcher),         QT_TRANSLATE_NOOP("Search", "program start launch shortcut icon")},
    {familyText(Family::Windows),          QT_TRANSLATE_NOOP("Search", "switch tasks")},
    {familyText(Family::Files),            QT_TRANSLATE_NOOP("Search", "documents directory")},
    {familyText(Family::Bookmarks),        QT_TRANSLATE_NOOP("Search", "favorites links browser places")},
    {familyText(Family::Clipboard),        QT_TRANSLATE_NOOP("Search", "copy paste history")},
    {familyText(Family::Calculator),       QT_TRANSLATE_NOOP("Search", "math sum arithmetic")},
    {familyText(Family::Converter),        QT_TRANSLATE_NOOP("Search", "units currency metric imperial length weight")},
    {familyText(Family::Color),            QT_TRANSLATE_NOOP("Search", "colour eyedropper hex pipette")},
    {familyText(Family::Emoji),            QT_TRANSLATE_NOOP("Search", "smileys symbols characters")},
    {familyText(Family::Screenshot),       QT_TRANSLATE_NOOP("Search", "screen capture grab picture")},
    {familyText(Family::Voice),            QT_TRANSLATE_NOOP("Search", "record microphone audio")},
    {familyText(Family::Sounds),           QT_TRANSLATE_NOOP("Search", "noise rain ambient sleep")},
    {familyText(Family::Audio),            QT_TRANSLATE_NOOP("Search", "sound speakers headphones microphone volume")},
    {familyText(Family::AppVolume),        QT_TRANSLATE_NOOP("Search", "sound mixer loudness")},
    {familyText(Family::Music),            QT_TRANSLATE_NOOP("Search", "player song track play pause")},
    {familyText(Family::AccessoryBattery), QT_TRANSLATE_NOOP("Search", "mouse keyboard headphones charge bluetooth")},
    {familyText(Family::Airdrop),          QT_TRANSLATE_NOOP("Search", "share send files bluetooth phone")},
    {familyText(Family::Photos),           QT_TRANSLATE_NOOP("Search", "pictures images")},
    {familyText(Family::Weather),          QT_TRANSLATE_NOOP("Search", "temperature rain forecast sun")},
    {familyText(Family::Mail),             QT_TRANSLATE_NOOP("Search", "email inbox unread")},
    {familyText(Family::Separator),        QT_TRANSLATE_NOOP("Search", "line divider")},
    {familyText(Family::Space),            QT_TRANSLATE_NOOP("Search", "gap spacer blank")},
};

constexpr SearchRow kKinds[] = {
    {kind::worldClockCity,         QT_TRANSLATE_NOOP("Search", "time zone timezone city abroad utc")},
    {kind::worldClockList,         QT_TRANSLATE_NOOP("Search", "time zones timezones cities abroad utc")},
    {kind::dateOnly,               QT_TRANSLATE_NOOP("Search", "day today")},
    {kind::calendarWeek,           QT_TRANSLATE_NOOP("Search", "week number")},
    {kind::calendarMeeting,        QT_TRANSLATE_NOOP("Search", "video call join conference")},
    {kind::calendarMeetingDetail,  QT_TRANSLATE_NOOP("Search", "video call join conference")},
    {kind::calendarMeetingCompact, QT_TRANSLATE_NOOP("Search", "video call join conference")},
    {kind::pomodoro,               QT_TRANSLATE_NOOP("Search", "focus countdown alarm break work")},
    {kind::timer,                  QT_TRANSLATE_NOOP("Search", "countdown alarm egg kitchen")},
    {kind::stopwatch,              QT_TRANSLATE_NOOP("Search", "laps chronometer")},
    {kind::posture,                QT_TRANSLATE_NOOP("Search", "stand sit desk health break")},
    {kind::exercise,               QT_TRANSLATE_NOOP("Search", "sport training health break")},
    {kind::scratchNote,            QT_TRANSLATE_NOOP("Search", "memo text sticky jot")},
    {kind::cpu,                    QT_TRANSLATE_NOOP("Search", "processor load uptime")},
    {kind::cpuChart,               QT_TRANSLATE_NOOP("Search", "processor load history")},
    {kind::ram,                    QT_TRANSLATE_NOOP("Search", "memory swap")},
    {kind::ramChart,               QT_TRANSLATE_NOOP("Search", "memory swap history")},
    {kind::systemChart,            QT_TRANSLATE_NOOP("Search", "processor memory ram load history")},
    {kind::storage,                QT_TRANSLATE_NOOP("Search", "disk drive space ssd free")},
    {kind::battery,                QT_TRANSLATE_NOOP("Search", "power charge")},
    {kind::network,                QT_TRANSLATE_NOOP("Search", "wifi wi-fi ethernet internet traffic speed")},
    {kind::networkDownload,        QT_TRANSLATE_NOOP("Search", "wifi wi-fi ethernet internet traffic network")},
    {kind::networkUpload,          QT_TRANSLATE_NOOP("Search", "wifi wi-fi ethernet internet traffic network")},
    {kind::networkChart,           QT_TRANSLATE_NOOP("Search", "wifi wi-fi ethernet internet traffic speed")},
    {kind::trash,                  QT_TRANSLATE_NOOP("Search", "bin delete rubbish")},
    {kind::webSearch,              QT_TRANSLATE_NOOP("Search", "internet browser find")},
    {kind::finderSearch,           QT_TRANSLATE_NOOP("Search", "find documents")},
};
// clang-format on

}  // namespace

QString searchWords(const WidgetDefinition& definition) {
  QStringList found;
  const auto add = [&found](std::span<const SearchRow> rows, const QString& of) {
    for (const SearchRow& row : rows)
      if (of == row.of) found << QCoreApplication::translate("Search", row.words);
  };
  add(kFamilies, definition.family);
  add(kKinds, definition.id);
  return found.join(u' ');
}

}  // namespace tarnwick
