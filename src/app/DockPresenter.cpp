#include "app/DockPresenter.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "app/DockMenuModel.h"
#include "app/EntryQuestion.h"
#include "app/Readings.h"
#include "apps/AppIcons.h"
#include "base/LocalFigures.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/StoreSources.h"
#include "views/dock/UndoBubble.h"
#include "views/families/Rooms.h"

namespace tarnwick {
namespace {

constexpr int kOverAMessage = 8;

// For a dock that has to come out before something can be asked beside it.
constexpr double kBetweenLooks = 0.1;  // Seconds.
constexpr int kMostLooks = 50;

DockPorts portsOf(const Services& services, const DockPresenterSetup& setup) {
  return {&services.screens, &services.panels,  &services.zones,    &services.clocks,
          &services.motion,  &services.windows, &setup.preferences, &setup.guard};
}

}  // namespace

DockPresenter::DockPresenter(AppStore& store, const Services& services, Commands& commands, DockPresenterSetup setup)
    : store_(store),
      services_(services),
      commands_(commands),
      setup_(std::move(setup)),
      edits_(store, services.installedApps, undo_),
      drops_({&store, &services.files, &services.opener, &undo_, &edits_, &services.runningApps}),
      tiles_(store, services, commands),
      menus_(store, services, commands, edits_, tiles_),
      tileServices_(store, services, setup_.readings, readingServices(), tiles_, menus_.icons()),
      tips_(store, services.panels),
      panels_(store, services, commands,
              {[this](const QString& display) { return sources(display); }, readingServices(),
               [this](const QString& display) { return opensDownwards(display); }}),
      dock_(store, portsOf(services, setup_), [this](const QString& display) { return makeContent(display); }) {
  drops_.sendNearby = setup_.sendNearby;
  guardStrangeEntries();
  connectContents();
  connectDocks();
}

DockPresenter::~DockPresenter() { closeAll(); }

void DockPresenter::guardStrangeEntries() {
  services_.opener.reveal = [self = QPointer(this)](const QString& path) {
    if (self) self->commands_.reveal(path);
  };
  services_.opener.askToRun = [self = QPointer(this)](const ForeignEntry& entry, const QString& action,
                                                      const std::function<void()>& run) {
    if (self) self->askToRun(entry, action, run);
  };
}

void DockPresenter::askToRun(const ForeignEntry& entry, const QString& action, const std::function<void()>& run) {
  // One that still waits for a dock is over when another comes.
  if (const auto before = std::exchange(waiting_, {}); before.answer) before.answer(false);
  const auto answer = [this, run, path = entry.path](bool accepted) { accepted ? run() : commands_.reveal(path); };
  waiting_ = {entryQuestion(entry, action), answer};
  if (dock_.isManuallyHidden()) dock_.toggle();
  ask(0);
}

/// Beside the dock that was acted on, or the first one. It may have to come out first, as when a file is what the
/// program was started with; where none does, nothing runs.
void DockPresenter::ask(int look) {
  const auto dock = actedDock();
  Panel* panel = dock == docks_.end() ? nullptr : dock_.panel(dock->first);
  if (panel && panel->isShown()) {
    closeMenu();
    const QRect beside = dock->second->view().glassRect().toAlignedRect();
    const auto [question, answer] = std::exchange(waiting_, {});
    panels_.ask(dock->first, question, *panel, dock_.mapFromContent(dock->first, beside), answer);
    dock_.revealAtOnce(dock->first);
  } else if (look == kMostLooks) {
    std::exchange(waiting_, {}).answer(false);
  } else {
    if (panel) dock_.revealAtOnce(dock->first);
    dockComesOut_ = store_.scheduler().after(kBetweenLooks, [this, look] { ask(look + 1); });
  }
}

/// What docks show follows what it is made of.
void DockPresenter::connectContents() {
  connect(&undo_, &UndoStack::failed, &store_, &AppStore::setError);
  connect(&undo_, &UndoStack::pushed, this, &DockPresenter::showUndo);
  connect(&undo_, &UndoStack::gone, this, [this](quint64 entry) {
    QMetaObject::invokeMethod(
        this, [this, entry] { closeBubble(entry); }, Qt::QueuedConnection);
  });
  // A tile may stand for another application without standing elsewhere. The rows come first.
  connect(
      &store_, &AppStore::runningAppsChanged, this,
      [this] {
        for (const auto& [display, dock] : docks_) applicationsPlaced(display);
      },
      Qt::QueuedConnection);
}

void DockPresenter::connectDocks() {
  connect(&tiles_, &DockCommands::windowChoiceRequested, this, &DockPresenter::chooseWindow);
  tips_.setController(&dock_);
  tips_.setBesideDocks([this] {
    QList<QRect> frames;
    if (message_) frames << message_->frame();
    if (bubble_) frames << bubble_->frame();
    frames.removeIf([](const QRect& frame) { return frame.isEmpty(); });
    return frames;
  });
  dock_.hasActivePanel = [this](const QString& display) { return isBusy(display); };
  connect(&dock_, &DockController::placed, this, [this](const QString& display) {
    applicationsPlaced(display);
    if (panels_.hasActivePanel(display))
      panels_.follow(dock_.mapFromContent(display, besideRect(display, panels_.openWidget())));
  });
  connect(&dock_, &DockController::goesAway, this, [this](const QString& display) {
    tips_.hide(display);
    if (menuDisplay_ == display) closeMenu();
    panels_.closeOn(display);
  });
  connect(&panels_, &PanelHost::openChanged, this, [this](const QString& display, const QUuid& widget) {
    markOpen(display, widget);
    dock_.checkEdge();
  });
}

void DockPresenter::show() {
  message_ =
      std::make_unique<MessageLine>(DockBubbleParts{&store_, &dock_, &services_.screens, &services_.panels, &panels_});
  connect(message_.get(), &MessageLine::changed, this, [this] {
    if (bubble_) bubble_->arrange();
  });
  dock_.setMayShow(true);
  message_->update();
}

void DockPresenter::start() {
  services_.hints.start();
  setup_.readings.start();
}

void DockPresenter::closeAll() {
  dockComesOut_.reset();
  waiting_ = {};
  panels_.withdrawQuestion();
  panels_.closeAtOnce();
  bubble_.reset();
  tips_.close();
  delete menu_;
  undo_.clear();
}

void DockPresenter::shutdown() {
  message_.reset();
  dock_.shutdown();
}

// --- Content --------------------------------------------------------------------------------------------------------

std::unique_ptr<DockContent> DockPresenter::makeContent(const QString& display) {
  const auto icons = [this](const DockApp& app, int size, double ratio) {
    return services_.icons.pixmap(app.icon, size, ratio);
  };
  DockHost& host = *this;  // Only here may it be seen as one.
  auto dock = std::make_unique<LiveDock>(store_, services_.toggles, commands_, host, display, icons, tileServices_);
  dock->setFrameClock(services_.clocks.make(display));
  docks_[display] = dock.get();
  connect(&dock->view(), &DockView::tipChanged, this,
          [this, display, view = &dock->view()] { tips_.show(display, view->tip()); });
  connect(&dock->view(), &DockView::released, &dock_, &DockController::checkEdge);
  connect(dock.get(), &QObject::destroyed, this, [this, display, gone = dock.get()] {
    if (const auto found = docks_.find(display); found != docks_.end() && found->second == gone) {
      docks_.erase(found);
      tiles_.setTileRects(display, {});
    }
  });
  return dock;
}

TileSources DockPresenter::sources(const QString& display) const {
  const auto found = docks_.find(display);
  return found == docks_.end() ? TileSources() : found->second->sources();
}

TileSources DockPresenter::previews(const QList<DockWidget>& widgets) {
  return storeSources(store_, services_.toggles, tileServices_, widgets);
}

ReadingServices DockPresenter::readingServices() const {
  ReadingServices readings = setup_.readings.services();
  readings.apps = &services_.installedApps;
  readings.windows = &services_.windows;
  readings.sendsNearby = static_cast<bool>(setup_.sendNearby);
  readings.icons = [&icons = services_.icons](const QString& icon, int size, double ratio) {
    return icons.pixmap(icon, size, ratio);
  };
  return readings;
}

void DockPresenter::takeLook() {
  for (const auto& [display, dock] : docks_) dock->rebuild();
  panels_.applyLook();
  if (message_) message_->update();
  if (bubble_) bubble_->arrange();
}

// --- Places ---------------------------------------------------------------------------------------------------------

bool DockPresenter::isBusy(const QString& display) const {
  const auto dock = docks_.find(display);
  if (dock != docks_.end() && dock->second->view().isHeld()) return true;
  return (menu_ && menuDisplay_ == display) || panels_.hasActivePanel(display);
}

bool DockPresenter::opensDownwards(const QString& display) const {
  const auto dock = docks_.find(display);
  const QList<Screen> screens = services_.screens.all();
  const auto screen = std::ranges::find(screens, display, &Screen::id);
  if (dock == docks_.end() || screen == screens.end()) return false;
  const double middle = dock_.contentOrigin(display).y() + dock->second->view().glassRect().center().y();
  return middle < screen->usable.center().y();
}

QRect DockPresenter::besideRect(const QString& display, const QUuid& widget) const {
  const auto dock = docks_.find(display);
  if (dock == docks_.end()) return {};
  const DockView& view = dock->second->view();
  return view.tileRect(widget).isEmpty() ? QRect() : view.besideRect(widget);
}

void DockPresenter::applicationsPlaced(const QString& display) {
  const auto found = docks_.find(display);
  if (found == docks_.end()) return;
  const QPointF origin = dock_.contentOrigin(display);
  QHash<quint64, QRectF> places = found->second->view().applicationPlaces();
  for (QRectF& place : places) place.translate(origin);
  tiles_.setTileRects(display, places);
}

// --- Clicks and drops -----------------------------------------------------------------------------------------------

/// Here comes in what the user does on a dock. What follows from it and knows no dock is meant for this one.
void DockPresenter::actOn(const QString& display) { store_.setActiveDisplay(display); }

void DockPresenter::activateTile(const QString& display, const QUuid& widget) {
  actOn(display);
  tiles_.activateTile(display, widget);
}

std::map<QString, LiveDock*>::const_iterator DockPresenter::actedDock() const {
  const auto acted = docks_.find(store_.activeDisplay());
  return acted == docks_.end() ? docks_.begin() : acted;
}

qsizetype DockPresenter::apps() const {
  const auto dock = actedDock();
  return dock == docks_.end() ? 0 : dock->second->view().apps().size();
}

void DockPresenter::openApp(int place) {
  const auto dock = actedDock();
  if (dock == docks_.end()) return;
  const QList<DockAppItem> apps = dock->second->view().apps();
  if (place < 0 || place >= apps.size()) return;
  const DockAppItem& app = apps[place];
  app.widget.isNull() ? tiles_.activateApplication(dock->first, app.application)
                      : tiles_.activateTile(dock->first, app.widget);
}

void DockPresenter::openNewWindow(const QUuid& widget, quint64 application) {
  widget.isNull() ? tiles_.newWindow(application) : tiles_.newWindowOfTile(widget);
}

void DockPresenter::dropFiles(const DockFileDrop& drop) {
  actOn(drop.display);
  drops_.routeDroppedFiles(drop);
}

void DockPresenter::moveTile(const QString& display, qsizetype from, qsizetype to) {
  actOn(display);
  edits_.moveShown(display, from, to);
}

void DockPresenter::removeTile(const QString& display, const QUuid& widget) {
  actOn(display);
  edits_.remove(widget, display);
}

void DockPresenter::dropWidget(const QString& display, const QString& text, qsizetype index) {
  actOn(display);
  drops_.dropWidget(text, index, display);
}

bool DockPresenter::holdsProfile() const {
  return !panels_.openWidget().isNull() || (setup_.editorIsOpen && setup_.editorIsOpen());
}

// --- Panels ---------------------------------------------------------------------------------------------------------

void DockPresenter::openPanel(const QString& display, const QUuid& widget) {
  // A menu that was asked for before may still be on its way.
  closeMenu();
  Panel* panel = dock_.panel(display);
  const auto dock = docks_.find(display);
  if (!panel || dock == docks_.end()) return;
  QRect tile = besideRect(display, widget);
  if (tile.isEmpty()) tile = dock->second->view().glassRect().toAlignedRect();
  panels_.open(display, widget, *panel, dock_.mapFromContent(display, tile));
}

void DockPresenter::markOpen(const QString& display, const QUuid& widget) {
  for (const auto& [id, dock] : docks_) dock->view().setPanelOpen(id == display ? widget : QUuid());
}

// --- Menus ----------------------------------------------------------------------------------------------------------

void DockPresenter::openTileMenu(const QString& display, const QUuid& widget, const QRect& beside) {
  actOn(display);
  openMenu(display, menus_.tile(widget, display), beside);
}

void DockPresenter::openApplicationMenu(const QString& display, quint64 application, const QRect& beside) {
  actOn(display);
  openMenu(display, menus_.application(application, display), beside);
}

void DockPresenter::openWindowMenu(const QString& display, quint64 application, const QRect& beside) {
  actOn(display);
  openMenu(display, menus_.windows(application, display), beside);
  if (menu_) choice_ = application;
}

/// A click on the application whose windows are listed has closed that menu by its press, and ends there.
void DockPresenter::chooseWindow(const QString& display, quint64 application) {
  const double sinceClosed = store_.scheduler().reference() - closedChoice_.second;
  if (closedChoice_.first == application && sinceClosed < Press::kHold) return;
  const auto dock = docks_.find(display);
  if (dock == docks_.end()) return;
  const DockView& view = dock->second->view();
  const QRect beside = view.besideApplication(application);
  openWindowMenu(display, application, beside.isEmpty() ? view.glassRect().toAlignedRect() : beside);
}

void DockPresenter::openDockMenu(const QString& display, const QRect& beside) {
  actOn(display);
  openMenu(display, menus_.dock(display), beside);
}

void DockPresenter::openMenu(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside) {
  if (!dock_.panel(display) || entries.isEmpty()) return;
  closeMenu();
  auto* menu = new QMenu;
  menu_ = menu;
  menuDisplay_ = display;
  choice_ = 0;
  DockMenuModel::fill(*menu, entries);
  connect(menu, &QMenu::aboutToHide, this, [this, menu] {
    closedChoice_ = {choice_, store_.scheduler().reference()};
    // It goes once its entry has run, even where that entry asks something and waits for the answer.
    menu->deleteLater();
    const auto forget = [this, menu] {
      // It may have gone by then, without a word to whoever points to it.
      if (!menu_ || menu_ == menu) {
        menu_.clear();
        markMenu(false);
      }
      dock_.checkEdge();
    };
    QMetaObject::invokeMethod(this, forget, Qt::QueuedConnection);
  });
  markMenu(true);
  panels_.closeAtOnce();
  // Of a double click the toolkit tells twice, and the second word would close a menu that is open by then.
  const auto open = [this, menu, display, beside] {
    if (menu != menu_) return;
    if (Panel* owner = dock_.panel(display)) {
      owner->openMenu(*menu, dock_.mapFromContent(display, beside));
    } else {
      closeMenu();
    }
  };
  QMetaObject::invokeMethod(menu, open, Qt::QueuedConnection);
}

QList<ItemCommand> DockPresenter::commandsOf(const QString& display, const QUuid& widget, quint64 application,
                                             const QRect&) {
  const QList<DockMenuEntry> entries = !widget.isNull()   ? menus_.tile(widget, display)
                                       : application != 0 ? menus_.application(application, display)
                                                          : menus_.dock(display);
  QList<ItemCommand> commands;
  QHash<QString, int> seen;
  for (const DockMenuEntry& entry : DockMenuModel::flat(entries)) {
    if (!entry.run) continue;
    // Windows of one title are distinguished by their place alone.
    const auto number = ++seen[entry.text];
    const QString text = number > 1 ? tr("%1 (%2)").arg(entry.text, LocalFigures::number(number)) : entry.text;
    commands.append({text, [this, display, run = entry.run] {
                       actOn(display);
                       run();
                     }});
  }
  return commands;
}

void DockPresenter::closeMenu() {
  if (!menu_) return;
  menu_->close();
  menu_->deleteLater();  // One that was never shown says nothing when it is closed.
  menu_.clear();
  markMenu(false);
}

void DockPresenter::markMenu(bool open) {
  if (const auto dock = docks_.find(menuDisplay_); dock != docks_.end()) dock->second->view().setMenuOpen(open);
}

// --- Undo and redo --------------------------------------------------------------------------------------------------

void DockPresenter::showUndo(quint64 entry, const QString& sentence, const QString& display) {
  if (sentence.isEmpty() || !message_) return;
  if (dock_.displays().isEmpty() || services_.screens.all().isEmpty()) return;
  const auto make = [this, entry, sentence] {
    auto bubble = std::make_unique<UndoBubble>(store_.scheduler(), sentence);
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
      DockBubbleParts{&store_, &dock_, &services_.screens, &services_.panels, &panels_}, make);
  bubble_->setDisplay(display.isEmpty() ? store_.activeDisplay() : display);
  bubble_->setRaised([this] {
    const int message = message_ ? message_->height() : 0;
    return message > 0 ? message + kOverAMessage : 0;
  });
  bubble_->arrange();
}

/// By the time that this is asked for, the bubble may be another entry's.
void DockPresenter::closeBubble(quint64 entry) {
  if (entry == bubbleEntry_) bubble_.reset();
}

}  // namespace tarnwick
