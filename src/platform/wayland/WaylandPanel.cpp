#include "platform/wayland/WaylandPanel.h"

#include <qpa/qwindowsysteminterface.h>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <utility>

#include "desktop/PopupPlacement.h"
#include "platform/wayland/WaylandPopup.h"

namespace tarnwick {

WaylandPanel::WaylandPanel(const WaylandSession& session, WaylandScreens& screens, PanelPointer& pointer,
                           PanelOrder& order, TransientLayers& transients, std::unique_ptr<QWidget> content)
    : session_(session),
      screens_(screens),
      pointer_(pointer),
      order_(order),
      transients_(transients),
      held_(session),
      content_(std::move(content)) {
  content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                           Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that it is given.
  content_->installEventFilter(this);
  connect(&screens, &WaylandScreens::changed, this, &WaylandPanel::followScreens);
  connect(&order, &PanelOrder::changed, this, &WaylandPanel::applyPlacement);
  connect(&held_, &HeldPointer::moved, this, &WaylandPanel::sendPointerMotion);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, &WaylandPanel::screenGoes);
}

WaylandPanel::~WaylandPanel() {
  if (placement_) screens_.noteReservation(placement_->screen, edge_, 0);
  pointer_.forget(this);
}

wl_surface* WaylandPanel::surface() const {
  return content_->windowHandle() ? WaylandSession::surfaceOf(*content_->windowHandle()) : nullptr;
}

void WaylandPanel::place(const PanelPlacement& placement) {
  const QString before = placement_ ? placement_->screen : placement.screen;
  placement_ = placement;
  const bool moves = before != placement.screen;
  if (moves) screens_.noteReservation(before, edge_, 0);
  const bool wasShown = isShown();
  // A surface stays on the display that it was made for.
  if (moves && wasShown) hide();
  if (!applyPlacement()) {
    if (wasShown) lose();
  } else if (moves && wasShown) {
    setShown(true);
  }
}

void WaylandPanel::setShown(bool shown) {
  if (shown == isShown()) return;
  if (!shown) {
    hide();
    return;
  }
  if (!placement_ || !applyPlacement()) return;
  content_->winId();
  if (!layer_) {
    layer_ = new LayerWindow(session_, *content_->windowHandle());
    connect(layer_, &LayerWindow::closed, this, &WaylandPanel::lose);
    connect(layer_, &LayerWindow::cleared, content_.get(), qOverload<>(&QWidget::update));
    connect(layer_, &LayerWindow::cleared, this, &WaylandPanel::applyBlur);
    connect(layer_, &LayerWindow::dropped, this, [this] { blur_.reset(); });
    content_->windowHandle()->installEventFilter(this);
  }
  layer_->setInput(input_);
  applyPlacement();
  layer_->setScreen(*screens_.native(placement_->screen));
  layer_->prepare();
  applyBlur();
  content_->show();
  applyArea();
  applyReservation();
}

void WaylandPanel::setInputRegion(const QRegion& region) {
  if (input_ == region) return;
  input_ = region;
  if (layer_) layer_->setInput(region);
  applyArea();
}

void WaylandPanel::setBlurBehind(const QRegion& region) {
  if (std::exchange(blurBehind_, region) != region) applyBlur();
}

// The compositor looks at the region again only when it is given a new one.
void WaylandPanel::applyBlur() {
  const bool had = std::exchange(blur_, nullptr) != nullptr;
  wl_surface* panel = surface();
  org_kde_kwin_blur_manager* manager = session_.blur();
  if (!panel || !manager) return;
  if (!blurBehind_.isEmpty()) {
    blur_.reset(org_kde_kwin_blur_manager_create(manager, panel));
    org_kde_kwin_blur_set_region(blur_.get(), session_.region(blurBehind_).get());
    org_kde_kwin_blur_commit(blur_.get());
  } else if (had) {
    org_kde_kwin_blur_manager_unset(manager, panel);
  } else {
    return;
  }
  wl_surface_commit(panel);
}

