#include "platform/wayland/TransientLayers.h"

#include <QApplication>
#include <QMenu>
#include <QScreen>
#include <QWidget>
#include <utility>

namespace tarnwick {
namespace {

RoleWindow* roleOf(const QWidget* widget) { return widget ? RoleWindow::of(widget->windowHandle()) : nullptr; }

}  // namespace

TransientLayers::TransientLayers(const WaylandSession& session) : session_(session) { qApp->installEventFilter(this); }

TransientLayers::~TransientLayers() = default;

void TransientLayers::openMenu(QMenu& menu, LayerWindow& panel, const std::function<QPoint(const QSize&)>& corner) {
  // A menu that is filled when it is about to show changes its size; its place is corrected then.
  const QMetaObject::Connection filled =
      connect(&menu, &QMenu::aboutToShow, &menu, [&] { menu.move(corner(menu.sizeHint())); });
  opener_ = &panel;
  opening_ = &menu;
  menu.popup(corner(menu.sizeHint()));
  opener_ = nullptr;
  opening_ = nullptr;
  disconnect(filled);
  if (menu.isVisible()) menu.move(corner(menu.size()));
}

bool TransientLayers::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::Show && type != QEvent::Hide && type != QEvent::Move && type != QEvent::Resize) return false;
  if (!watched->isWidgetType()) return false;
  auto& widget = *static_cast<QWidget*>(watched);
  const Qt::WindowType kind = widget.windowType();
  if (kind != Qt::Popup && kind != Qt::ToolTip) return false;
  if (type == QEvent::Show) {
    RoleWindow* parent = event->spontaneous() ? nullptr : parentOf(widget);
    if (parent) adopt(widget, *parent);
  } else if (type == QEvent::Hide) {
    hidden(&widget);
  } else if (widget.isVisible() && roleOf(&widget)) {
    // A move and a change of size come one after the other.
    QMetaObject::invokeMethod(
        &widget, [this, &widget] { place(widget); }, Qt::QueuedConnection);
  }
  return false;
}

// A menu that is opened by another is not always its child.
RoleWindow* TransientLayers::parentOf(const QWidget& widget) const {
  if (&widget == opening_) return opener_;
  const QWidget* above = QApplication::activePopupWidget();
  if (above && above != &widget && widget.windowType() == Qt::Popup) {
    if (RoleWindow* role = roleOf(above)) return role;
  }
  const QWidget* parent = widget.parentWidget();
  return parent ? roleOf(parent->window()) : nullptr;
}

// The window exists by now but is not shown yet.
void TransientLayers::adopt(QWidget& widget, RoleWindow& parent) {
  QWindow* window = widget.windowHandle();
  if (!window) return;
  widget.overrideWindowFlags(widget.windowFlags() | Qt::BypassWindowManagerHint);
  if (QScreen* screen = parent.window().screen(); window->screen() != screen) window->setScreen(screen);
  auto* popup = qobject_cast<PopupWindow*>(RoleWindow::of(window));
  if (!popup) {
    popup = new PopupWindow(session_, *window);
    connect(popup, &PopupWindow::closed, &widget, &QWidget::close);
    connect(popup, &PopupWindow::cleared, &widget, qOverload<>(&QWidget::update));
    connect(popup, &QObject::destroyed, this, [this, gone = &widget] { hidden(gone); });
  }
  popup->setParent(parent);
  popup->setPlace(widget.geometry());
  if (widget.windowType() == Qt::ToolTip) {
    popup->setInput(QRegion());
  } else {
    opened(widget, popup->layer());
  }
  popup->prepare();
}

void TransientLayers::place(QWidget& widget) {
  auto* popup = qobject_cast<PopupWindow*>(roleOf(&widget));
  if (!popup || !widget.isVisible()) return;
  popup->setPlace(widget.geometry());
  if (catcher_) catcher_->setOpen(covered());
}

void TransientLayers::opened(QWidget& widget, LayerWindow* layer) {
  open_.insert(&widget, layer);
  if (layer) layer->borrowKeys(true);
  if (catcher_) {
    catcher_->setOpen(covered());
  } else {
    catcher_ = std::make_unique<OutsideCatcher>(session_, covered());
    connect(catcher_.get(), &OutsideCatcher::caught, this, &TransientLayers::closeAll);
  }
}

void TransientLayers::hidden(const QWidget* widget) {
  const QPointer<LayerWindow> layer = open_.take(widget);
  if (open_.isEmpty()) catcher_.reset();
  const QList<QPointer<LayerWindow>> others = open_.values();
  if (layer && !others.contains(layer)) layer->borrowKeys(false);
}

QRegion TransientLayers::covered() const {
  QRegion region;
  for (auto one = open_.keyBegin(); one != open_.keyEnd(); ++one) region |= (*one)->geometry();
  return region;
}

void TransientLayers::closeAll() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    popup->close();
    if (QApplication::activePopupWidget() == popup) return;
  }
}

}  // namespace tarnwick
