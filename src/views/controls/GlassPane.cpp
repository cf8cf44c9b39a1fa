#include "views/controls/GlassPane.h"

#include <QCoreApplication>
#include <QEvent>

namespace tarnwick {

GlassPane::GlassPane(const Shape& shape) : shape_(shape), frame_(new QVBoxLayout(this)) {
  setAttribute(Qt::WA_NoSystemBackground);
  frame_->setSpacing(0);
  setLook(look_);
}

GlassPane::~GlassPane() = default;

QMargins GlassPane::margins() const { return Glass::margins(look_.palette.panel, shape_.shadowScale); }

double GlassPane::corner() const { return theme::kPanelCorner / shape_.shadowScale; }

void GlassPane::setLook(const ControlLook& look) {
  look_ = look;
  frame_->setContentsMargins(margins() + shape_.padding);
  announceLook(*this);
  updateGeometry();
}

void GlassPane::setDockLook(DockStyle style, Backdrop backdrop, bool monochrome) {
  const bool light = Palette::make(style, backdrop, monochrome).light;
  // A pane has a ground of its own, which the plain scheme's colours are meant for.
  const ControlLook wanted{Palette::make(light ? DockStyle::LightGlass : DockStyle::DarkGlass, backdrop, monochrome),
                           look().accent};
  if (wanted != look()) setLook(wanted);
}

void GlassPane::follow(QWidget* content) { content->installEventFilter(this); }

bool GlassPane::event(QEvent* event) {
  const bool result = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest) {
    if (const QSize size = sizeHint(); size != announced_) {
      announced_ = size;
      updateGeometry();
      Q_EMIT sizeChanged();
    }
  }
  return result;
}

bool GlassPane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
  return QWidget::eventFilter(watched, event);
}

void GlassPane::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  glass_.paint(painter, pane(), look_.palette.panel, corner(), shape_.shadowScale);
}

}  // namespace tarnwick
