#include "widgets/catalog/SearchWords.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "widgets/catalog/CatalogRows.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

namespace {

struct SearchTexts {
  Q_DECLARE_TR_FUNCTIONS(Search)
};

/// What each kind of a family is called.
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
    {familyText(Family::Toggles),          QT_TRANSLATE_NOOP("Search", "wifi wi-fi bluetooth dark mode do not disturb mute sound caffeine awake brightness switches")},
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
    {familyText(Family::Music),            QT_TRANSLATE_NOOP("Search", "player music song track play pause spotify")},
    {familyText(Family::AccessoryBattery), QT_TRANSLATE_NOOP("Search", "mouse keyboard headphones charge bluetooth")},
    {familyText(Family::Airdrop),          QT_TRANSLATE_NOOP("Search", "share send files bluetooth phone")},
    {familyText(Family::Photos),           QT_TRANSLATE_NOOP("Search", "pictures images")},
    {familyText(Family::Wallpaper),        QT_TRANSLATE_NOOP("Search", "background desktop picture")},
    {familyText(Family::Weather),          QT_TRANSLATE_NOOP("Search", "temperature rain forecast sun")},
    {familyText(Family::Mail),             QT_TRANSLATE_NOOP("Search", "email inbox unread")},
    {familyText(Family::Separator),        QT_TRANSLATE_NOOP("Search", "line divider")},
    {familyText(Family::Space),            QT_TRANSLATE_NOOP("Search", "gap spacer blank")},
};
// clang-format on

}  // namespace

QString searchWords(const WidgetDefinition& definition) {
  QStringList found;
  for (const SearchRow& row : kFamilies)
    if (definition.family == row.of) found << SearchTexts::tr(row.words);
  const auto row = std::ranges::find(catalog::rows(), definition.id, &catalog::Row::kind);
  if (row != catalog::rows().end() && *row->words) found << SearchTexts::tr(row->words);
  return found.join(u' ');
}

}  // namespace tarnwick
