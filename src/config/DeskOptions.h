#pragma once

#include <QString>
#include <QStringList>

#include "base/RecordCodec.h"

namespace tarnwick {

/// Settings that this program has on a desktop like this one. Each has a default, and no file needs to hold any. A word
/// that is not known counts as the default.
struct DeskOptions {
  int setupPage = 0;              ///< Where the first run was left, counted from 0; means nothing once it is complete.
  bool workspaceWindows = false;  ///< A dock shows only windows of the virtual desktop that is shown.
  bool displayWindows = false;    ///< A dock shows only windows of its own display.
  bool appKeys = true;            ///< Super+1 to Super+9 open the first apps of the dock while its shortcut is on.
  QString contrast = QStringLiteral("desktop");       ///< High contrast: desktop, on or off.
  bool styleFollows = false;                          ///< Whether the dock's style follows light and dark.
  QString lightStyle = QStringLiteral("lightGlass");  ///< The style while the desktop is light.
  QString darkStyle = QStringLiteral("darkGlass");
  QString magnification = QStringLiteral("little");  ///< Of tiles under the pointer: off, little or much.
  QString dodge = QStringLiteral("off");  ///< What a hiding dock makes room for: off, any, active, maximised.
  bool peep = false;  ///< Whether a hidden dock comes out for a moment when something needs the user.
  // What the command bar finds.
  bool barApps = true;
  bool barWindows = true;
  bool barWidgets = true;
  bool barSymbols = true;
  bool barClipboard = true;  ///< While the history of copies is on.
  bool barFiles = true;
  bool barEmoji = true;
  bool barSettings = true;  ///< Places of Settings.
  bool barWeb = true;
  QString webSearch = {};  ///< The id of an engine or an address of the user's own; empty for the default.
  QStringList neverRecord;  ///< Apps of which nothing that is copied is recorded, by the ids of their desktop entries.

  static constexpr auto fields() {
    using D = DeskOptions;
    return std::tuple(field::defaulted("setupPage", &D::setupPage),
                      field::defaulted("workspaceWindows", &D::workspaceWindows),
                      field::defaulted("displayWindows", &D::displayWindows), field::defaulted("appKeys", &D::appKeys),
                      field::defaulted("contrast", &D::contrast), field::defaulted("styleFollows", &D::styleFollows),
                      field::defaulted("lightStyle", &D::lightStyle), field::defaulted("darkStyle", &D::darkStyle),
                      field::defaulted("magnification", &D::magnification), field::defaulted("dodge", &D::dodge),
                      field::defaulted("peep", &D::peep), field::defaulted("barApps", &D::barApps),
                      field::defaulted("barWindows", &D::barWindows), field::defaulted("barWidgets", &D::barWidgets),
                      field::defaulted("barSymbols", &D::barSymbols),
                      field::defaulted("barClipboard", &D::barClipboard), field::defaulted("barFiles", &D::barFiles),
                      field::defaulted("barEmoji", &D::barEmoji), field::defaulted("barSettings", &D::barSettings),
                      field::defaulted("barWeb", &D::barWeb), field::defaulted("webSearch", &D::webSearch),
                      field::defaulted("neverRecord", &D::neverRecord));
  }
  bool operator==(const DeskOptions&) const = default;
};

}  // namespace tarnwick
