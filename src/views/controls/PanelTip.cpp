#include "views/controls/PanelTip.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QToolTip>
#include <algorithm>

#include "views/controls/ControlLook.h"
#include "views/controls/PlainTip.h"
#include "views/controls/TipBubble.h"
#include "views/theme/MenuStyle.h"
#include "views/theme/WindowFade.h"

namespace tarnwick {
namespace {

constexpr int kTipGap = 6;  ///< Between what it is about and the tip.

bool hasLook(const QWidget& widget) {
  for (const QWidget* at = &widget; at; at = at->parentWidget())
    if (dynamic_cast<const LookSource*>(at)) return true;
  return false;
}

/// Above what it is about, where it hides nothing of the dock below a panel; below it where it would reach beyond
/// `top`.
QRect placeOf(const QSize& size, const QRect& beside, int top) {
  QRect place(QPoint(beside.center().x() - size.width() / 2, beside.top() - kTipGap - size.height()), size);
  if (place.top() < top) place.moveTop(beside.bottom() + 1 + kTipGap);
  return place;
}

}  // namespace

PanelTip::PanelTip(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

PanelTip* PanelTip::installed() { return qApp->findChild<PanelTip*>({}, Qt::FindDirectChildrenOnly); }

void PanelTip::install(bool knowsPlaces) {
  PanelTip* tip = installed();
  if (!tip) tip = new PanelTip(qApp);
  tip->knowsPlaces_ = knowsPlaces;
}

void PanelTip::show(QWidget& widget, const QString& text, const QRect& part) {
  if (PanelTip* tip = installed())
    tip->open(widget, text, part);
  else
    QToolTip::showText(widget.mapToGlobal(part.center()), text.isEmpty() ? text : plainTip(text), &widget, part);
}

bool PanelTip::answer(QAbstractItemView& view, QEvent& event) {
  if (event.type() != QEvent::ToolTip) return false;
  const QModelIndex index = view.indexAt(static_cast<QHelpEvent&>(event).pos());
  show(*view.viewport(), wordsOfTip(index.data(Qt::ToolTipRole).toString()), view.visualRect(index));
  return true;
}

bool PanelTip::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip:
      return watched->isWidgetType() && showFor(static_cast<QWidget&>(*watched));
    case QEvent::Leave:
      if (watched == what_.data()) close();
      return false;
    case QEvent::MouseMove:
      if (watched == what_.data() && !part_.contains(static_cast<QMouseEvent*>(event)->pos())) close();
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
      if (what_) close();
      return false;
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
      if (bubble_ && (watched == what_.data() || watched == bubble_->parent())) drop();
      return false;
    default:
      return false;
  }
}

bool PanelTip::showFor(QWidget& widget) {
  const QString words = wordsOfTip(widget.toolTip());
  if (words.isEmpty() || !hasLook(widget)) return false;
  open(widget, words, widget.rect());
  return true;
}

void PanelTip::open(QWidget& widget, const QString& text, const QRect& part) {
  if (text.isEmpty()) return close();
  if (bubble_ && bubble_->parentWidget() != widget.window()) drop();
  const bool isComposited = MenuStyle::install().isComposited();
  if (!bubble_) {
    bubble_ = new TipBubble(widget.window());
    bubble_->setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                            Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
    bubble_->setAttribute(Qt::WA_ShowWithoutActivating);
    fade_ = isComposited ? new WindowFade(*bubble_, makeClockFor(widget)) : nullptr;
  }
  what_ = &widget;
  part_ = part;
  bubble_->setLook(lookOf(widget).palette.light ? DockStyle::LightGlass : DockStyle::DarkGlass,
                   isComposited ? Backdrop::Plain : Backdrop::Opaque);
  bubble_->setText(text);
  const QMargins around = bubble_->margins();
  const QRect beside(widget.mapToGlobal(part.topLeft()), part.size());
  const QSize pane = bubble_->sizeHint().shrunkBy(around);
  // A panel has no frame, and is where it was put.
  const bool isPlaced = knowsPlaces_ || widget.window()->windowFlags().testFlag(Qt::FramelessWindowHint);
  const QScreen* on = widget.screen();
  const QRect screen = isPlaced && on ? on->geometry() : QRect();
  QRect place = placeOf(pane, beside, screen.isEmpty() ? widget.window()->geometry().top() : screen.top());
  if (!screen.isEmpty())
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - pane.width())));
  bubble_->setGeometry(place.marginsAdded(around));
  bubble_->show();
  if (fade_) fade_->in();
}

void PanelTip::close() {
  what_.clear();
  if (!bubble_) return;
  if (!fade_) return drop();
  fade_->out([this] { drop(); });
}

void PanelTip::drop() {
  what_.clear();
  if (!bubble_) return;
  bubble_->hide();
  bubble_->deleteLater();
  bubble_.clear();
}

}  // namespace tarnwick
