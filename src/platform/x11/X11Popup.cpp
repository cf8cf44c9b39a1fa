#include "platform/x11/X11Popup.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

#include "desktop/PopupPlacement.h"
#include "platform/x11/X11Shape.h"

namespace tarnwick {

X11Popup::X11Popup(X11Events& events, const X11Screens& screens, const QWidget& panel, const QString& screen,
                   std::unique_ptr<QWidget> content, const QRect& beside, const PopupStyle& style)
    : events_(events),
      screens_(screens),
      panel_(panel),
      screen_(screen),
      content_(std::move(content)),
      beside_(beside),
      style_(style),
      focus_(events) {
  Qt::WindowFlags flags =
      Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::NoDropShadowWindowHint;
  if (!style.takesKeys) flags |= Qt::WindowDoesNotAcceptFocus;
  content_->setWindowFlags(flags);
  content_->setAttribute(Qt::WA_TranslucentBackground);
  content_->setAttribute(Qt::WA_ShowWithoutActivating);
  content_->setAttribute(Qt::WA_X11NetWmWindowTypePopupMenu);
  content_->setAttribute(Qt::WA_QuitOnClose, false);
  content_->setMinimumSize(1, 1);  // An explicit one: the content takes the size that there is space for.
  content_->installEventFilter(this);
  connect(&screens, &X11Screens::changed, this, &X11Popup::reposition);
  if (style.closesOutside) {
    buttons_ = events.rawInput().subscribeToButtons();
    connect(&events.rawInput(), &X11RawInput::buttonChanged, this, [this](bool isDown, quint32 time) {
      if (isDown) pressed(time);
    });
    connect(&events.rawInput(), &X11RawInput::answered, this, &X11Popup::judgePress);
  }
}

X11Popup::~X11Popup() { focus_.giveBack(); }

void X11Popup::show() {
  reposition();
  content_->show();
  // No window manager holds up this window: it is on the screen when the server comes to what is asked next. Whatever
  // is typed from then on is for it, though a busy program may process that late.
  if (style_.takesKeys) focus_.take(static_cast<xcb_window_t>(content_->winId()));
}

QRect X11Popup::anchor() const { return {panel_.mapToGlobal(beside_.topLeft()), beside_.size()}; }

void X11Popup::reposition() {
  const QRect usable = screens_.usable(screen_);
  if (usable.isEmpty()) return;
  if (content_->screen() != panel_.screen() && !content_->isVisible()) content_->setScreen(panel_.screen());
  const QSize wanted = content_->sizeHint().isValid() ? content_->sizeHint() : content_->size();
  const QRect outline = PopupPlacement::outline(anchor(), wanted.shrunkBy(style_.margins), style_.gap, usable);
  holdPicture(outline.bottom() < anchor().top());
  content_->setGeometry(outline.marginsAdded(style_.margins));
  applyShape();
}

void X11Popup::moveBeside(const QRect& rectangle) {
  beside_ = rectangle;
  reposition();
}

/// A window that takes another size keeps its picture until the next one is painted. The picture must stay where it
/// is on the screen, by the edge that does not move, and what the window gains must be clear.
void X11Popup::holdPicture(bool isAbove) const {
  const quint32 values[] = {0, isAbove ? XCB_GRAVITY_SOUTH : XCB_GRAVITY_NORTH};
  xcb_change_window_attributes(events_.connection(), static_cast<xcb_window_t>(content_->winId()),
                               XCB_CW_BACK_PIXEL | XCB_CW_BIT_GRAVITY, values);
}

void X11Popup::setComposited(bool isComposited) {
  if (std::exchange(isComposited_, isComposited) != isComposited) applyShape();
}

// A shadow takes no clicks; and without a compositor there is none.
void X11Popup::applyShape() const {
  const auto window = static_cast<xcb_window_t>(content_->winId());
  // A content that has cut itself to a shape keeps it.
  const QRegion whole = content_->rect().marginsRemoved(style_.margins);
  const QRegion outline = content_->mask().isEmpty() ? whole : content_->mask();
  const double scale = content_->devicePixelRatio();
  X11Shape::apply(events_, window, XCB_SHAPE_SK_INPUT, style_.takesClicks ? outline : QRegion(), scale);
  X11Shape::apply(events_, window, XCB_SHAPE_SK_BOUNDING, isComposited_ ? std::nullopt : std::optional(outline), scale);
}

bool X11Popup::eventFilter(QObject* watched, QEvent* event) {
  if (watched != content_.get()) return false;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    close();
    return true;
  }
  if (event->type() == QEvent::Close) close();
  if (event->type() == QEvent::WindowDeactivate && style_.keepsKeys && content_->isVisible())
    focus_.takeFromNewWindow();
  return false;
}

// A menu or a dialog that the content opened takes the click for itself.
void X11Popup::pressed(xcb_timestamp_t time) {
  if (!content_->isVisible() || QApplication::activePopupWidget() || QApplication::activeModalWidget()) return;
  press_ = time;
  question_ = events_.rawInput().ask();
}

// A press on what the popup belongs to is left to its owner, who may take it for a request to close it.
void X11Popup::judgePress(const X11RawInput::Pointer& pointer) {
  if (pointer.question < question_) return;
  const auto time = std::exchange(press_, std::nullopt);
  const auto native = screens_.native(screen_);
  if (!time || !native) return;
  const QRect outline = content_->geometry().marginsRemoved(style_.margins);
  if (native->toRoot(outline).contains(pointer.place) || native->toRoot(anchor()).contains(pointer.place)) return;
  close(*time - 1);
}

void X11Popup::close(xcb_timestamp_t time) {
  if (!content_->isVisible()) return;
  focus_.giveBack(time);
  content_->hide();
  buttons_.reset();
  Q_EMIT closed();
}

}  // namespace tarnwick
