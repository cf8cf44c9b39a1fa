#include "views/window/TitleBar.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

#include "views/controls/Buttons.h"
#include "views/controls/Labels.h"
#include "views/theme/WindowPalette.h"
#include "views/window/AppWindow.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kEnds = 4;

}  // namespace

TitleBar::TitleBar(QWidget& window)
    : QWidget(&window), title_(new TextLabel(window.windowTitle(), TextStyle::Body, Tone::Secondary, this)) {
  title_->setAlignment(Qt::AlignCenter);
  title_->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* close = new IconButton(u"xmark"_s, tr("Close"), this);
  close->setGround(false);
  close->setFocusPolicy(Qt::NoFocus);  // Keys have their own way.
  connect(close, &QPushButton::clicked, &window, &QWidget::close);
  connect(&window, &QWidget::windowTitleChanged, title_, &QLabel::setText);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kEnds, 0, kEnds, 0);
  row->setSpacing(0);
  row->addSpacing(close->sizeHint().width());  // So that the title is in the middle.
  row->addWidget(title_, 1);
  row->addWidget(close);
}

void TitleBar::paintEvent(QPaintEvent*) {
  const auto* window = qobject_cast<const AppWindow*>(parentWidget());
  QPainter(this).fillRect(rect(), windowColors(!window || window->isDark()).side);
}

void TitleBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) window()->windowHandle()->startSystemMove();
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized);
}

}  // namespace tarnwick
