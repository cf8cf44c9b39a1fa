#include "app/DockPresenter.h"

#include <QGuiApplication>
#include <algorithm>
#include <utility>

#include "app/Readings.h"
#include "apps/AppIcons.h"
#include "desktop/NearbySharing.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/dock/StoreSources.h"
#include "views/dock/UndoBubble.h"
#include "views/families/Rooms.h"

namespace tarnwick {
namespace {

constexpr int kOverAMessage = 8;

}  // namespace

DockPresenter::DockPresenter(AppStore& store, const Services& services, Commands& commands, DockPresenterSetup setup)
    : store_(store),
      services_(services),
      commands_(commands),
      setup_(std::move(setup)),
      edits_(store, services.installedApps, undo_),
      drops_(store, services, undo_, edits_),
      tiles_(store, services, commands),
      menus_(store, services, commands, edits_, tiles_),
      tileServices_(store, services, setup_.readings, readingServices(), tiles_, menus_.icons()),
      tips_(store, services, setup_.readings.windows()),
      carry_(services.panels),
      seen_(store, docks_, setup_.readings.connections(), setup_.readings.windows()),
      panels_(store, services, commands,
              {[this](const QString& display) { return keepSources(display); }, readingServices(),
               [this](const QString& display) { return opensDownwards(display); }}),
      menuHost_(store, services, menus_, dock_, docks_, panels_),
      questions_(store, dock_, docks_, menuHost_, panels_),
      dock_(store, services, setup_.preferences, setup_.guard,
            [this](const QString& display) { return makeContent(display); }),
      calls_(store, services.hints, services.installedApps, [this] { return dock_.displays(); }) {
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
    if (!self) return;
    const auto answer = [self, run, path = entry.path](bool accepted) {
      if (accepted) return run();
      if (self) self->commands_.reveal(path);
    };
    self->questions_.ask(DockQuestions::aboutEntry(entry, action), self->store_.activeDisplay(), answer);
  };
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
        for (const auto& [display, dock] : docks_.all()) applicationsPlaced(display);
      },
      Qt::QueuedConnection);
}

void DockPresenter::connectDocks() {
  connect(&store_, &AppStore::layoutChanged, &dock_, &DockController::refresh);
  connect(&tiles_, &DockCommands::windowChoiceRequested, this, [this](const QString& display, quint64 application) {
    actOn(display);
    menuHost_.chooseWindow(display, application);
  });
  connect(&menus_, &DockMenus::emptyTrashRequested, this, [this](const QString& display, const QUuid& widget) {
    const auto answer = [this](bool accepted) {
      if (accepted) commands_.emptyTrash();
    };
    questions_.ask(DockQuestions::aboutTrash(), display, answer, widget);
  });
  tips_.setController(&dock_);
  carry_.setController(&dock_);
  tips_.setBesideDocks([this] {
    QList<QRect> frames;
    if (message_) frames << message_->frame();
    if (bubble_) frames << bubble_->frame();
    frames.removeIf([](const QRect& frame) { return frame.isEmpty(); });
    return frames;
  });
  dock_.hasActivePanel = [this](const QString& display) { return isBusy(display); };
  connect(&dock_, &DockController::placed, this, [this](const QString& display) { applicationsPlaced(display); });
  connect(&dock_, &DockController::goesAway, this, [this](const QString& display) {
    tips_.hide(display);
    menuHost_.closeOn(display);
    panels_.closeOn(display);
  });
  connect(&calls_, &AttentionCalls::called, &dock_, &DockController::peep);
  connect(&panels_, &PanelHost::filesDropped, &drops_, &DockDrops::dropInto);
  connect(&panels_, &PanelHost::openChanged, this, [this](const QString& display, const QUuid& widget) {
    markOpen(display, widget);
    dock_.checkEdge();
  });
}

