#include "views/dock/DropController.h"

#include <QDropEvent>
#include <QMimeData>
#include <utility>

#include "base/DomainError.h"
#include "config/WidgetTransfer.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

std::optional<DockWidget> widgetIn(const QMimeData& mime) {
  try {
    return WidgetTransfer::decode(mime.text());
  } catch (const DomainError&) {
    return std::nullopt;  // What is wrong with it is said once it is dropped.
  }
}

}  // namespace

bool DropController::hold(QDropEvent& event) {
  const QMimeData& mime = *event.mimeData();
  const bool widget = DropRules::carriesWidget(mime);
  if ((!widget && !DropRules::carriesFiles(mime)) || !tiles_.layout().glass.contains(event.position())) {
    letGo();
    event.ignore();
    return false;
  }
  Hover hover = hover_.value_or(Hover{});
  hover.isWidget = widget;
  hover.x = event.position().x();
  findTaker(hover, event);
  const bool isFirst = !hover_;
  if (isFirst && widget) hover.widget = widgetIn(mime);
  hover_ = hover;
  const Qt::DropAction action =
      widget ? Qt::CopyAction
             : DropRules::action(hover.taker, event.possibleActions(), event.modifiers(), hover.folder.sameFileSystem);
  event.setDropAction(action);
  event.setAccepted(action != Qt::IgnoreAction);
  if (isFirst) Q_EMIT entered();
  edges_.hold(event.position());
  springLoad();
  Q_EMIT changed();
  return action != Qt::IgnoreAction;
}

void DropController::findTaker(Hover& hover, const QDropEvent& event) const {
  using Taker = DropRules::Taker;
  hover.item = -1;
  hover.taker = Taker::None;
  hover.index = tiles_.layout().widgetsBefore(hover.x);
  const qsizetype under = tiles_.layout().itemUnder(event.position(), tiles_.row().scale).value_or(-1);
  const DockWidget* tile = tiles_.widgetOf(under);
  if (hover.isWidget || (!tile && !tiles_.appOf(under))) return;
  hover.taker = tile ? DropRules::takerOf(*tile) : Taker::Application;
  // The file system is asked when a folder is entered, not with every move.
  if (hover.taker == Taker::Folder && std::exchange(hover.looked, under) != under)
    hover.folder = DropRules::lookAt(DropRules::folderOf(*tile), event.mimeData()->urls());
  if (hover.taker == Taker::Folder && !hover.folder.exists) hover.taker = Taker::None;
  if (hover.taker == Taker::Share && !tiles_.row().sendsNearby) hover.taker = Taker::None;
  if (hover.taker != Taker::None) hover.item = under;
}

void DropController::drop(QDropEvent& event) {
  if (!hold(event)) return;
  const Hover hover = *hover_;
  const DockFileDrop files = filesOf(event);
  letGo();
  if (hover.isWidget)
    Q_EMIT widgetTextDropped(event.mimeData()->text(), hover.index);
  else
    Q_EMIT filesDropped(files);
}

DockFileDrop DropController::filesOf(const QDropEvent& event) const {
  DockFileDrop files;
  files.urls = event.mimeData()->urls();
  if (const DockWidget* widget = tiles_.widgetOf(hover_->item)) files.widget = widget->id;
  if (hover_->item >= 0) files.application = tiles_.applicationOf(hover_->item);
  files.index = hover_->index;
  files.action = event.dropAction();
  return files;
}

/// What would take a file is found with its next move.
void DropController::follow() {
  if (!hover_ || !hover_->isWidget) return;
  const qsizetype index = tiles_.layout().widgetsBefore(hover_->x);
  if (std::exchange(hover_->index, index) != index) Q_EMIT changed();
}

void DropController::letGo() {
  if (!hover_) return;
  hover_.reset();
  edges_.letGo();
  springLoad();
  Q_EMIT changed();
}

std::optional<qsizetype> DropController::insertion() const {
  return hover_ && hover_->item < 0 ? std::optional(hover_->index) : std::nullopt;
}

std::optional<RowGuest> DropController::guest() const {
  return hover_ && hover_->widget ? std::optional(RowGuest{*hover_->widget, hover_->index}) : std::nullopt;
}

void DropController::springLoad() {
  const DropRules::Taker taker = hover_ ? hover_->taker : DropRules::Taker::None;
  const bool opens = taker == DropRules::Taker::Folder || taker == DropRules::Taker::Application;
  const qsizetype item = opens ? hover_->item : -1;
  if (std::exchange(openingItem_, item) == item) return;
  opening_.reset();
  if (item >= 0) opening_ = scheduler_.after(theme::kSpringLoad, [this, item] { open(item); });
}

/// What is in front already a click would put away.
void DropController::open(qsizetype item) {
  if (!isOver(item)) return;
  if (const DockApp* app = tiles_.appOf(item)) {
    if (!app->front) Q_EMIT applicationWanted(app->id);
  } else if (const DockWidget* widget = tiles_.widgetOf(item)) {
    const TileContent* content = tiles_.contentOf(item);
    if (!content || !content->application().isFront) Q_EMIT tileWanted(widget->id);
  }
}

}  // namespace tarnwick
