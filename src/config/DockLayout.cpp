#include "config/DockLayout.h"

#include <QCoreApplication>

namespace tarnwick {
namespace {

struct DockLayoutWords {
  Q_DECLARE_TR_FUNCTIONS(DockLayout)
};

struct Words {
  const char* label;
  const char* description;
};

Words words(DockLayout layout) {
  switch (layout) {
    case DockLayout::Swap:
      return {QT_TRANSLATE_NOOP("DockLayout", "Swap at the Bottom"),
              QT_TRANSLATE_NOOP("DockLayout", "Sits at the bottom. Move to the edge and the macOS Dock takes over.")};
    case DockLayout::RevealBottom:
      return {QT_TRANSLATE_NOOP("DockLayout", "Reveal at the Bottom"),
              QT_TRANSLATE_NOOP("DockLayout",
                                "Hidden until you reach the bottom edge, then slides up above the macOS Dock.")};
    case DockLayout::Fixed:
      return {QT_TRANSLATE_NOOP("DockLayout", "Fixed"),
              QT_TRANSLATE_NOOP("DockLayout", "Always visible, pinned to the top or bottom edge you choose.")};
    case DockLayout::RevealTop:
      return {
          QT_TRANSLATE_NOOP("DockLayout", "Reveal on Top"),
          QT_TRANSLATE_NOOP("DockLayout", "Hidden until you reach the top edge, then slides down below the menu bar.")};
    case DockLayout::Replace:
      return {QT_TRANSLATE_NOOP("DockLayout", "Replace the macOS Dock"),
              QT_TRANSLATE_NOOP("DockLayout", "Hides the macOS Dock and stays fixed at the bottom in its place.")};
    case DockLayout::ReplaceAutoHide:
      return {QT_TRANSLATE_NOOP("DockLayout", "Replace & Auto-Hide"),
              QT_TRANSLATE_NOOP("DockLayout",
                                "Hides the macOS Dock. Appears at the bottom edge and hides when you move away.")};
    case DockLayout::Floating:
      return {QT_TRANSLATE_NOOP("DockLayout", "Floating"),
              QT_TRANSLATE_NOOP("DockLayout", "Drag your dock anywhere on the display. Always visible.")};
  }
  return {"", ""};
}

}  // namespace

QString label(DockLayout layout) { return DockLayoutWords::tr(words(layout).label); }

QString description(DockLayout layout) { return DockLayoutWords::tr(words(layout).description); }

}  // namespace tarnwick
