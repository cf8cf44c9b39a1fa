#include "views/controls/ScrollArea.h"

#include <QLayout>
#include <QScrollBar>
#include <algorithm>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

class Thumb final : public QWidget {
 public:
  explicit Thumb(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawRounded(painter, rect(), width() / 2.0, lookOf(*this).palette.tertiary);
  }
};

}  // namespace

ScrollArea::ScrollArea(QWidget* parent) : QScrollArea(parent), thumb_(new Thumb(this)) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  stays_.setSingleShot(true);
  stays_.setInterval(theme::kScrollStaysMilliseconds);
  connect(&stays_, &QTimer::timeout, thumb_, &QWidget::hide);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
    moveThumb();
    thumb_->setVisible(verticalScrollBar()->maximum() > 0);
    stays_.start();
  });
}

void ScrollArea::setWidget(QWidget* content) {
  QScrollArea::setWidget(content);
  content->setAutoFillBackground(false);
}

int ScrollArea::contentHeight(int width) const {
  const QLayout* layout = widget() ? widget()->layout() : nullptr;
  if (!layout) return widget() ? widget()->sizeHint().height() : 0;
  // A layout learns from those of the widgets inside only when these have been laid out, from the innermost on.
  const QList<QWidget*> inside = widget()->findChildren<QWidget*>();
  for (auto at = inside.crbegin(); at != inside.crend(); ++at)
    if (QLayout* inner = (*at)->layout()) inner->activate();
  const int wanted = layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : layout->sizeHint().height();
  return std::max(wanted, layout->minimumSize().height());
}

QSize ScrollArea::sizeHint() const { return {width(), contentHeight(width())}; }

void ScrollArea::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  moveThumb();
}

void ScrollArea::moveThumb() {
  const QScrollBar& bar = *verticalScrollBar();
  const int span = bar.maximum() - bar.minimum() + bar.pageStep();
  if (span <= 0) return;
  const int length = std::max(theme::kScrollThumbLeast, height() * bar.pageStep() / span);
  const int range = std::max(1, bar.maximum() - bar.minimum());
  const int y = (height() - length) * (bar.value() - bar.minimum()) / range;
  const int x = layoutDirection() == Qt::RightToLeft ? 0 : width() - theme::kScrollThumb;
  thumb_->setGeometry(x, y, theme::kScrollThumb, length);
  thumb_->raise();
}

}  // namespace tarnwick
