#pragma once

#include <QString>

namespace tarnwick {

/// How an option of a widget is set.
enum class FieldShape {
  Line,          ///< A line of text.
  Number,        ///< A line that should hold a number.
  Text,          ///< Several lines.
  Switch,        ///< On writes `value`, off leaves the option away.
  Steps,         ///< A whole number between two ends.
  Choice,        ///< One of a few words.
  Zone,          ///< A time zone.
  Zones,         ///< Several of them.
  Place,         ///< A place on earth, with where it is (ChosenPlace).
  Application,   ///< The path of a desktop entry.
  Applications,  ///< Several of them.
  Folder,        ///< The path of a folder.
  Toggles,       ///< The switches of a tile of quick toggles.
  Credential,    ///< Kept elsewhere than the option.
  Word,          ///< A short line, beside its label.
  Page,          ///< No option: a page of the web to be opened.
  History,       ///< Which history on this computer is read, with the option `historySource`.
  Session        ///< No option: the user's own session in a browser.
};

/// An option of a kind, as its room declares it; the form of a widget follows from that. Texts are marked for
/// translation where they are written, in the context "Library", `fault` in "WidgetEditor".
struct WidgetOption {
  QLatin1StringView key;  ///< One of widgets/catalog/Options.h; empty where it is kept elsewhere.
  FieldShape shape;
  const char* label = "";
  const char* placeholder = "";
  const char* help = "";
  const char* value = "";  ///< What a switch writes; of a choice its values, joined by ",", the default first.
  const char* words = "";  ///< Of a choice, joined by ",".
  int usual = 0;           ///< What an absent option means, of steps.
  int least = 0;
  int most = 0;
  const char* fault = "";  ///< The sentence of a failed save that belongs to this line.
  bool isLater = false;    ///< Nothing reads it yet, as `help` says: it is shown out of use.
  /// The `connectionMode` in which it is there; null for all.
  const char* onlyIn = nullptr;
  QString (*usualPath)() = nullptr;  ///< Of a folder: the one that an absent option means, in place of a placeholder.
};

}  // namespace tarnwick
