#include "platform/wayland/PlainPanel.h"

#include <QEvent>
#include <QMenu>
#include <QScreen>
#include <QWindow>

#include "desktop/PopupPlacement.h"
#include "platform/wayland/PlainPopup.h"

namespace tarnwick {
namespace {}  // namespace

PlainPanel::PlainPanel(WaylandScreens& screens, std::unique_ptr<QWidget> content)
    : screens_(screens), content_(std::move(content)) {
  content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
  content_->setWindowTitle(QStringLiteral("Tarnwick"));  // Lists of windows show it.
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that it is given.
  content_->installEventFilter(this);
  connect(&screens, &WaylandScreens::changed, this, &PlainPanel::followScreens);
}

void PlainPanel::place(const PanelPlacement& placement) {
  placement_ = placement;
  followScreens();
}

void PlainPanel::followScreens() {
  const QScreen* screen = placement_ ? screens_.native(placement_->screen) : nullptr;
  if (!screen) return;
  const QRect outer = placement_->rectangle.marginsAdded(placement_->margins);
  // A window that the user may not stretch is left floating where others would fill the screen.
  content_->setFixedSize(outer.size().expandedTo(QSize(1, 1)));
  content_->move(screen->geometry().topLeft() + outer.topLeft());
  applyInput();
}

void PlainPanel::setShown(bool shown) {
  if (shown == isShown()) return;
  if (shown && (!placement_ || !screens_.native(placement_->screen))) return;
  content_->setVisible(shown);
  applyInput();
}

void PlainPanel::setInputRegion(const QRegion& region) {
  if (input_ == region) return;
  input_ = region;
  applyInput();
}

// On Wayland a window's mask says what takes clicks, and cuts nothing away; an empty one would mean all of it.
void PlainPanel::applyInput() {
  QWindow* window = content_->windowHandle();
  if (!window || !input_) return;
  window->setMask(input_->isEmpty() ? QRegion(-1, -1, 1, 1) : *input_);
}

void PlainPanel::setKeyboard(Keyboard keyboard) {
  if (keyboard == Keyboard::Exclusive) content_->activateWindow();
}

std::unique_ptr<Popup> PlainPanel::popup(std::unique_ptr<QWidget> content, const QRect& beside,
                                         const PopupStyle& style) {
  const QString screen = placement_ ? placement_->screen : QString();
  auto popup = std::make_unique<PlainPopup>(screens_, *content_, screen, std::move(content), beside, style);
  popup->show();
  return popup;
}

void PlainPanel::openMenu(QMenu& menu, const QRect& beside) {
  if (!placement_ || !isShown()) return;
  const QRect anchor(content_->mapToGlobal(beside.topLeft()), beside.size());
  const QRect usable = screens_.screen(placement_->screen).usable.toRect();
  menu.winId();
  menu.windowHandle()->setTransientParent(content_->windowHandle());
  menu.popup(PopupPlacement::outline(anchor, menu.sizeHint(), PopupPlacement::kMenuGap, usable).topLeft());
}

bool PlainPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == content_.get() && event->type() == QEvent::Close) {
    QMetaObject::invokeMethod(this, &Panel::closed, Qt::QueuedConnection);
  }
  return false;
}

}  // namespace tarnwick
