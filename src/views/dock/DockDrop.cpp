// Things of other programs, and widgets from the library, that are held over the dock and dropped on it.

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <utility>

#include "views/dock/DockView.h"
#include "views/theme/Theme.h"

namespace tarnwick {

void DockView::dragEnterEvent(QDragEnterEvent* event) {
  if (!hold(event)) return;
  Q_EMIT dragStarted();
}

void DockView::dragMoveEvent(QDragMoveEvent* event) {
  if (hold(event)) Q_EMIT dragMoved();
}

void DockView::dragLeaveEvent(QDragLeaveEvent*) { clearDrop(); }

void DockView::dropEvent(QDropEvent* event) {
  if (!hold(event)) return;
  const DropHover drop = *drop_;
  const DockFileDrop files = fileDrop(*event);
  clearDrop();
  if (drop.widget)
    Q_EMIT widgetTextDropped(event->mimeData()->text(), drop.index);
  else
    Q_EMIT filesDropped(files);
}

/// Takes what is held at the event's place, or refuses it.
bool DockView::hold(QDropEvent* event) {
  const QMimeData& mime = *event->mimeData();
  const bool widget = DropRules::carriesWidget(mime);
  if ((!widget && !DropRules::carriesFiles(mime)) || !layout_.glass.contains(event->position())) {
    clearDrop();
    event->ignore();
    return false;
  }
  DropHover hover = drop_.value_or(DropHover{});
  hover.pointer = event->position();
  hover.widget = widget;
  hover.item = -1;
  hover.taker = DropRules::Taker::None;
  hover.index = layout_.widgetsBefore(event->position().x());
  const qsizetype under = layout_.itemUnder(event->position(), row_.scale).value_or(-1);
  const DockWidget* tile = widgetOf(under);
  if (!widget && (tile || appOf(under))) {
    hover.taker = tile ? DropRules::takerOf(*tile) : DropRules::Taker::Application;
    // The file system is asked when a folder is entered, not with every move.
    if (hover.taker == DropRules::Taker::Folder && std::exchange(hover.looked, under) != under)
      hover.folder = DropRules::lookAt(DropRules::folderOf(*tile), mime.urls());
    if (hover.taker == DropRules::Taker::Folder && !hover.folder.exists) hover.taker = DropRules::Taker::None;
    if (hover.taker == DropRules::Taker::Share && !row_.sendsNearby) hover.taker = DropRules::Taker::None;
    if (hover.taker != DropRules::Taker::None) hover.item = under;
  }
  const bool first = !drop_;
  drop_ = hover;
  const Qt::DropAction action = widget ? Qt::CopyAction
                                       : DropRules::action(hover.taker, event->possibleActions(), event->modifiers(),
                                                           hover.folder.sameFileSystem);
  event->setDropAction(action);
  event->setAccepted(action != Qt::IgnoreAction);
  if (first) setPointer(std::nullopt);
  edges_.hold(event->position());
  springLoad();
  updateRow();
  return action != Qt::IgnoreAction;
}

DockFileDrop DockView::fileDrop(const QDropEvent& event) const {
  DockFileDrop files;
  files.urls = event.mimeData()->urls();
  if (const DockWidget* widget = widgetOf(drop_->item)) files.widget = widget->id;
  if (drop_->item >= 0) files.application = applicationOf(drop_->item);
  files.index = drop_->index;
  files.action = event.dropAction();
  return files;
}

void DockView::clearDrop() {
  if (!drop_) return;
  drop_.reset();
  edges_.letGo();
  springLoad();
  updateRow();
}

void DockView::springLoad() {
  const DropRules::Taker taker = drop_ ? drop_->taker : DropRules::Taker::None;
  const bool opens = taker == DropRules::Taker::Folder || taker == DropRules::Taker::Application;
  const qsizetype item = opens ? drop_->item : -1;
  if (std::exchange(openingItem_, item) == item) return;
  opening_.reset();
  if (item >= 0 && scheduler_) opening_ = scheduler_->after(theme::kSpringLoad, [this, item] { openHeld(item); });
}

/// What is open already, or in front, a click would close or put away.
void DockView::openHeld(qsizetype item) {
  if (!drop_ || drop_->item != item) return;
  if (const DockApp* app = appOf(item)) {
    if (!app->front) Q_EMIT applicationActivated(app->id);
  } else if (const DockWidget* widget = widgetOf(item); widget && widget->id != panelOpen_) {
    const TileContent* content = contentOf(item);
    if (!content || !content->application().isFront) Q_EMIT tileActivated(widget->id);
  }
}

}  // namespace tarnwick
