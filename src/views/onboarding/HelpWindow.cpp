#include "views/onboarding/HelpWindow.h"

#include <QCoreApplication>

#include "desktop/VirtualKeys.h"
#include "store/AppStore.h"
#include "views/controls/Labels.h"
#include "views/onboarding/KeyCaps.h"
#include "views/window/Cards.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kHelpSize{620, 640};

struct HelpWords {
  Q_DECLARE_TR_FUNCTIONS(Help)
};

void addGlobalKeys(CardPage& page, const AppStore& store, const DesktopAbilities& abilities) {
  const DesktopOptions& options = store.config().desktopOptions();
  if (!abilities.keysAnswered) return;
  Card* card = page.addCard(HelpWords::tr("Shortcuts that work in every app"));
  if (!abilities.keys) {
    card->addRow(HelpWords::tr("No shortcut"), nullptr, abilities.keys.reason);
    return;
  }
  if (options.dockShortcutEnabled)
    card->addRow(HelpWords::tr("Hide and Show Dock"),
                 new KeyCaps(VirtualKeys::text(options.shortcutKey, options.shortcutModifiers)));
  const bool hasCommandBar = abilities.commandBarKey && !abilities.commandBarKey->isEmpty();
  const bool canAddShift = (options.shortcutModifiers & VirtualKeys::kShift) == 0;
  if (options.dockShortcutEnabled && canAddShift)
    card->addRow(HelpWords::tr("Move the keyboard focus to the dock"),
                 new KeyCaps(VirtualKeys::text(options.shortcutKey, options.shortcutModifiers | VirtualKeys::kShift)));
  if (hasCommandBar) card->addRow(HelpWords::tr("Command Bar"), new KeyCaps(*abilities.commandBarKey));
  if (options.profileShortcutEnabled) {
    constexpr quint32 digitOne = 18;
    QString keys = VirtualKeys::text(digitOne, options.profileModifiers);
    keys.chop(1);
    card->addRow(HelpWords::tr("Switch Profile"), new KeyCaps(keys + u"0–9"_s),
                 HelpWords::tr("Use the prefix with 0–9 in profile order."));
  }
  if (options.dockShortcutEnabled && options.deskOptions().appKeys && abilities.unaskedKeys)
    card->addRow(HelpWords::tr("Open an app of the dock"), new KeyCaps(u"Super+1–9"_s),
                 HelpWords::tr("Unless another app uses these keys."));
  if (!options.dockShortcutEnabled && !options.profileShortcutEnabled && !hasCommandBar)
    card->addRow(HelpWords::tr("No shortcut"), nullptr, HelpWords::tr("All shortcuts are turned off in Settings."));
}

void addPlain(CardPage& page, const char* heading, std::initializer_list<std::pair<const char*, const char*>> rows) {
  Card* card = page.addCard(HelpWords::tr(heading));
  for (const auto& [what, how] : rows) card->addRow(HelpWords::tr(what), nullptr, HelpWords::tr(how));
}

void addCommandBar(CardPage& page) {
  addPlain(
      page, QT_TRANSLATE_NOOP("Help", "In the command bar"),
      {{QT_TRANSLATE_NOOP("Help", "Type"),
        QT_TRANSLATE_NOOP("Help",
                          "Finds apps, open windows, files, widgets, symbols, emoji, copied texts and places of "
                          "Settings. Choose among these in Settings, Command Bar.")},
       {QT_TRANSLATE_NOOP("Help", "Return"),
        QT_TRANSLATE_NOOP("Help",
                          "Opens what is selected, adds the widget, or copies the result, symbol or copied text.")},
       {QT_TRANSLATE_NOOP("Help", "Ctrl+C"),
        QT_TRANSLATE_NOOP("Help", "Copies the path of an app or a file. Copies selected text while there is any.")},
       {QT_TRANSLATE_NOOP("Help", "Ctrl+R"), QT_TRANSLATE_NOOP("Help", "Shows an app or a file in its folder.")},
       {QT_TRANSLATE_NOOP("Help", "Tab or arrow keys"),
        QT_TRANSLATE_NOOP("Help", "Move to the next or previous result. Shift+Tab moves back.")},
       {QT_TRANSLATE_NOOP("Help", "Escape"), QT_TRANSLATE_NOOP("Help", "Closes the command bar.")},
       {QT_TRANSLATE_NOOP("Help", "A calculation"),
        QT_TRANSLATE_NOOP("Help",
                          "Type one such as 1234*5678/3 or 50%+10: the result is there as you type, Return copies "
                          "it. It knows + − * / ^ % and parentheses, sqrt(2), 10% of 50 and units: 12 cm in in.")},
       {QT_TRANSLATE_NOOP("Help", "A symbol or emoji"),
        QT_TRANSLATE_NOOP("Help", "Type how its name begins, such as heart or arrow, and Return copies it.")}});
}

