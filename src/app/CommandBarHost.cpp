#include "app/CommandBarHost.h"

#include <QCursor>
#include <QMimeDatabase>
#include <QPainter>
#include <algorithm>

#include "apps/AppIcons.h"
#include "clipboard/ClipboardHistory.h"
#include "commandbar/StoredChoices.h"
#include "desktop/MotionPreference.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "views/commandbar/CommandBarMeasures.h"
#include "views/commandbar/CommandBarPane.h"
#include "views/theme/DesktopLook.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRowsAboveTheDock = 8;

}  // namespace

CommandBarHost::CommandBarHost(const Parts& parts, const Services& services) : parts_(parts), services_(services) {
  // Its shadow and its margins come and go with the compositor.
  connect(&services.panels, &Panels::compositingChanged, this, &CommandBarHost::hide);
  connect(&services.screens, &Screens::changed, this, [this] {
    if (anchor_ && !screenToUse()) hide();
  });
  connect(&parts.store, &AppStore::configChanged, this, &CommandBarHost::takeChoices);
  takeChoices();
}

CommandBarHost::~CommandBarHost() { hide(); }

void CommandBarHost::toggle() { isShown() ? hide() : show(); }

void CommandBarHost::makeModel() {
  if (model_) return;
  CommandBarParts parts{parts_.store,      services_.installedApps, services_.runningApps,
                        services_.windows, parts_.commands,         parts_.files};
  parts.loadClipboard = [this] { parts_.clipboard.load(); };
  parts.clipboard = [this] { return parts_.clipboard.items(); };
  model_ = std::make_unique<CommandBarModel>(std::move(parts));
  connect(&parts_.clipboard, &ClipboardHistory::didChange, model_.get(), &CommandBarModel::refresh);
  extras_ =
      std::make_unique<CommandExtras>(CommandExtrasParts{.commands = parts_.commands, .settings = parts_.settings});
  rows_ = std::make_unique<CommandBarRows>(*model_, *extras_);
  takeChoices();
}

void CommandBarHost::takeChoices() {
  const DeskOptions desk = parts_.store.config().desk();
  parts_.files.setOn(desk.barFiles);
  if (!model_) return;
  model_->setChoices(storedChoices(desk));
  extras_->setChoices(
      {.findsEmoji = desk.barEmoji, .findsSettings = desk.barSettings, .findsSymbols = desk.barSymbols});
}

/// Where the pointer is over windows of others is known on some desktops only; elsewhere the compositor may tell which
/// display is the active one, or the window with the keyboard does.
std::optional<Screen> CommandBarHost::screenToUse() const {
  const QList<Screen> all = services_.screens.all();
  if (all.isEmpty()) return std::nullopt;
  const auto first = [&all](const auto& fits) -> std::optional<Screen> {
    const auto found = std::ranges::find_if(all, fits);
    return found == all.end() ? std::nullopt : std::optional(*found);
  };
  if (services_.screens.reportsPointer()) {
    const QPointF pointer(QCursor::pos());
    if (auto under = first([&](const Screen& screen) { return screen.frame.contains(pointer); })) return under;
  } else {
    const QString active = services_.screens.activeId();
    if (auto there = first([&](const Screen& screen) { return screen.id == active; })) return there;
    for (const ClientWindow& window : services_.windows.all()) {
      if (!window.active) continue;
      if (auto holding = first([&](const Screen& screen) { return window.screens.contains(screen.id); }))
        return holding;
    }
  }
  if (auto main = first([&](const Screen& screen) { return screen.id == services_.screens.mainId(); })) return main;
  return all.first();
}

QRect CommandBarHost::lineOn(const Screen& screen) {
  const QRectF usable = screen.usable.isEmpty() ? screen.frame : screen.usable;
  const QPointF middle = QPointF(usable.center().x(), usable.top() + usable.height() / 3) - screen.frame.topLeft();
  const int top = static_cast<int>(std::lround(middle.y()));
  const int left = static_cast<int>(std::lround(middle.x() - theme::kBarWidth / 2.0));
  return {left, top - 1, theme::kBarWidth, 1};
}

/// What there is below the field, without what the dock takes.
int CommandBarHost::spaceForRows(const Screen& screen) const {
  const QRectF usable = screen.usable.isEmpty() ? screen.frame : screen.usable;
  const QRectF bar = QRectF(lineOn(screen)).translated(screen.frame.topLeft());
  const double top = bar.bottom() + theme::kBarFieldHeight;
  double end = usable.bottom();
  const QRectF dock = parts_.dock ? parts_.dock(screen.id) : QRectF();
  const bool isBelow = dock.top() > top && dock.left() < bar.right() && dock.right() > bar.left();
  if (!dock.isEmpty() && isBelow) end = std::min(end, dock.top() - kRowsAboveTheDock);
  return static_cast<int>(end - top);
}