void WaylandPanel::reserve(Edge edge, int thickness) {
  if (edge_ == edge && thickness_ == thickness) return;
  edge_ = edge;
  thickness_ = thickness;
  applyReservation();
}

void WaylandPanel::setKeyboard(Keyboard keyboard) {
  if (std::exchange(keyboard_, keyboard) != keyboard) applyPlacement();
}

void WaylandPanel::setAboveFullscreen(bool above) {
  if (std::exchange(isAboveFullscreen_, above) != above) applyPlacement();
}

std::unique_ptr<Popup> WaylandPanel::popup(std::unique_ptr<QWidget> content, const QRect& beside,
                                           const PopupStyle& style) {
  auto popup =
      std::make_unique<WaylandPopup>(session_, screens_, pointer_, order_, *content_,
                                     placement_ ? placement_->screen : QString(), std::move(content), beside, style);
  popup->show();
  return popup;
}

void WaylandPanel::openMenu(QMenu& menu, const QRect& beside) {
  if (!placement_ || !layer_ || !isShown()) return;
  const QRect anchor(content_->mapToGlobal(beside.topLeft()), beside.size());
  const QRect usable = screens_.screen(placement_->screen).usable.toRect();
  const auto corner = [&](const QSize& size) {
    return PopupPlacement::outline(anchor, size, PopupPlacement::kMenuGap, usable).topLeft();
  };
  transients_.openMenu(menu, *layer_, corner);
}

bool WaylandPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == content_.get()) {
    if (event->type() == QEvent::Close) QMetaObject::invokeMethod(this, &Panel::closed, Qt::QueuedConnection);
    return false;
  }
  follow(event);
  // Where the toolkit thinks that the pointer is, it is not then.
  return event->type() == QEvent::MouseMove && !isSendingMotion_ && held_.place();
}

/// The window has moved under the pointer since it was pressed.
void WaylandPanel::sendPointerMotion() {
  const std::optional<QPointF> pointerPlace = held_.place();
  if (!pointerPlace || heldButton_ == Qt::NoButton) return;
  const QPointF within = *pointerPlace - content_->pos();
  QMouseEvent move(QEvent::MouseMove, within, within, *pointerPlace, Qt::NoButton, heldButton_,
                   QGuiApplication::keyboardModifiers());
  const QScopedValueRollback<bool> guard(isSendingMotion_, true);
  QCoreApplication::sendEvent(content_->windowHandle(), &move);
}

/// Who drags something may take it back by a key. Where a change of mind takes the window away for a moment the pointer
/// would lose it too.
void WaylandPanel::lendKeys() {
  const QWidget* grabber = QWidget::keyboardGrabber();
  const bool drags = heldButton_ != Qt::NoButton && grabber && grabber->window() == content_.get();
  if (session_.judgesKeysOnce() || std::exchange(lendsKeys_, drags) == drags) return;
  layer_->borrowKeys(drags);
}

void WaylandPanel::follow(QEvent* event) {
  const auto meet = [this](const QPointF& place, bool isDragging) {
    const QRegion area = input_.value_or(QRegion(content_->rect()));
    const bool isOver = area.contains(QPoint(qFloor(place.x()), qFloor(place.y())));
    pointer_.setDragging(this, isDragging);
    pointer_.setPlace(this, isOver ? std::optional(place + content_->geometry().topLeft()) : std::nullopt);
  };
  switch (event->type()) {
    case QEvent::Enter:
      held_.listen();
      meet(static_cast<QEnterEvent*>(event)->position(), false);
      break;
    case QEvent::MouseMove:
      meet(static_cast<QMouseEvent*>(event)->position(), false);
      lendKeys();
      break;
    case QEvent::DragEnter:
    case QEvent::DragMove:
      meet(static_cast<QDropEvent*>(event)->position(), true);
      break;
    case QEvent::MouseButtonPress: {
      const auto& press = *static_cast<QMouseEvent*>(event);
      heldButton_ = press.button();
      pointer_.press(press.position() + content_->pos());
      break;
    }
    case QEvent::MouseButtonRelease:
      sendPointerMotion();
      heldButton_ = Qt::NoButton;
      held_.settle();
      lendKeys();
      // A finger that is lifted is over nothing, and no event says so.
      if (static_cast<QMouseEvent*>(event)->pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen)
        QWindowSystemInterface::handleLeaveEvent(content_->windowHandle());
      break;
    case QEvent::Leave:
      // A button that begins a drag is never released.
      heldButton_ = Qt::NoButton;
      held_.rest();
      lendKeys();
      [[fallthrough]];
    case QEvent::DragLeave:
    case QEvent::Drop:
      // What is dragged no more is still over the panel: its place goes first.
      pointer_.setPlace(this, std::nullopt);
      pointer_.setDragging(this, false);
      break;
    default:
      break;
  }
}

