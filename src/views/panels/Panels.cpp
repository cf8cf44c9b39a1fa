#include "views/panels/Panels.h"

#include <QLatin1StringView>
#include <algorithm>
#include <array>

#include "views/panels/AppPanels.h"
#include "views/panels/CalculatorPanel.h"
#include "views/panels/CalendarPanel.h"
#include "views/panels/ClockPanel.h"
#include "views/panels/ColorPanel.h"
#include "views/panels/ConverterPanel.h"
#include "views/panels/EmojiPanel.h"
#include "views/panels/FileListPanels.h"
#include "views/panels/FolderPanel.h"
#include "views/panels/HabitPanels.h"
#include "views/panels/MachinePanels.h"
#include "views/panels/MetricsPanel.h"
#include "views/panels/NotesPanel.h"
#include "views/panels/OverviewPanel.h"
#include "views/panels/PlacePanels.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/ProgressPanel.h"
#include "views/panels/RemindersPanel.h"
#include "views/panels/TimerPanel.h"
#include "views/panels/TodosPanel.h"
#include "views/panels/TogglesPanel.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct PanelRow {
  QLatin1StringView word;  ///< A kind or a family; a kind wins.
  std::unique_ptr<TilePanel> (*make)(const PanelContext&);
};

constexpr std::array kPanelRows = {
    PanelRow{"metric"_L1, makeMetricsPanel},
    PanelRow{"processes"_L1, makeProcessesPanel},
    PanelRow{"temperature"_L1, makeTemperaturePanel},
    PanelRow{"applications"_L1, makeApplicationsPanel},
    PanelRow{"appFolder"_L1, makeAppFolderPanel},
    PanelRow{"openWindows"_L1, makeRunningAppsPanel},
    PanelRow{"topApps"_L1, makeRunningAppsPanel},
    PanelRow{"appSwitcher"_L1, makeRunningAppsPanel},
    PanelRow{"pinnedWindow"_L1, makePinnedWindowPanel},
    PanelRow{"folderLauncher"_L1, makeFolderPanel},
    PanelRow{"downloads"_L1, makeFolderPanel},
    PanelRow{"recentFiles"_L1, makeRecentFilesPanel},
    PanelRow{"screenshots"_L1, makeScreenshotsPanel},
    PanelRow{"fileShelf"_L1, makeShelfPanel},
    PanelRow{"trash"_L1, makeTrashPanel},
    PanelRow{"bookmarks"_L1, makeBookmarksPanel},
    PanelRow{"finderSearch"_L1, makeFileSearchPanel},
    PanelRow{"webSearch"_L1, makeWebSearchPanel},
    PanelRow{"clock"_L1, makeClockPanel},
    PanelRow{"calendar"_L1, makeCalendarPanel},
    PanelRow{"todayOverview"_L1, makeOverviewPanel},
    PanelRow{"progress"_L1, makeProgressPanel},
    PanelRow{"reminders"_L1, makeRemindersPanel},
    PanelRow{"toggles"_L1, makeTogglesPanel},
    PanelRow{"timer"_L1, makeTimerPanel},
    PanelRow{"todos"_L1, makeTodosPanel},
    PanelRow{"notes"_L1, makeNotePanel},
    PanelRow{"nativeNotes"_L1, makeNotesPanel},
    PanelRow{"water"_L1, makeWaterPanel},
    PanelRow{"habit"_L1, makeHabitPanel},
    PanelRow{"calculator"_L1, makeCalculatorPanel},
    PanelRow{"converter"_L1, makeConverterPanel},
    PanelRow{"color"_L1, makeColorPanel},
    PanelRow{"emoji"_L1, makeEmojiPanel},
};

const PanelRow* rowOf(const WidgetDefinition& definition) {
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kPanelRows, word, &PanelRow::word); row != kPanelRows.end()) return &*row;
  return nullptr;
}

}  // namespace

std::unique_ptr<TilePanel> makePanel(const PanelContext& context) {
  const PanelRow* row = rowOf(Catalog::find(context.kind()));
  return row ? row->make(context) : makePlainPanel(context);
}

bool hasOwnPanel(const WidgetDefinition& definition) { return rowOf(definition) != nullptr; }

}  // namespace tarnwick
