#include "views/theme/LastPicture.h"

#include <QPainter>

#include "views/theme/WindowFade.h"

namespace tarnwick {

void LastPicture::leave(QWidget& of, QWidget& owner, std::unique_ptr<FrameClock> clock) {
  if (!clock) return;
  auto* picture = new LastPicture(of, owner);
  auto* fade = new WindowFade(*picture, std::move(clock));
  fade->jumpIn();
  picture->show();
  picture->raise();
  fade->out([picture] { picture->deleteLater(); });
}

LastPicture::LastPicture(QWidget& of, QWidget& owner) : QWidget(&owner), picture_(of.grab()) {
  if (of.isWindow())
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                   Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
  setAttribute(Qt::WA_TranslucentBackground, of.isWindow());
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setGeometry(of.isWindow() ? of.geometry() : QRect(of.mapTo(&owner, QPoint()), of.size()));
}

void LastPicture::paintEvent(QPaintEvent*) { QPainter(this).drawPixmap(0, 0, picture_); }

}  // namespace tarnwick
