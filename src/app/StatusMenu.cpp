#include "app/StatusMenu.h"

#include <QActionGroup>
#include <QApplication>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QKeySequence>
#include <QLineEdit>
#include <QWidget>

#include "views/theme/Typography.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMessageWidth = 360;
constexpr QKeyCombination kSettingsKey = Qt::CTRL | Qt::Key_Comma;
constexpr QKeyCombination kAddWidgetsKey = Qt::CTRL | Qt::Key_N;
constexpr QKeyCombination kQuitKey = Qt::CTRL | Qt::Key_Q;

QString words(const char* text) { return QCoreApplication::translate("Menu", text); }

/// A menu takes a single ampersand for the mark of a mnemonic.
QString withoutMnemonic(QString text) { return text.replace(u'&', u"&&"_s); }

/// Makes entries. What an entry does is asked when it is chosen; whether it does anything, by its refresher.
struct Entries {
  using Action = std::function<void()> MenuActions::*;

  const MenuActionsProvider& actions;
  std::vector<std::function<void()>>& refreshers;

  QAction* add(QMenu& menu, const QString& text, Action member, const QKeySequence& key = {}) const {
    QAction* added = menu.addAction(text);
    added->setShortcut(key);
    refreshers.emplace_back(
        [added, provider = actions, member] { added->setEnabled(static_cast<bool>(provider().*member)); });
    QObject::connect(added, &QAction::triggered, added, [provider = actions, member] {
      if (const auto action = provider().*member) action();
    });
    return added;
  }

  void addLayouts(QMenu& menu, const std::function<MenuState()>& state) const {
    auto* group = new QActionGroup(&menu);
    for (const DockLayout layout : kDockLayouts) {
      QAction* added = menu.addAction(withoutMnemonic(label(layout)));
      added->setCheckable(true);
      group->addAction(added);
      refreshers.emplace_back([added, state, layout] { added->setChecked(state().layout == layout); });
      QObject::connect(added, &QAction::triggered, added, [provider = actions, layout] {
        if (const auto choose = provider().chooseLayout) choose(layout);
      });
    }
  }
};

/// Who answers an edit command: what has the keyboard, or what it stands in. A field where nothing was written leaves
/// taking back to its window.
QWidget* answerTo(const char* slot) {
  const QByteArray signature = QByteArray(slot) + "()";
  for (QWidget* at = QApplication::focusWidget(); at; at = at->parentWidget()) {
    const auto* field = qobject_cast<QLineEdit*>(at);
    if (field && qstrcmp(slot, "undo") == 0 && !field->isUndoAvailable()) continue;
    if (at->metaObject()->indexOfMethod(signature.constData()) >= 0) return at;
  }
  return nullptr;
}

void editEntry(QMenu& menu, const char* text, QKeySequence::StandardKey key, const char* slot) {
  QAction* added = menu.addAction(words(text));
  added->setShortcut(QKeySequence(key));
  QObject::connect(added, &QAction::triggered, &menu, [slot] {
    if (QWidget* answers = answerTo(slot)) QMetaObject::invokeMethod(answers, slot, Qt::DirectConnection);
  });
}

}  // namespace

