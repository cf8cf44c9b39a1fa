#include "app/StatusMenu.h"

#include <QActionGroup>
#include <QApplication>
#include <QCoreApplication>
#include <QKeySequence>
#include <QWidget>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QString words(const char* text) { return QCoreApplication::translate("Menu", text); }

QAction* entry(QMenu& menu, const char* text, const std::function<void()>& action, const QKeySequence& key = {}) {
  QAction* added = menu.addAction(words(text));
  added->setShortcut(key);
  added->setEnabled(static_cast<bool>(action));
  if (action) QObject::connect(added, &QAction::triggered, &menu, [action] { action(); });
  return added;
}

/// The standard edit commands go to whatever has the focus.
void editEntry(QMenu& menu, const char* text, QKeySequence::StandardKey key, const char* slot) {
  QAction* added = menu.addAction(words(text));
  added->setShortcut(QKeySequence(key));
  QObject::connect(added, &QAction::triggered, &menu, [slot] {
    if (QWidget* focus = QApplication::focusWidget()) QMetaObject::invokeMethod(focus, slot, Qt::DirectConnection);
  });
}

void fillLayouts(QMenu& menu, const MenuState& state, const MenuActions& actions) {
  auto* group = new QActionGroup(&menu);
  for (const DockLayout layout : kDockLayouts) {
    // A menu takes a single ampersand for the mark of a mnemonic.
    QAction* added = menu.addAction(label(layout).replace(u'&', u"&&"_s));
    added->setCheckable(true);
    added->setChecked(layout == state.layout);
    added->setEnabled(static_cast<bool>(actions.chooseLayout));
    group->addAction(added);
    QObject::connect(added, &QAction::triggered, &menu, [choose = actions.chooseLayout, layout] { choose(layout); });
  }
}

}  // namespace

void fillStatusMenu(QMenu& menu, const MenuState& state, const MenuActions& actions) {
  menu.clear();
  if (!state.error.isEmpty()) {
    const QString line = menu.fontMetrics().elidedText(state.error, Qt::ElideRight, 360);
    QAction* message = menu.addAction(line);
    message->setToolTip(state.error);
    if (actions.dismissError) {
      QObject::connect(message, &QAction::triggered, &menu, [dismiss = actions.dismissError] { dismiss(); });
    }
    menu.addSeparator();
  }
  if (!state.onboardingComplete) entry(menu, QT_TRANSLATE_NOOP("Menu", "Continue Setup…"), actions.continueSetup);
  entry(menu, QT_TRANSLATE_NOOP("Menu", "Settings…"), actions.settings, QKeySequence(Qt::CTRL | Qt::Key_Comma));
  menu.addSeparator();
  fillLayouts(*menu.addMenu(words(QT_TRANSLATE_NOOP("Menu", "Layout"))), state, actions);
  entry(menu, QT_TRANSLATE_NOOP("Menu", "Show / Hide Dock"), actions.toggleDock);
  entry(menu, QT_TRANSLATE_NOOP("Menu", "Restore the macOS Dock"), actions.restoreSystemDock);
  menu.addSeparator();
  QMenu& help = *menu.addMenu(words(QT_TRANSLATE_NOOP("Menu", "Help")));
  entry(help, QT_TRANSLATE_NOOP("Menu", "Add Widgets…"), actions.addWidgets, QKeySequence(Qt::CTRL | Qt::Key_N));
  entry(help, QT_TRANSLATE_NOOP("Menu", "Folder Icons…"), actions.folderIcons);
  entry(help, QT_TRANSLATE_NOOP("Menu", "Check for Updates…"), actions.checkForUpdates);
  entry(help, QT_TRANSLATE_NOOP("Menu", "About Tarnwick"), actions.about);
  menu.addSeparator();
  entry(menu, QT_TRANSLATE_NOOP("Menu", "Quit Tarnwick"), actions.quit, QKeySequence(Qt::CTRL | Qt::Key_Q));
}

std::unique_ptr<QMenuBar> makeApplicationMenu(const MenuActions& actions) {
  auto bar = std::make_unique<QMenuBar>();
  QMenu& program = *bar->addMenu(QStringLiteral("Tarnwick"));
  entry(program, QT_TRANSLATE_NOOP("Menu", "Command Bar"), actions.commandBar);
  entry(program, QT_TRANSLATE_NOOP("Menu", "Open a Space…"), actions.openSpace);
  entry(program, QT_TRANSLATE_NOOP("Menu", "Save This Dock as a Space…"), actions.saveSpace);
  entry(program, QT_TRANSLATE_NOOP("Menu", "Settings…"), actions.settings, QKeySequence(Qt::CTRL | Qt::Key_Comma));
  entry(program, QT_TRANSLATE_NOOP("Menu", "Add Widgets…"), actions.addWidgets, QKeySequence(Qt::CTRL | Qt::Key_N));
  entry(program, QT_TRANSLATE_NOOP("Menu", "Check for Updates…"), actions.checkForUpdates);
  entry(program, QT_TRANSLATE_NOOP("Menu", "Quit Tarnwick"), actions.quit, QKeySequence(Qt::CTRL | Qt::Key_Q));

  QMenu& edit = *bar->addMenu(words(QT_TRANSLATE_NOOP("Menu", "Edit")));
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Undo"), QKeySequence::Undo, "undo");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Cut"), QKeySequence::Cut, "cut");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Copy"), QKeySequence::Copy, "copy");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Paste"), QKeySequence::Paste, "paste");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Select All"), QKeySequence::SelectAll, "selectAll");

  QMenu& window = *bar->addMenu(words(QT_TRANSLATE_NOOP("Menu", "Window")));
  entry(
      window, QT_TRANSLATE_NOOP("Menu", "Close"),
      [] {
        if (QWidget* active = QApplication::activeWindow()) active->close();
      },
      QKeySequence(Qt::CTRL | Qt::Key_W));
  return bar;
}

}  // namespace tarnwick
