#include "app/StatusMenu.h"

#include <QActionGroup>
#include <QApplication>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QKeySequence>
#include <QLineEdit>
#include <QWidget>

#include "config/DockLayout.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/controls/PlainTip.h"
#include "views/theme/Typography.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr int kMessageWidth = 360;
constexpr QKeyCombination kSettingsKey = Qt::CTRL | Qt::Key_Comma;
constexpr QKeyCombination kAddWidgetsKey = Qt::CTRL | Qt::Key_N;
constexpr QKeyCombination kQuitKey = Qt::CTRL | Qt::Key_Q;

struct StatusMenuWords {
  Q_DECLARE_TR_FUNCTIONS(Menu)
};

/// A menu takes a single ampersand for the mark of a mnemonic.
QString withoutMnemonic(QString text) { return text.replace(u'&', u"&&"_s); }

/// Makes entries that give commands. One that this build or this desktop may lack is enabled while it can be given.
struct Entries {
  using Optional = Commands::Optional;

  Commands& commands;
  std::vector<std::function<void()>>& refreshers;

  QAction* add(QMenu& menu, const QString& text, void (Commands::*command)(), const QKeySequence& key = {}) const {
    QAction* added = menu.addAction(text);
    added->setShortcut(key);
    QObject::connect(added, &QAction::triggered, added, [&to = commands, command] { (to.*command)(); });
    return added;
  }

  void addOptional(QMenu& menu, const QString& text, void (Commands::*command)(), Optional which) const {
    QAction* added = add(menu, text, command);
    refreshers.emplace_back([added, &to = commands, which] { added->setEnabled(to.can(which)); });
  }

  void addLibrary(QMenu& menu) const {
    QAction* added = menu.addAction(StatusMenuWords::tr("Add Widgets…"));
    added->setShortcut(kAddWidgetsKey);
    QObject::connect(added, &QAction::triggered, added, [&to = commands] { to.showLibrary({}); });
  }

  void addLayouts(QMenu& menu, const AppStore& store) const {
    auto* group = new QActionGroup(&menu);
    for (const DockLayout layout : kDockLayouts) {
      QAction* added = menu.addAction(withoutMnemonic(label(layout)));
      added->setCheckable(true);
      group->addAction(added);
      refreshers.emplace_back([added, &store, layout] { added->setChecked(store.config().layout == layout); });
      QObject::connect(added, &QAction::triggered, added, [&to = commands, layout] { to.chooseLayout(layout); });
    }
  }
};

/// Who answers an edit command: what has the keyboard, or what contains it. A field where nothing was written leaves
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
  QAction* added = menu.addAction(StatusMenuWords::tr(text));
  added->setShortcut(QKeySequence(key));
  QObject::connect(added, &QAction::triggered, &menu, [slot] {
    if (QWidget* answers = answerTo(slot)) QMetaObject::invokeMethod(answers, slot, Qt::DirectConnection);
  });
}

}  // namespace

StatusMenu::StatusMenu(AppStore& store, Commands& commands) : store_(store) {
  using Optional = Commands::Optional;
  const Entries entries{commands, refreshers_};
  setToolTipsVisible(true);
  message_ = entries.add(*this, {}, &Commands::dismissMessage);
  QAction* openKept = entries.add(*this, StatusMenuWords::tr("Open Without Them…"), &Commands::openKeptSettings);
  refreshers_.emplace_back([openKept, this] { openKept->setVisible(static_cast<bool>(store_.keptSettings())); });
  belowMessage_ = addSeparator();
  continueSetup_ = entries.add(*this, StatusMenuWords::tr("Continue Setup…"), &Commands::continueSetup);
  entries.add(*this, StatusMenuWords::tr("Settings…"), &Commands::showSettings, kSettingsKey);
  addSeparator();
  entries.addLayouts(*addMenu(StatusMenuWords::tr("Layout")), store_);
  entries.add(*this, StatusMenuWords::tr("Show / Hide Dock"), &Commands::toggleDock);
  entries.add(*this, StatusMenuWords::tr("Restore the macOS Dock"), &Commands::restoreSystemDock);
  addSeparator();
  QMenu& help = *addMenu(StatusMenuWords::tr("Help"));
  entries.addLibrary(help);
  entries.addOptional(help, StatusMenuWords::tr("Folder Icons…"), &Commands::chooseFolderIcons, Optional::FolderIcons);
  entries.addOptional(help, StatusMenuWords::tr("Check for Updates…"), &Commands::checkForUpdates,
                      Optional::CheckForUpdates);
  entries.add(help, StatusMenuWords::tr("About Tarnwick"), &Commands::showAbout);
  addSeparator();
  entries.add(*this, StatusMenuWords::tr("Quit Tarnwick"), &Commands::quit, kQuitKey);
  connect(this, &QMenu::aboutToShow, this, &StatusMenu::refresh);
  refresh();
}