StatusMenu::StatusMenu(std::function<MenuState()> state, MenuActionsProvider actions)
    : state_(std::move(state)), actions_(std::move(actions)) {
  using Actions = MenuActions;
  const Entries entries{actions_, refreshers_};
  setToolTipsVisible(true);
  message_ = entries.add(*this, {}, &Actions::dismissError);
  belowMessage_ = addSeparator();
  continueSetup_ = entries.add(*this, words(QT_TRANSLATE_NOOP("Menu", "Continue Setup…")), &Actions::continueSetup);
  entries.add(*this, words(QT_TRANSLATE_NOOP("Menu", "Settings…")), &Actions::settings, kSettingsKey);
  addSeparator();
  entries.addLayouts(*addMenu(words(QT_TRANSLATE_NOOP("Menu", "Layout"))), state_);
  entries.add(*this, words(QT_TRANSLATE_NOOP("Menu", "Show / Hide Dock")), &Actions::toggleDock);
  entries.add(*this, words(QT_TRANSLATE_NOOP("Menu", "Restore the macOS Dock")), &Actions::restoreSystemDock);
  addSeparator();
  QMenu& help = *addMenu(words(QT_TRANSLATE_NOOP("Menu", "Help")));
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "Add Widgets…")), &Actions::addWidgets, kAddWidgetsKey);
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "Folder Icons…")), &Actions::folderIcons);
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "Check for Updates…")), &Actions::checkForUpdates);
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "About Tarnwick")), &Actions::about);
  addSeparator();
  entries.add(*this, words(QT_TRANSLATE_NOOP("Menu", "Quit Tarnwick")), &Actions::quit, kQuitKey);
  connect(this, &QMenu::aboutToShow, this, &StatusMenu::refresh);
  refresh();
}

void StatusMenu::refresh() {
  const MenuState state = state_();
  const bool says = !state.error.isEmpty();
  // The menu takes this font when it opens; a tray may read it before.
  const QString error = state.error.isEmpty() ? QString()
                                              : QFontMetrics(Typography::widgetFont(TextStyle::Body))
                                                    .elidedText(state.error, Qt::ElideRight, kMessageWidth);
  message_->setText(withoutMnemonic(error));
  message_->setToolTip(state.error);
  message_->setVisible(says);
  belowMessage_->setVisible(says);
  continueSetup_->setVisible(!state.onboardingComplete);
  for (const auto& each : refreshers_) each();
}

std::unique_ptr<QMenuBar> makeApplicationMenu(const MenuActionsProvider& actions) {
  using Actions = MenuActions;
  auto bar = std::make_unique<QMenuBar>();
  std::vector<std::function<void()>> refreshers;
  const Entries entries{actions, refreshers};
  QMenu& program = *bar->addMenu(QStringLiteral("Tarnwick"));
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Command Bar")), &Actions::commandBar);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Open a Space…")), &Actions::openSpace);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Save This Dock as a Space…")), &Actions::saveSpace);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Settings…")), &Actions::settings, kSettingsKey);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Add Widgets…")), &Actions::addWidgets, kAddWidgetsKey);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Check for Updates…")), &Actions::checkForUpdates);
  entries.add(program, words(QT_TRANSLATE_NOOP("Menu", "Quit Tarnwick")), &Actions::quit, kQuitKey);
  const auto refresh = [refreshers] {
    for (const auto& each : refreshers) each();
  };
  refresh();
  QObject::connect(&program, &QMenu::aboutToShow, &program, refresh);

  QMenu& edit = *bar->addMenu(words(QT_TRANSLATE_NOOP("Menu", "Edit")));
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Undo"), QKeySequence::Undo, "undo");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Cut"), QKeySequence::Cut, "cut");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Copy"), QKeySequence::Copy, "copy");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Paste"), QKeySequence::Paste, "paste");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Select All"), QKeySequence::SelectAll, "selectAll");

  QMenu& window = *bar->addMenu(words(QT_TRANSLATE_NOOP("Menu", "Window")));
  QAction* close = window.addAction(words(QT_TRANSLATE_NOOP("Menu", "Close")));
  close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
  QObject::connect(close, &QAction::triggered, close, [] {
    if (QWidget* active = QApplication::activeWindow()) active->close();
  });

  // Where there is no tray these stand nowhere else.
  QMenu& help = *bar->addMenu(words(QT_TRANSLATE_NOOP("Menu", "Help")));
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "Tarnwick Help")), &Actions::help, QKeySequence::HelpContents);
  entries.add(help, words(QT_TRANSLATE_NOOP("Menu", "About Tarnwick")), &Actions::about);
  for (const auto& each : refreshers) each();
  QObject::connect(&help, &QMenu::aboutToShow, &help, [refreshers] {
    for (const auto& each : refreshers) each();
  });
  return bar;
}

}  // namespace tarnwick