// Qt would move the window to another display.
void WaylandPanel::screenGoes(const QScreen* screen) {
  if (isShown() && content_->screen() == screen) lose();
}

void WaylandPanel::followScreens() {
  if (!placement_) return;
  if (!applyPlacement() && isShown()) lose();
  applyReservation();
}

void WaylandPanel::hide() {
  content_->hide();
  heldButton_ = Qt::NoButton;
  held_.rest();
  lendKeys();
  pointer_.setPlace(this, std::nullopt);
  pointer_.setDragging(this, false);
  applyArea();
  applyReservation();
}

void WaylandPanel::lose() {
  if (!isShown()) return;
  hide();
  QMetaObject::invokeMethod(this, &Panel::closed, Qt::QueuedConnection);
}

// Qt's idea of where the window is comes from here too: it is what menus and tips find their place by.
bool WaylandPanel::applyPlacement() {
  QScreen* screen = placement_ ? screens_.native(placement_->screen) : nullptr;
  if (!screen) return false;
  const QRect outer = placement_->rectangle.marginsAdded(placement_->margins);
  if (content_->screen() != screen && !content_->isVisible()) content_->setScreen(screen);
  const bool isUppermost = isAboveFullscreen_ && !order_.panelsGiveWay();
  LayerLook look = LayerLook::at(outer, isUppermost ? Layer::Overlay : Layer::Top);
  // A compositor that judges once needs no help, and would have to be given a new window.
  const bool isLent = order_.keysAreTaken() && !session_.judgesKeysOnce();
  look.takesKeys = keyboard_ == Keyboard::Exclusive && !isLent;
  const QRect place(screen->geometry().topLeft() + outer.topLeft(), look.size);
  if (heldButton_ != Qt::NoButton && place.topLeft() != content_->pos()) held_.leave(content_->pos());
  content_->setGeometry(place);
  if (layer_) layer_->setLook(look);
  applyArea();
  return true;
}

void WaylandPanel::applyArea() {
  const QRegion area = isShown() ? input_.value_or(QRegion(content_->rect())) : QRegion();
  pointer_.setArea(this, area.translated(content_->geometry().topLeft()));
}

// The bars of others at that edge keep a part of it already, and the compositor adds up what each keeps.
void WaylandPanel::applyReservation() {
  if (!placement_) return;
  QScreen* native = screens_.native(placement_->screen);
  int zone = 0;
  if (native && isShown() && thickness_ > 0) {
    const Screen screen = screens_.screen(placement_->screen);
    const double inset =
        edge_ == Edge::Top ? screen.usable.top() - screen.frame.top() : screen.frame.bottom() - screen.usable.bottom();
    zone = std::max(0, thickness_ - qRound(inset));
  }
  screens_.noteReservation(placement_->screen, edge_, zone);
  if (zone == 0) {
    reservation_.reset();
    return;
  }
  if (!reservation_) {
    reservation_ = std::make_unique<ClearWindow>(session_);
    reservation_->setInput({});
  }
  const int y = edge_ == Edge::Top ? 0 : native->size().height() - 1;
  reservation_->stand(*native, QRect(0, y, native->size().width(), 1), LayerLook::reservation(edge_, zone));
}

}  // namespace tarnwick
