#include "commandbar/StoredChoices.h"

namespace tarnwick {

CommandBarChoices storedChoices(const DeskOptions& desk) {
  CommandBarChoices choices;
  choices.findsApps = desk.barApps;
  choices.findsWindows = desk.barWindows;
  choices.findsWidgets = desk.barWidgets;
  choices.findsSymbols = desk.barSymbols;
  choices.findsClipboard = desk.barClipboard;
  choices.findsFiles = desk.barFiles;
  choices.searchesWeb = desk.barWeb;
  choices.webSearch = desk.webSearch;
  return choices;
}

}  // namespace tarnwick
