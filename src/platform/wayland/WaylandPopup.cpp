#include "platform/wayland/WaylandPopup.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <utility>

#include "desktop/PopupPlacement.h"

namespace tarnwick {

WaylandPopup::WaylandPopup(const WaylandSession& session, const WaylandScreens& screens, PanelPointer& pointer,
                           PanelOrder& order, const QWidget& panel, const QString& screen,
                           std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style)
    : session_(session),
      screens_(screens),
      pointer_(pointer),
      order_(order),
      panel_(panel),
      screen_(screen),
      content_(std::move(content)),
      beside_(beside),
      style_(style) {
  content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint |
                           Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that there is space for.
  content_->installEventFilter(this);
  connect(&screens, &WaylandScreens::changed, this, &WaylandPopup::reposition);
  if (style.closesOutside) connect(&pointer, &PanelPointer::pressed, this, &WaylandPopup::pressed);
}

WaylandPopup::~WaylandPopup() { leaveOrder(); }

void WaylandPopup::leaveOrder() {
  order_.setAbovePanels(this, false);
  order_.setTakesKeys(this, false);
}

void WaylandPopup::show() {
  QScreen* screen = screens_.native(screen_);
  if (!screen) return;
  if (style_.abovePanels) order_.setAbovePanels(this, true);
  if (style_.closesOutside) {
    catcher_ = std::make_unique<OutsideCatcher>(session_, pointer_.area());
    connect(catcher_.get(), &OutsideCatcher::caught, this, &WaylandPopup::close);
    const auto follow = [this] {
      if (pointer_.place() && !pointer_.isDragging()) {
        catcher_->endDrag();
      } else {
        catcher_->setDraggedWithin(isDraggedOver_ || pointer_.isDragging());
      }
    };
    connect(&pointer_, &PanelPointer::draggingChanged, catcher_.get(), follow);
    connect(&pointer_, &PanelPointer::placeChanged, catcher_.get(), follow);
  }
  content_->setScreen(screen);
  content_->winId();
  content_->windowHandle()->installEventFilter(this);
  layer_ = new LayerWindow(session_, *content_->windowHandle());
  connect(layer_, &LayerWindow::closed, this, &WaylandPopup::close);
  connect(layer_, &LayerWindow::cleared, content_.get(), qOverload<>(&QWidget::update));
  reposition();
  layer_->setScreen(*screen);
  layer_->prepare();
  content_->show();
  order_.setTakesKeys(this, style_.takesKeys);
}

QRect WaylandPopup::anchor() const { return {panel_.mapToGlobal(beside_.topLeft()), beside_.size()}; }

void WaylandPopup::reposition() {
  const Screen screen = screens_.screen(screen_);
  if (!layer_ || screen.usable.isEmpty()) return;
  const QSize wanted = content_->sizeHint().isValid() ? content_->sizeHint() : content_->size();
  const QRect outline =
      PopupPlacement::outline(anchor(), wanted.shrunkBy(style_.margins), style_.gap, screen.usable.toRect());
  const QRect whole = outline.marginsAdded(style_.margins);
  content_->setGeometry(whole);
  LayerLook look = LayerLook::at(whole.translated(-screen.frame.topLeft().toPoint()), Layer::Overlay);
  look.takesKeys = style_.takesKeys;
  layer_->setLook(look);
  // A shadow takes no clicks.
  layer_->setInput(style_.takesClicks ? QRegion(content_->rect().marginsRemoved(style_.margins)) : QRegion());
  if (catcher_) catcher_->setOpen(pointer_.area() | outline);
}

void WaylandPopup::moveBeside(const QRect& rectangle) {
  beside_ = rectangle;
  reposition();
}

void WaylandPopup::giveBackKeyboard() {
  if (!std::exchange(style_.takesKeys, false)) return;
  order_.setTakesKeys(this, false);
  // Where that is judged once a window comes, only one that goes gives it up.
  if (session_.judgesKeysOnce()) {
    content_->hide();
    catcher_.reset();
  } else {
    reposition();
  }
}

void WaylandPopup::followDrag(QEvent::Type type) {
  if (!catcher_) return;
  switch (type) {
    case QEvent::DragEnter:
    case QEvent::DragLeave:
      isDraggedOver_ = type == QEvent::DragEnter;
      catcher_->setDraggedWithin(isDraggedOver_);
      break;
    case QEvent::Drop:
    case QEvent::Enter:
      isDraggedOver_ = false;
      catcher_->endDrag();
      break;
    default:
      break;
  }
}

bool WaylandPopup::eventFilter(QObject* watched, QEvent* event) {
  if (watched->isWindowType()) followDrag(event->type());
  if (watched != content_.get()) return false;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    close();
    return true;
  }
  if (event->type() == QEvent::Close) close();
  return false;
}

// A press on what the popup belongs to is left to its owner, who may take it for a request to close it.
void WaylandPopup::pressed(const QPointF& place) {
  if (QApplication::activePopupWidget() || anchor().contains(place.toPoint())) return;
  QMetaObject::invokeMethod(this, &WaylandPopup::close, Qt::QueuedConnection);
}

void WaylandPopup::close() {
  if (!content_->isVisible()) return;
  content_->hide();
  catcher_.reset();
  leaveOrder();
  Q_EMIT closed();
}

}  // namespace tarnwick
