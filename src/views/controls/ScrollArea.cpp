#include "views/controls/ScrollArea.h"

#include <QLayout>
#include <QScrollBar>
#include <algorithm>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"
#include "views/theme/WindowPalette.h"

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

constexpr int kEdge = 40;
constexpr int kArrow = 14;

/// An edge behind which the content goes on.
class Edge final : public QWidget {
 public:
  Edge(bool isLower, QWidget* parent) : QWidget(parent), isLower_(isLower) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(*this);
    const QColor ground = windowColors(!look.palette.light).body;
    QLinearGradient fade(0, isLower_ ? 0 : height(), 0, isLower_ ? height() : 0);
    fade.setColorAt(0, faded(ground, 0));
    fade.setColorAt(0.7, ground);
    painter.fillRect(rect(), fade);
    if (!isLower_) return;
    QRectF arrow(0, 0, kArrow, kArrow);
    arrow.moveCenter({width() / 2.0, height() - kArrow / 2.0 - 2});
    drawControlSymbol(painter, QStringLiteral("chevron.down"), arrow, look.palette.secondary);
  }

 private:
  bool isLower_;
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

void ScrollArea::setShowsMore(bool shows) {
  if (shows == (below_ != nullptr)) return;
  delete above_;
  delete below_;
  above_ = shows ? new Edge(false, this) : nullptr;
  below_ = shows ? new Edge(true, this) : nullptr;
  if (!shows) return;
  connect(verticalScrollBar(), &QScrollBar::valueChanged, below_, [this] { placeEdges(); });
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, below_, [this] { placeEdges(); });
  placeEdges();
}

void ScrollArea::placeEdges() {
  if (!below_) return;
  const QScrollBar& bar = *verticalScrollBar();
  above_->setGeometry(0, 0, width(), kEdge / 2);
  below_->setGeometry(0, height() - kEdge, width(), kEdge);
  above_->setVisible(bar.value() > bar.minimum());
  below_->setVisible(bar.value() < bar.maximum());
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
  placeEdges();
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