void addClipboard(CardPage& page) {
  addPlain(page, QT_TRANSLATE_NOOP("Help", "In the panel of the Clipboard widget"),
           {{QT_TRANSLATE_NOOP("Help", "Type"), QT_TRANSLATE_NOOP("Help", "Searches what you copied.")},
            {QT_TRANSLATE_NOOP("Help", "Return"),
             QT_TRANSLATE_NOOP("Help", "Puts the selected entry back on the clipboard.")},
            {QT_TRANSLATE_NOOP("Help", "Delete"),
             QT_TRANSLATE_NOOP("Help", "Removes it. A message offers to undo that for eight seconds.")},
            {QT_TRANSLATE_NOOP("Help", "Drag an entry"), QT_TRANSLATE_NOOP("Help", "Takes it into another app.")}});
}

void addConnections(CardPage& page) {
  addPlain(page, QT_TRANSLATE_NOOP("Help", "In the form of a web service’s widget"),
           {{QT_TRANSLATE_NOOP("Help", "Service"),
             QT_TRANSLATE_NOOP("Help",
                               "Shows what the service itself says, by a key or token that it makes for you. The form "
                               "says which one and opens the page where it is made.")},
            {QT_TRANSLATE_NOOP("Help", "Sign In"),
             QT_TRANSLATE_NOOP("Help",
                               "For Gmail, Dropbox and TikTok: opens the service in your browser, with the client ID "
                               "of an app that you made there.")},
            {QT_TRANSLATE_NOOP("Help", "This Computer"),
             QT_TRANSLATE_NOOP("Help",
                               "Shows what Claude Code, Gemini CLI, OpenCode, Hermes or Codex leave or say here. The "
                               "hooks that Claude Code needs for that are installed and removed in the form.")},
            {QT_TRANSLATE_NOOP("Help", "Address"),
             QT_TRANSLATE_NOOP("Help",
                               "One of yours that answers with JSON, over https. The widget shows one field of it.")},
            {QT_TRANSLATE_NOOP("Help", "Try It"),
             QT_TRANSLATE_NOOP("Help", "Asks the address once and shows its answer. Click a field to have it shown.")},
            {QT_TRANSLATE_NOOP("Help", "Credential"),
             QT_TRANSLATE_NOOP("Help",
                               "Kept in the desktop’s keyring, for this widget and this host alone. Settings, "
                               "Connections shows how each connection stands.")}});
}

void addOrders(CardPage& page, bool hasCommandBar) {
  Card* card = page.addCard(HelpWords::tr("Commands for the running dock"));
  const auto add = [card](const QString& order, const char* what) {
    auto* text = new TextLabel(order, TextStyle::Body, Tone::Secondary);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    card->addRow(HelpWords::tr(what), text);
    text->setAccessibleName(order);
  };
  add(u"tarnwick --toggle"_s, QT_TRANSLATE_NOOP("Help", "Hide or show the dock"));
  add(u"tarnwick --focus"_s, QT_TRANSLATE_NOOP("Help", "Move the keyboard focus to the dock"));
  if (hasCommandBar) add(u"tarnwick --command-bar"_s, QT_TRANSLATE_NOOP("Help", "Open the command bar, or close it"));
  add(u"tarnwick --profile N"_s, QT_TRANSLATE_NOOP("Help", "Switch to a profile (0 is the first)"));
  add(u"tarnwick --app N"_s, QT_TRANSLATE_NOOP("Help", "Open an app of the dock (1 is the first)"));
  add(u"tarnwick --restore-dock"_s, QT_TRANSLATE_NOOP("Help", "Restore the system dock"));
}

}  // namespace