std::unique_ptr<Panel> CommandBarHost::makeAnchor(const Screen& screen) const {
  auto clear = std::make_unique<QWidget>();
  clear->setAttribute(Qt::WA_TranslucentBackground);
  clear->setAccessibleName(u"Tarnwick"_s);
  std::unique_ptr<Panel> anchor = services_.panels.make(std::move(clear));
  anchor->place({screen.id, lineOn(screen), {}});
  anchor->setOutline({});
  anchor->setInputRegion({});
  anchor->setShown(true);
  return anchor;
}

void CommandBarHost::show() {
  if (isShown()) return;
  const auto screen = screenToUse();
  if (!screen) return;
  Q_EMIT aboutToShow();
  makeModel();
  parts_.files.opened();
  model_->opened();
  anchor_ = makeAnchor(*screen);

  auto made = std::make_unique<CommandBarPane>(
      *rows_,
      [this](QPainter& painter, const QRectF& box, const CommandItem& item) { drawPicture(painter, box, item); },
      services_.clocks, screen->id);
  pane_ = made.get();
  const bool composited = services_.panels.isComposited();
  pane_->setDockLook(shownStyle(parts_.store.config()), composited ? Backdrop::Plain : Backdrop::Opaque,
                     parts_.store.config().monochrome);
  pane_->setReduceMotion(services_.motion.reducesMotion());
  pane_->setComposited(composited);
  const DeskOptions desk = parts_.store.config().desk();
  pane_->setFindsNothing(!(desk.barApps || desk.barWindows || desk.barWidgets || desk.barSymbols || desk.barEmoji ||
                           desk.barClipboard || desk.barFiles || desk.barSettings || desk.barWeb));
  pane_->setSpaceForRows(spaceForRows(*screen));
  const NameIndexKeeper& names = parts_.files.keeper();
  const auto grow = [pane = pane_, &names] { pane->setGrowing(names.isGrowing()); };
  connect(&names, &NameIndexKeeper::growingChanged, pane_, grow);
  grow();
  connect(pane_, &CommandBarPane::done, this, &CommandBarHost::hide, Qt::QueuedConnection);
  // Nothing that can wait comes before the first frame.
  connect(pane_, &CommandBarPane::appeared, extras_.get(), &CommandExtras::opened);
  connect(pane_, &CommandBarPane::sizeChanged, this, [this] {
    if (popup_) popup_->reposition();
  });

  const QMargins margins = pane_->margins();
  popup_ = anchor_->popup(std::move(made), QRect(QPoint(), lineOn(*screen).size()),
                          PopupStyle{.margins = margins, .gap = 0, .abovePanels = true, .keepsKeys = true});
  // By the time that the signal arrives it may have been opened again.
  const auto closed = [this, popup = popup_.get()] {
    if (popup_.get() == popup) hide();
  };
  connect(popup_.get(), &Popup::closed, this, closed, Qt::QueuedConnection);
  connect(anchor_.get(), &Panel::closed, this, &CommandBarHost::hide, Qt::QueuedConnection);
  pane_->setFocus(Qt::PopupFocusReason);
  Q_EMIT shown();
}

void CommandBarHost::hide() {
  if (!isShown()) return;
  pane_ = nullptr;
  popup_.reset();
  anchor_.reset();
  model_->closed();
  parts_.files.closed();
  Q_EMIT hidden();
}

QString CommandBarHost::iconOf(const CommandItem& item) const {
  if (item.kind == CommandItem::Kind::App) {
    const auto entry = services_.installedApps.byPath(item.path);
    return entry ? entry->iconName : QString();
  }
  if (item.isFolder) return u"folder"_s;
  // By the name alone: the disk is not asked while somebody types.
  const QMimeType type = QMimeDatabase().mimeTypeForFile(item.path, QMimeDatabase::MatchExtension);
  return type.isDefault() ? type.genericIconName() : type.iconName();
}

void CommandBarHost::drawPicture(QPainter& painter, const QRectF& box, const CommandItem& item) const {
  const double ratio = painter.device()->devicePixelRatioF();
  const int side = static_cast<int>(std::lround(box.width()));
  QPixmap picture = services_.icons.pixmap(iconOf(item), side, ratio);
  if (picture.isNull() && item.kind == CommandItem::Kind::File && !item.isFolder)
    picture = services_.icons.pixmap(u"text-x-generic"_s, side, ratio);
  if (picture.isNull()) {
    const QString ofFile = item.isFolder ? u"folder"_s : u"doc"_s;
    pane_->drawSymbolPicture(painter, box, item.kind == CommandItem::Kind::File ? ofFile : u"app"_s);
    return;
  }
  painter.drawPixmap(box.topLeft(), picture);
}

}  // namespace tarnwick
