#include "views/controls/PaneMenu.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "views/controls/Buttons.h"
#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/GlassPane.h"
#include "views/theme/Glass.h"
#include "views/theme/LastPicture.h"
#include "views/theme/MenuMeasures.h"
#include "views/theme/Typography.h"
#include "views/theme/WindowFade.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick {
namespace {

constexpr int kMostWidth = 260;

/// The line around a menu and between its groups, as in menus that are windows.
QColor lineColor(const QWidget& menu) { return windowColors(!lookOf(menu).palette.light).hairline; }

/// What parts two groups.
class Line final : public QWidget {
 public:
  explicit Line(QWidget* parent) : QWidget(parent) { setFixedHeight(theme::kMenuSeparatorHeight); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(QRect(theme::kMenuTextInset, height() / 2, width() - theme::kMenuTextInset * 2, 1),
                     lineColor(*this));
  }
};

/// One entry.
class Row final : public PaintedButton {
 public:
  Row(const QString& label, QWidget* parent) : PaintedButton(label, parent) {
    setFont(Typography::widgetFont(TextStyle::Body));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(label()) + theme::kMenuTextInset * 2, theme::kMenuItemHeight};
  }
  QSize minimumSizeHint() const override { return {0, theme::kMenuItemHeight}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    prepare(painter);
    if (isEnabled() && (underMouse() || isDown() || showsFocus()))
      drawRounded(painter, rect(), theme::kMenuItemCorner, faded(look().palette.primary, theme::kMenuHover));
    const QRect bounds = rect().adjusted(theme::kMenuTextInset, 0, -theme::kMenuTextInset, 0);
    painter.setPen(look().palette.primary);
    painter.drawText(bounds,
                     Qt::AlignVCenter | static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     fontMetrics().elidedText(label(), Qt::ElideMiddle, bounds.width()));
  }
};

/// The visible part of a window that may have space for a shadow around it.
QRect paneOf(const QWidget& window) {
  const auto* pane = window.findChild<const GlassPane*>();
  if (const auto* itself = qobject_cast<const GlassPane*>(&window)) return itself->rect() - itself->margins();
  return pane ? pane->rect().translated(pane->mapTo(&window, QPoint())) - pane->margins() : window.rect();
}

}  // namespace

PaneMenu* PaneMenu::open(QWidget& owner, const QPoint& at, const QString& label, const QList<PaneMenuEntry>& entries) {
  QWidget* window = owner.window();
  for (PaneMenu* other : window->findChildren<PaneMenu*>()) other->close();
  if (std::ranges::none_of(entries, [](const PaneMenuEntry& entry) { return static_cast<bool>(entry.run); }))
    return nullptr;
  auto* menu = new PaneMenu(owner, label, entries);
  const QRect bounds =
      paneOf(*window).marginsRemoved({theme::kMenuMargin, theme::kMenuMargin, theme::kMenuMargin, theme::kMenuMargin});
  const QSize size = menu->sizeHint().boundedTo(bounds.size());
  QPoint place = owner.mapTo(window, at);
  if (menu->isRightToLeft()) place.rx() -= size.width();
  place.setX(std::clamp(place.x(), bounds.left(), std::max(bounds.left(), bounds.right() + 1 - size.width())));
  place.setY(std::clamp(place.y(), bounds.top(), std::max(bounds.top(), bounds.bottom() + 1 - size.height())));
  menu->setGeometry(QRect(place, size));
  menu->show();
  menu->raise();
  (new WindowFade(*menu, makeClockFor(owner)))->in();
  menu->buttons_.first()->setFocus(Qt::PopupFocusReason);
  return menu;
}

PaneMenu::PaneMenu(QWidget& owner, const QString& label, const QList<PaneMenuEntry>& entries)
    : QWidget(owner.window()), before_(owner.window()->focusWidget()) {
  setAccessibleName(label);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(theme::kMenuMargin, theme::kMenuMargin, theme::kMenuMargin, theme::kMenuMargin);
  column->setSpacing(0);
  int width = theme::kMenuLeastWidth;
  for (const PaneMenuEntry& entry : entries) {
    if (entry.text.isEmpty()) {
      column->addWidget(new Line(this));
      continue;
    }
    auto* button = new Row(entry.text, this);
    button->setEnabled(static_cast<bool>(entry.run));
    connect(button, &QPushButton::clicked, this, [this, run = entry.run] { close(run); });
    column->addWidget(button);
    if (button->isEnabled()) buttons_ << button;
    width = std::max(width, button->sizeHint().width() + theme::kMenuMargin * 2);
  }
  setFixedWidth(std::min(width, kMostWidth));
  // Clicks beside it are seen on their way to whatever lies below.
  window()->installEventFilter(this);
  for (QWidget* other : window()->findChildren<QWidget*>())
    if (!isAncestorOf(other) && other != this) other->installEventFilter(this);
}

void PaneMenu::close(const std::function<void()>& run) {
  if (isHidden()) return;
  if (isVisible()) LastPicture::leave(*this, *window(), makeClockFor(*this));
  hide();
  if (before_) before_->setFocus(Qt::PopupFocusReason);
  deleteLater();
  if (run) run();
}

bool PaneMenu::eventFilter(QObject* watched, QEvent* event) {
  const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel;
  if (isPress && !isHidden()) {
    close();
    return true;
  }
  if (event->type() == QEvent::Hide && watched == window()) close();
  return false;
}

void PaneMenu::step(int by) {
  const qsizetype at = buttons_.indexOf(window()->focusWidget());
  const qsizetype next = at < 0 ? 0 : (at + by + buttons_.size()) % buttons_.size();
  buttons_[next]->setFocus(Qt::TabFocusReason);
}

bool PaneMenu::focusNextPrevChild(bool next) {
  step(next ? 1 : -1);
  return true;
}

void PaneMenu::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return close();
  // What is typed is not meant for what lies below.
  event->accept();
}

void PaneMenu::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Palette& palette = lookOf(*this).palette;
  // What lies below must not be read through it.
  QColor ground = palette.panel.bodyTop;
  ground.setAlpha(255);
  drawRounded(painter, QRectF(rect()), theme::kMenuCorner, ground);
  drawInnerLine(painter, QRectF(rect()), theme::kMenuCorner, 1, lineColor(*this));
}

}  // namespace tarnwick