HelpWindow::HelpWindow(AppStore& store, const DesktopAbilities& abilities) : AppWindow(store, tr("Tarnwick Help")) {
  auto* page = new CardPage(HelpWords::tr("Help"));
  addGlobalKeys(*page, store, abilities);
  addPlain(*page, QT_TRANSLATE_NOOP("Help", "While the dock has the keyboard focus"),
           {{QT_TRANSLATE_NOOP("Help", "Arrow keys"), QT_TRANSLATE_NOOP("Help", "Move from widget to widget.")},
            {QT_TRANSLATE_NOOP("Help", "Return or Space"), QT_TRANSLATE_NOOP("Help", "Does the same as a click.")},
            {QT_TRANSLATE_NOOP("Help", "Menu key or Shift+F10"), QT_TRANSLATE_NOOP("Help", "Opens the widget’s menu.")},
            {QT_TRANSLATE_NOOP("Help", "Ctrl+F10"), QT_TRANSLATE_NOOP("Help", "Opens the dock’s menu.")},
            {QT_TRANSLATE_NOOP("Help", "Escape"),
             QT_TRANSLATE_NOOP("Help", "Moves the keyboard focus back to the window you came from.")},
            {QT_TRANSLATE_NOOP("Help", "Ctrl+Z"),
             QT_TRANSLATE_NOOP("Help", "Undoes the last change to the dock. Also works in Tarnwick’s windows.")},
            {QT_TRANSLATE_NOOP("Help", "Ctrl+Shift+Z"), QT_TRANSLATE_NOOP("Help", "Redoes what was undone.")}});
  addPlain(*page, QT_TRANSLATE_NOOP("Help", "With the pointer"),
           {{QT_TRANSLATE_NOOP("Help", "Click"),
             QT_TRANSLATE_NOOP("Help",
                               "Opens a widget’s panel, or an app. A click on the app in front minimizes it, or lists "
                               "its windows if it has several.")},
            {QT_TRANSLATE_NOOP("Help", "Right click"),
             QT_TRANSLATE_NOOP("Help", "Opens the menu of a widget or of the dock.")},
            {QT_TRANSLATE_NOOP("Help", "Drag a widget"),
             QT_TRANSLATE_NOOP("Help", "Moves it. Drop it far from the dock to remove it.")},
            {QT_TRANSLATE_NOOP("Help", "Drop files"),
             QT_TRANSLATE_NOOP("Help",
                               "On an app: opens them in it. On the trash: moves them there. Elsewhere: adds them to "
                               "the file shelf, or as widgets if there is no shelf.")},
            {QT_TRANSLATE_NOOP("Help", "Wheel"),
             QT_TRANSLATE_NOOP("Help", "On an app: switches between its windows. Elsewhere: scrolls the dock.")},
            {QT_TRANSLATE_NOOP("Help", "Drag empty space"),
             QT_TRANSLATE_NOOP("Help", "Switches to the next profile, or moves a floating dock.")}});
  const bool hasCommandBar = abilities.commandBarKey.has_value();
  if (hasCommandBar) addCommandBar(*page);
  if (abilities.clipboard) addClipboard(*page);
  addConnections(*page);
  addOrders(*page, hasCommandBar);
  setContent(nullptr, page);
  page->takeKeys();
  setEscapeCloses(true);
  page->setFocus();
  resize(kHelpSize);
}

}  // namespace tarnwick
