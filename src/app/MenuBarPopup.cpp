#include "app/MenuBarPopup.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <algorithm>

#include "desktop/MotionPreference.h"
#include "store/AppStore.h"
#include "views/onboarding/MenuBarPanel.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGap = 6;
constexpr int kFromTheCorner = 8;
/// The click on the item that means to close the window closes it as any click outside does, before it is notified.
constexpr double kSameClick = 0.4;

}  // namespace

MenuBarPopup::MenuBarPopup(AppStore& store, const Services& services, Commands& commands)
    : store_(store), services_(services), commands_(commands) {
  // Its shadow and its margins come and go with the compositor.
  connect(&services.panels, &Panels::compositingChanged, this, &MenuBarPopup::hide);
}

MenuBarPopup::~MenuBarPopup() = default;

void MenuBarPopup::toggle(const QRect& item, bool dark) {
  const bool wasOpen = isShown() || store_.scheduler().reference() - closedAt_ < kSameClick;
  hide();
  closedAt_ = 0;
  if (wasOpen) return;
  if (const auto place = placeOf(item)) open(*place, dark);
}

void MenuBarPopup::hide() {
  popup_.reset();
  anchor_.reset();
}

std::optional<PanelPlacement> MenuBarPopup::placeOf(const QRect& item) const {
  const QList<Screen> all = services_.screens.all();
  if (all.isEmpty()) return std::nullopt;
  const auto on = [&](const QRect& place) -> std::optional<PanelPlacement> {
    const auto holds = [&](const Screen& screen) { return screen.frame.contains(QPointF(place.center())); };
    const auto found = std::ranges::find_if(all, holds);
    if (place.isEmpty() || found == all.end()) return std::nullopt;
    return PanelPlacement{found->id, place.translated(-found->frame.topLeft().toPoint()), {}};
  };
  if (const auto place = on(item)) return place;
  if (services_.screens.reportsPointer())
    if (const auto place = on(QRect(QCursor::pos(), QSize(1, 1)))) return place;
  const Screen& main = all.first();
  const bool atLeft = QGuiApplication::isRightToLeft();
  const QRectF usable = main.usable.isEmpty() ? main.frame : main.usable;
  const bool atBottom = usable.bottom() < main.frame.bottom() && usable.top() <= main.frame.top();
  const double x = atLeft ? usable.left() + kFromTheCorner : usable.right() - kFromTheCorner - 1;
  const double y = atBottom ? usable.bottom() - 2 : usable.top() + 1;
  return PanelPlacement{main.id, QRect((QPointF(x, y) - main.frame.topLeft()).toPoint(), QSize(1, 1)), {}};
}

std::unique_ptr<Panel> MenuBarPopup::makeAnchor(const PanelPlacement& place) const {
  auto clear = std::make_unique<QWidget>();
  clear->setAttribute(Qt::WA_TranslucentBackground);
  clear->setAccessibleName(u"Tarnwick"_s);
  std::unique_ptr<Panel> anchor = services_.panels.make(std::move(clear));
  anchor->place(place);
  anchor->setOutline({});
  anchor->setInputRegion({});
  anchor->setShown(true);
  return anchor;
}

void MenuBarPopup::openMenu(QMenu& menu, const QRect& item) {
  const auto place = placeOf(item);
  if (!place || menu.isVisible() || store_.scheduler().reference() - menuClosedAt_ < kSameClick) return;
  menuAnchor_ = makeAnchor(*place);
  // It stays until the entry that was chosen has run.
  const auto closed = [this, anchor = menuAnchor_.get()] {
    menuClosedAt_ = store_.scheduler().reference();
    const auto drop = [this, anchor] {
      if (menuAnchor_.get() == anchor) menuAnchor_.reset();
    };
    QMetaObject::invokeMethod(this, drop, Qt::QueuedConnection);
  };
  connect(&menu, &QMenu::aboutToHide, menuAnchor_.get(), closed);
  menuAnchor_->openMenu(menu, QRect(QPoint(), place->rectangle.size()));
}

void MenuBarPopup::open(const PanelPlacement& place, bool dark) {
  const QSize size = place.rectangle.size();
  anchor_ = makeAnchor(place);

  auto made = std::make_unique<MenuBarPanel>(store_, commands_, services_.motion.reducesMotion());
  MenuBarPanel* panel = made.get();
  panel->setClocks(services_.clocks);
  panel->setScheme(dark, services_.panels.isComposited() ? Backdrop::Plain : Backdrop::Opaque);
  connect(panel, &MenuBarPanel::closeRequested, this, &MenuBarPopup::hide, Qt::QueuedConnection);
  connect(
      panel, &MenuBarPanel::sizeChanged, this,
      [this] {
        if (popup_) popup_->reposition();
      },
      Qt::QueuedConnection);
  const QMargins margins = panel->margins();
  popup_ = anchor_->popup(std::move(made), QRect(QPoint(), size), PopupStyle{.margins = margins, .gap = kGap});
  // By the time that the signal arrives another one may be open.
  const auto closed = [this, popup = popup_.get()] {
    if (popup_.get() != popup) return;
    closedAt_ = store_.scheduler().reference();
    hide();
  };
  connect(popup_.get(), &Popup::closed, this, closed, Qt::QueuedConnection);
  connect(anchor_.get(), &Panel::closed, this, &MenuBarPopup::hide, Qt::QueuedConnection);
}

}  // namespace tarnwick
