#include "app/DockDesk.h"

#include <QGuiApplication>
#include <algorithm>

#include "app/DockMenuModel.h"
#include "app/PanelWiring.h"
#include "app/Readings.h"
#include "store/AppStore.h"
#include "views/dock/StoreSources.h"
#include "views/dock/UndoBubble.h"
#include "views/families/Rooms.h"

namespace tarnwick {
namespace {

constexpr int kOverAMessage = 8;

}  // namespace

DockDesk::DockDesk(DockDeskParts parts)
    : parts_(std::move(parts)),
      edits_(*parts_.store, *parts_.apps, undo_),
      drops_({parts_.store, parts_.files, parts_.opener, &undo_, &edits_, parts_.running}),
      commands_({parts_.store, parts_.running, parts_.windows, parts_.apps, parts_.opener, parts_.files}),
      menus_({parts_.store, parts_.running, parts_.windows, parts_.apps, parts_.files, &commands_, &edits_}),
      tips_(*parts_.store, *parts_.panels) {
  connect(&undo_, &UndoStack::failed, parts_.store, &AppStore::setError);
  guardStrangeEntries();
  connect(&undo_, &UndoStack::pushed, this, &DockDesk::offerUndo);
  connect(&undo_, &UndoStack::gone, this, [this](quint64 entry) {
    QMetaObject::invokeMethod(
        this, [this, entry] { closeBubble(entry); }, Qt::QueuedConnection);
  });
  connect(&commands_, &DockCommands::launchingChanged, this, &DockDesk::rebuildRows);
  connect(parts_.hints, &LauncherHints::changed, this, &DockDesk::rebuildRows);
  connect(parts_.files, &Files::trashChanged, this, &DockDesk::rebuildRows);
  connect(parts_.apps, &InstalledApps::changed, this, [this] {
    for (const auto& [display, dock] : docks_) dock->view().forgetIcons();
    rebuildRows();
  });
  // A tile may stand for another application without standing elsewhere. The rows come first.
  connect(
      parts_.store, &AppStore::runningAppsChanged, this,
      [this] {
        for (const auto& [display, dock] : docks_) placeApplications(display);
      },
      Qt::QueuedConnection);
  connect(parts_.readings, &Readings::changed, this, &DockDesk::rebuildRows);
  connect(parts_.readings, &Readings::measured, this, [this](const QString& family) {
    for (const auto& [display, dock] : docks_) dock->refreshFamily(family);
  });
  commands_.showPanel = [this](const QUuid& widget) {
    // One that was asked for before may still be on its way.
    closeMenu();
    if (openPanel) openPanel(openDisplay_, widget, openTile_);
  };
  commands_.showGallery = commands_.showPanel;
  drops_.sendNearby = parts_.sendNearby;
  menus_.addCalendarFolder = panelActions().addCalendarFolder;
  menus_.chooseIcon = [this](const QString& entryPath) {
    pictures_.askPicture(tr("App Icon"),
                         [this, entryPath](const QString& picture) { menus_.icons().choose(entryPath, picture); });
  };
}

DockDesk::~DockDesk() = default;

void DockDesk::setController(DockController* controller) {
  controller_ = controller;
  tips_.setController(controller);
  connect(controller, &DockController::placed, this, &DockDesk::placeApplications);
  connect(controller, &DockController::goesAway, this, [this](const QString& display) {
    tips_.hide(display);
    if (menuDisplay_ == display) closeMenu();
  });
}

void DockDesk::start() {
  parts_.hints->start();
  parts_.readings->start();
}

void DockDesk::shutdown() {
  bubble_.reset();
  tips_.close();
  delete menu_;
  undo_.clear();
}

bool DockDesk::isBusy(const QString& display) const {
  const auto dock = docks_.find(display);
  if (dock != docks_.end() && dock->second->view().isHeld()) return true;
  return (menu_ && menuDisplay_ == display) || (panelIsOpen && panelIsOpen(display));
}

bool DockDesk::opensDownwards(const QString& display) const {
  const auto dock = docks_.find(display);
  const QList<Screen> screens = parts_.screens->all();
  const auto screen = std::ranges::find(screens, display, &Screen::id);
  if (!controller_ || dock == docks_.end() || screen == screens.end()) return false;
  const double middle = controller_->contentOrigin(display).y() + dock->second->view().glassRect().center().y();
  return middle < screen->usable.center().y();
}

QRect DockDesk::besideRect(const QString& display, const QUuid& widget) const {
  const auto dock = docks_.find(display);
  if (dock == docks_.end()) return {};
  const DockView& view = dock->second->view();
  return view.tileRect(widget).isEmpty() ? QRect() : view.besideRect(widget);
}

std::unique_ptr<DockContent> DockDesk::makeContent(const QString& display) {
  auto dock = std::make_unique<LiveDock>(*parts_.store, *parts_.toggles, display, parts_.icons, actions(display));
  dock->setFrameClock(parts_.clocks->make(display));
  docks_[display] = dock.get();
  connect(&dock->view(), &DockView::tipChanged, this,
          [this, display, view = &dock->view()] { tips_.show(display, view->tip()); });
  connect(&dock->view(), &DockView::handLeft, this, [this] {
    if (controller_) controller_->checkEdge();
  });
  connect(dock.get(), &QObject::destroyed, this, [this, display, gone = dock.get()] {
    if (const auto found = docks_.find(display); found != docks_.end() && found->second == gone) {
      docks_.erase(found);
      commands_.setTileRects(display, {});
    }
  });
  return dock;
}

TileSources DockDesk::sources(const QString& display) const {
  const auto found = docks_.find(display);
  return found == docks_.end() ? TileSources() : found->second->sources();
}

TileSources DockDesk::previews(const QList<DockWidget>& widgets) {
  DockActions questions;
  addQuestions(questions);
  return storeSources(*parts_.store, *parts_.toggles, questions, widgets);
}

void DockDesk::guardStrangeEntries() {
  const auto show = [self = QPointer(this)](const QString& path) {
    if (self) self->commands_.reveal(path);
  };
  parts_.opener->reveal = show;
  parts_.opener->askToRun = [self = QPointer(this), show](const ForeignEntry& entry, const QString& action,
                                                          const std::function<void()>& run) {
    if (self) self->entryQuestion_.ask(entry, action, run, [show, path = entry.path] { show(path); });
  };
}

PanelActions DockDesk::panelActions() {
  PanelActions actions = makePanelActions(parts_, commands_, edits_, folders_, this);
  actions.openEditor = menus_.editWidget;
  actions.changeWidget = [this](const DockWidget& widget) { edits_.update(widget); };
  actions.undo = [this] { undo_.undo(); };
  actions.redo = [this] { undo_.redo(); };
  actions.offerUndo = [this](const QString& display, const QString& sentence, const std::function<void()>& undo) {
    undo_.push({sentence, display}, undo);
  };
  return actions;
}

void DockDesk::markOpen(const QString& display, const QUuid& widget) {
  for (const auto& [id, dock] : docks_) dock->view().setPanelOpen(id == display ? widget : QUuid());
}

void DockDesk::rebuildRows() {
  for (const auto& [display, dock] : docks_) dock->rebuildRow();
}

void DockDesk::placeApplications(const QString& display) {
  const auto found = docks_.find(display);
  if (!controller_ || found == docks_.end()) return;
  const QPointF origin = controller_->contentOrigin(display);
  QHash<quint64, QRectF> places = found->second->view().applicationPlaces();
  for (QRectF& place : places) place.translate(origin);
  commands_.setTileRects(display, places);
}

/// Here comes in what the user does on a dock. What follows from it and knows no dock is meant for this one.
void DockDesk::actOn(const QString& display) { parts_.store->activeDisplay = display; }

DockActions DockDesk::actions(const QString& display) {
  DockActions actions;
  actions.openTile = [this, display](const QUuid& widget, const QRect& tile) {
    actOn(display);
    openDisplay_ = display;
    openTile_ = tile;
    commands_.activateTile(widget);
  };
  actions.tileMenu = [this, display](const QUuid& widget, const QRect& beside) {
    actOn(display);
    openDisplay_ = display;
    openTile_ = beside;
    openMenu(display, menus_.tile(widget, display), beside);
  };
  actions.commands = [this, display](const QUuid& widget, quint64 application, const QRect& beside) {
    return commandsOf(
        display, widget.isNull() ? menus_.application(application, display) : menus_.tile(widget, display), beside);
  };
  actions.dockMenu = [this, display](const QRect& beside) {
    actOn(display);
    openMenu(display, menus_.dock(), beside);
  };
  actions.addWidgets = [this, display] {
    actOn(display);
    if (addWidgets) addWidgets();
  };
  actions.bringApplication = [this](quint64 application) { commands_.activateApplication(application); };
  actions.applicationMenu = [this, display](quint64 application, const QRect& beside) {
    actOn(display);
    openMenu(display, menus_.application(application, display), beside);
  };
  actions.openNewWindow = [this](const QUuid& widget, quint64 application) {
    widget.isNull() ? commands_.newWindow(application) : commands_.newWindowOfTile(widget);
  };
  actions.cycleWindows = [this](quint64 application, int direction) { commands_.cycleWindows(application, direction); };
  actions.placeApplications = [this, display](const QHash<quint64, QRectF>&) { placeApplications(display); };
  actions.dropFiles = [this, display](const DockFileDrop& dropped) {
    actOn(display);
    DockFileDrop drop = dropped;
    drop.display = display;
    drops_.routeDroppedFiles(drop);
  };
  actions.dropWidget = [this, display](const QString& text, qsizetype index) {
    actOn(display);
    drops_.dropWidget(text, index, display);
  };
  actions.mayNotSwipe = [this] { return mayNotSwipe && mayNotSwipe(); };
  actions.moveDock = [this, display](const QPoint& delta) {
    if (controller_) controller_->moveBy(display, delta);
  };
  actions.dockMoved = [this, display] {
    if (controller_) controller_->finishMove(display);
  };
  actions.moveTile = [this, display](qsizetype from, qsizetype to) {
    actOn(display);
    edits_.moveShown(display, from, to);
  };
  actions.removeTile = [this, display](const QUuid& widget) {
    actOn(display);
    edits_.remove(widget, display);
  };
  actions.undo = [this] { undo_.undo(); };
  actions.redo = [this] { undo_.redo(); };
  actions.closePanel = [this] {
    if (dismissPanel) dismissPanel();
  };
  actions.giveBackKeyboard = [this] {
    if (controller_) controller_->leaveKeyboard();
  };
  addQuestions(actions);
  return actions;
}

void DockDesk::addQuestions(DockActions& actions) {
  actions.applicationAt = [this](const QString& path) { return factsAt(path); };
  actions.ownIcon = [this](const QString& path) { return menus_.icons().iconOf(path); };
  actions.hintOf = [this](const QString& desktopId) { return parts_.hints->of(desktopId); };
  actions.isStarting = [this](const QString& path) { return commands_.isLaunching(path); };
  actions.trashItems = [this] { return parts_.files->trashCount(); };
  actions.calendar = [this] { return parts_.readings->calendar(parts_.store->now()); };
  actions.completeReminder = [this](const Reminder& reminder) { parts_.readings->setCompleted(reminder, true); };
  actions.openUrl = [this](const QUrl& url) { parts_.opener->open(url); };
  actions.addReadings = [this](ReadingFacts& readings, const QList<DockWidget>& widgets) {
    Rooms::read(readings, widgets, parts_.readings->services());
  };
  actions.uses24Hour = [this] { return parts_.readings->uses24Hour(); };
  actions.reducesMotion = [this] { return parts_.motion->reducesMotion(); };
  actions.sendsNearby = [this] { return static_cast<bool>(drops_.sendNearby); };
}

std::optional<ApplicationFacts> DockDesk::factsAt(const QString& path) {
  const auto entry = parts_.apps->byPath(path);
  if (!entry) return std::nullopt;
  ApplicationFacts facts;
  facts.name = entry->name;
  const QString own = menus_.icons().iconOf(path);
  facts.icon = own.isEmpty() ? entry->iconName : own;
  if (const auto running = parts_.running->byPath(path)) facts.identity = running->identity;
  return facts;
}

void DockDesk::openMenu(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside) {
  if (!controller_ || !controller_->panel(display) || entries.isEmpty()) return;
  closeMenu();
  auto* menu = new QMenu;
  menu_ = menu;
  menuDisplay_ = display;
  DockMenuModel::fill(*menu, entries);
  connect(menu, &QMenu::aboutToHide, this, [this, menu] {
    // It goes once its entry has run, even where that entry asks something and waits for the answer.
    menu->deleteLater();
    const auto forget = [this, menu] {
      // It may have gone by then, without a word to whoever points to it.
      if (!menu_ || menu_ == menu) {
        menu_.clear();
        markMenu(false);
      }
      if (controller_) controller_->checkEdge();
    };
    QMetaObject::invokeMethod(this, forget, Qt::QueuedConnection);
  });
  markMenu(true);
  if (closePanel) closePanel();
  // Of a double click the toolkit tells twice, and the second word would close a menu that is open by then.
  const auto open = [this, menu, display, beside] {
    if (menu != menu_) return;
    if (Panel* owner = controller_->panel(display)) {
      owner->openMenu(*menu, controller_->mapFromContent(display, beside));
    } else {
      closeMenu();
    }
  };
  QMetaObject::invokeMethod(menu, open, Qt::QueuedConnection);
}

QList<ItemCommand> DockDesk::commandsOf(const QString& display, const QList<DockMenuEntry>& entries,
                                        const QRect& beside) {
  QList<ItemCommand> commands;
  QHash<QString, int> seen;
  for (const DockMenuEntry& entry : entries) {
    if (!entry.run) continue;
    // Windows of one title are told apart by their place alone.
    const auto number = ++seen[entry.text];
    const QString text = number > 1 ? tr("%1 (%2)").arg(entry.text).arg(number) : entry.text;
    commands.append({text, [this, display, beside, run = entry.run] {
                       actOn(display);
                       openDisplay_ = display;
                       openTile_ = beside;
                       run();
                     }});
  }
  return commands;
}

void DockDesk::closeMenu() {
  if (!menu_) return;
  menu_->close();
  menu_->deleteLater();  // One that was never shown says nothing when it is closed.
  menu_.clear();
  markMenu(false);
}

void DockDesk::markMenu(bool open) {
  if (const auto dock = docks_.find(menuDisplay_); dock != docks_.end()) dock->second->view().setMenuOpen(open);
}

void DockDesk::offerUndo(quint64 entry, const QString& sentence, const QString& display) {
  if (sentence.isEmpty()) return;
  if (!controller_ || !host_ || controller_->displays().isEmpty() || parts_.screens->all().isEmpty()) return;
  const auto make = [this, entry, sentence] {
    auto bubble = std::make_unique<UndoBubble>(parts_.store->scheduler(), sentence);
    connect(
        bubble.get(), &MessageBubble::dismissed, this, [this, entry] { closeBubble(entry); }, Qt::QueuedConnection);
    connect(
        bubble.get(), &MessageBubble::actionRequested, this,
        [this, entry] {
          closeBubble(entry);
          undo_.undo(entry);
        },
        Qt::QueuedConnection);
    return bubble;
  };
  bubbleEntry_ = entry;
  bubble_ = std::make_unique<DockBubble>(
      DockBubbleParts{parts_.store, controller_, parts_.screens, parts_.panels, host_}, make);
  bubble_->setDisplay(display.isEmpty() ? parts_.store->activeDisplay : display);
  bubble_->setRaised([this] {
    const int message = messageHeight ? messageHeight() : 0;
    return message > 0 ? message + kOverAMessage : 0;
  });
  bubble_->arrange();
}

void DockDesk::makeRoomForTheMessage() {
  if (bubble_) bubble_->arrange();
}

/// By the time that this is asked for, the bubble may be another entry's.
void DockDesk::closeBubble(quint64 entry) {
  if (entry == bubbleEntry_) bubble_.reset();
}

}  // namespace tarnwick