void StatusMenu::refresh() {
  const QString& error = store_.error();
  const bool says = !error.isEmpty();
  // The menu takes this font when it opens; a tray may read it before.
  const QFontMetrics metrics(Typography::widgetFont(TextStyle::Body));
  message_->setText(says ? withoutMnemonic(metrics.elidedText(error, Qt::ElideRight, kMessageWidth)) : QString());
  message_->setToolTip(plainTip(error));
  message_->setVisible(says);
  belowMessage_->setVisible(says);
  continueSetup_->setVisible(!store_.config().onboardingComplete);
  for (const auto& each : refreshers_) each();
}

std::unique_ptr<QMenuBar> makeApplicationMenu(Commands& commands) {
  using Optional = Commands::Optional;
  auto bar = std::make_unique<QMenuBar>();
  std::vector<std::function<void()>> refreshers;
  const Entries entries{commands, refreshers};
  QMenu& program = *bar->addMenu(QStringLiteral("Tarnwick"));
  entries.addOptional(program, StatusMenuWords::tr("Command Bar"), &Commands::toggleCommandBar, Optional::CommandBar);
  entries.addOptional(program, StatusMenuWords::tr("Open a Space…"), &Commands::openSpace, Optional::OpenSpace);
  entries.addOptional(program, StatusMenuWords::tr("Save This Dock as a Space…"), &Commands::saveSpace,
                      Optional::SaveSpace);
  entries.add(program, StatusMenuWords::tr("Settings…"), &Commands::showSettings, kSettingsKey);
  entries.addLibrary(program);
  entries.addOptional(program, StatusMenuWords::tr("Check for Updates…"), &Commands::checkForUpdates,
                      Optional::CheckForUpdates);
  // Without a key: in a window the usual one closes the window, since quitting takes the dock from the screen.
  entries.add(program, StatusMenuWords::tr("Quit Tarnwick"), &Commands::quit);
  const auto refresh = [refreshers] {
    for (const auto& each : refreshers) each();
  };
  refresh();
  QObject::connect(&program, &QMenu::aboutToShow, &program, refresh);

  QMenu& edit = *bar->addMenu(StatusMenuWords::tr("Edit"));
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Undo"), QKeySequence::Undo, "undo");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Cut"), QKeySequence::Cut, "cut");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Copy"), QKeySequence::Copy, "copy");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Paste"), QKeySequence::Paste, "paste");
  editEntry(edit, QT_TRANSLATE_NOOP("Menu", "Select All"), QKeySequence::SelectAll, "selectAll");

  QMenu& window = *bar->addMenu(StatusMenuWords::tr("Window"));
  QAction* close = window.addAction(StatusMenuWords::tr("Close"));
  close->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_Q)});
  QObject::connect(close, &QAction::triggered, close, [] {
    if (QWidget* active = QApplication::activeWindow()) active->close();
  });

  // Without a tray these are offered nowhere else.
  QMenu& help = *bar->addMenu(StatusMenuWords::tr("Help"));
  entries.add(help, StatusMenuWords::tr("Tarnwick Help"), &Commands::showHelp, QKeySequence::HelpContents);
  entries.add(help, StatusMenuWords::tr("About Tarnwick"), &Commands::showAbout);
  for (const auto& each : refreshers) each();
  QObject::connect(&help, &QMenu::aboutToShow, &help, [refreshers] {
    for (const auto& each : refreshers) each();
  });
  return bar;
}

}  // namespace tarnwick
