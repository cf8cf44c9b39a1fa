#include "platform/wayland/PlainPopup.h"

#include <QKeyEvent>
#include <QWindow>

#include "desktop/PopupPlacement.h"

namespace tarnwick {

PlainPopup::PlainPopup(const WaylandScreens& screens, const QWidget& panel, const QString& screen,
                       std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style)
    : screens_(screens), panel_(panel), screen_(screen), content_(std::move(content)), beside_(beside), style_(style) {
  content_->setWindowFlags((style.closesOutside ? Qt::Popup : Qt::ToolTip) | Qt::FramelessWindowHint |
                           Qt::NoDropShadowWindowHint);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that there is space for.
  content_->installEventFilter(this);
}

void PlainPopup::show() {
  reposition();
  content_->winId();
  content_->windowHandle()->setTransientParent(panel_.windowHandle());
  // The toolkit takes an empty region for none.
  if (!style_.takesClicks) content_->windowHandle()->setMask(QRegion(-1, -1, 1, 1));
  content_->show();
}

void PlainPopup::reposition() {
  const QRect usable = screens_.screen(screen_).usable.toRect();
  if (usable.isEmpty()) return;
  const QRect anchor(panel_.mapToGlobal(beside_.topLeft()), beside_.size());
  const QSize wanted = content_->sizeHint().isValid() ? content_->sizeHint() : content_->size();
  const QRect outline = PopupPlacement::outline(anchor, wanted.shrunkBy(style_.margins), style_.gap, usable);
  content_->setGeometry(outline.marginsAdded(style_.margins));
}

void PlainPopup::moveBeside(const QRect& rectangle) {
  beside_ = rectangle;
  reposition();
}

bool PlainPopup::eventFilter(QObject* watched, QEvent* event) {
  if (watched != content_.get()) return false;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    content_->close();
    return true;
  }
  if (event->type() == QEvent::Close) Q_EMIT closed();
  return false;
}

}  // namespace tarnwick