void DockPresenter::show() {
  message_ = std::make_unique<MessageLine>(DockBubbleParts{store_, services_, dock_, panels_}, commands_);
  connect(message_.get(), &MessageLine::pointed, &tiles_, &DockCommands::holdMessage);
  connect(message_.get(), &MessageLine::changed, this, [this] {
    tips_.close();
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
  questions_.withdraw();
  panels_.closeAtOnce();
  bubble_.reset();
  tips_.close();
  carry_.close();
  menuHost_.drop();
  undo_.clear();
}

void DockPresenter::giveWay() {
  panels_.closeAtOnce();
  tips_.close();
  menuHost_.drop();
}

void DockPresenter::makeRoom() {
  // What is asked comes from a window that is open already.
  if (!panels_.openWidget().isNull()) panels_.close();
  tips_.close();
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
  docks_.add(display, *dock);
  seen_.watch(*dock);
  connect(&dock->view(), &DockView::tipChanged, this,
          [this, display, view = &dock->view()] { tips_.show(display, view->tip()); });
  connect(&dock->view(), &DockView::carriedChanged, this,
          [this, display, view = &dock->view()] { carry_.show(display, view->carried()); });
  connect(&dock->view(), &DockView::released, &dock_, &DockController::checkEdge);
  connect(dock.get(), &QObject::destroyed, this, [this, display, gone = dock.get()] {
    if (docks_.remove(display, gone)) tiles_.setTileRects(display, {});
  });
  return dock;
}

std::unique_ptr<KeptSources> DockPresenter::keepSources(const QString& display) const {
  return keepStoreSources(store_, services_.toggles, tileServices_, display);
}

ReadingServices DockPresenter::readingServices() const {
  ReadingServices readings = setup_.readings.services(services_);
  readings.sendsNearby = services_.nearby.isAvailable();
  readings.icons = [&icons = services_.icons](const QString& icon, int size, double ratio) {
    return icons.pixmap(icon, size, ratio);
  };
  return readings;
}

void DockPresenter::takeLook() {
  for (const auto& [display, dock] : docks_.all()) dock->rebuild();
  panels_.applyLook();
  if (message_) message_->update();
  if (bubble_) bubble_->arrange();
}

// --- Places ---------------------------------------------------------------------------------------------------------

bool DockPresenter::isBusy(const QString& display) const {
  const DockView* view = docks_.view(display);
  if (view && view->isHeld()) return true;
  return menuHost_.isOpenOn(display) || panels_.hasActivePanel(display);
}

QPointF DockPresenter::mapAcross(const QString& from, const QString& to, QPointF at) const {
  return dock_.contentOrigin(from) + at - dock_.contentOrigin(to);
}

QString DockPresenter::dockAcross(const QString& display, QPointF at) const {
  for (const auto& [other, dock] : docks_.all()) {
    const QRectF glass = dock->view().glassRect();
    if (other != display && dock_.isVisible(other) && glass.contains(mapAcross(display, other, at))) return other;
  }
  return {};
}

bool DockPresenter::opensDownwards(const QString& display) const {
  const DockView* view = docks_.view(display);
  const QList<Screen> screens = services_.screens.all();
  const auto screen = std::ranges::find(screens, display, &Screen::id);
  if (!view || screen == screens.end()) return false;
  const double middle = dock_.contentOrigin(display).y() + view->glassRect().center().y();
  return middle < screen->usable.center().y();
}

void DockPresenter::applicationsPlaced(const QString& display) {
  const DockView* view = docks_.view(display);
  if (!view) return;
  const QPointF origin = dock_.contentOrigin(display);
  QHash<quint64, QRectF> places = view->applicationPlaces();
  for (QRectF& place : places) place.translate(origin);
  tiles_.setTileRects(display, places);
  if (!panels_.hasActivePanel(display)) return;
  if (const QRect tile = docks_.besideWidget(display, panels_.openWidget()); !tile.isEmpty())
    panels_.follow(dock_.mapFromContent(display, tile));
}

// --- Clicks and drops -----------------------------------------------------------------------------------------------

/// Here comes in what the user does on a dock. What follows from it and knows no dock is meant for this one.
void DockPresenter::actOn(const QString& display) { store_.setActiveDisplay(display); }

QList<ItemCommand> DockPresenter::commandsOf(const QString& display, const QUuid& widget, quint64 application,
                                             const QRect&) {
  QList<ItemCommand> commands = menuHost_.commands(display, widget, application);
  for (ItemCommand& command : commands) {
    command.run = [this, display, run = std::move(command.run)] {
      actOn(display);
      run();
    };
  }
  return commands;
}

void DockPresenter::activateTile(const QString& display, const QUuid& widget) {
  actOn(display);
  tiles_.activateTile(display, widget);
}

qsizetype DockPresenter::apps() const {
  const LiveDocks::Dock dock = docks_.ofOrFirst(store_.activeDisplay());
  return dock ? dock.content->view().apps().size() : 0;
}

void DockPresenter::openApp(int place) {
  const LiveDocks::Dock dock = docks_.ofOrFirst(store_.activeDisplay());
  if (!dock) return;
  const QList<DockAppItem> apps = dock.content->view().apps();
  if (place < 0 || place >= apps.size()) return;
  const DockAppItem& app = apps[place];
  app.widget.isNull() ? tiles_.activateApplication(dock.display, app.application)
                      : tiles_.activateTile(dock.display, app.widget);
}

void DockPresenter::showNumbers(const QSet<int>& apps) {
  const LiveDock* acted = docks_.ofOrFirst(store_.activeDisplay()).content;
  for (const auto& [display, dock] : docks_.all()) dock->view().showNumbers(dock == acted ? apps : QSet<int>());
}

void DockPresenter::openNewWindow(const QString& display, const QUuid& widget, quint64 application) {
  actOn(display);
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

void DockPresenter::moveTileAcross(const QString& display, const QUuid& widget, QPointF at) {
  const QString other = dockAcross(display, at);
  const DockView* view = docks_.view(other);
  if (!view) return;
  actOn(other);
  edits_.moveTo(widget, other, view->insertionAt(mapAcross(display, other, at)));
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

void DockPresenter::openPanel(const QString& display, const QUuid& widget, const QString& as) {
  // A menu that was asked for before may still be on its way.
  menuHost_.close();
  Panel* panel = dock_.panel(display);
  if (!panel || !docks_.of(display)) return;
  QRect tile = docks_.besideWidget(display, widget);
  if (tile.isEmpty()) tile = docks_.glass(display);
  panels_.open(display, widget, *panel, dock_.mapFromContent(display, tile), as);
}

void DockPresenter::markOpen(const QString& display, const QUuid& widget) {
  for (const auto& [id, dock] : docks_.all()) dock->view().setPanelOpen(id == display ? widget : QUuid());
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
  bubble_ = std::make_unique<DockBubble>(DockBubbleParts{store_, services_, dock_, panels_}, make);
  bubble_->setDisplay(display.isEmpty() ? store_.activeDisplay() : display);
  bubble_->setRaised([this] {
    const int message = message_ ? message_->height() : 0;
    return message > 0 ? message + kOverAMessage : 0;
  });
  tips_.close();  // It may lie where the bubble comes.
  bubble_->arrange();
}

/// By the time that this is asked for, the bubble may be another entry's.
void DockPresenter::closeBubble(quint64 entry) {
  if (entry == bubbleEntry_) bubble_.reset();
}

}  // namespace tarnwick
