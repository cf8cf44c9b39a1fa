#include "views/onboarding/DockScene.h"

#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/families/Rooms.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/theme/Glass.h"
#include "views/theme/SceneColors.h"
#include "views/theme/Theme.h"
#include "views/window/LayoutPicture.h"

namespace tarnwick {
namespace {

constexpr double kScale = 0.86;
constexpr double kSceneCorner = 14;
constexpr int kFoot = 14;
constexpr int kLeastWidth = 480;

}  // namespace

DockScene::DockScene(QSize size, QWidget* parent) : QWidget(parent), size_(size) {
  setFixedHeight(size.height());
  setMinimumWidth(kLeastWidth);
  setMaximumWidth(size.width());
}

void DockScene::render() {
  SystemScheduler scheduler;
  DockView view(scheduler);
  view.setAttribute(Qt::WA_TranslucentBackground);
  DockRow row = SnapshotFixture::starterDock();
  row.runningApps.clear();
  row.widgets.removeIf([](const DockWidget& widget) { return Rooms::comesLater(widget.kind); });
  row.scale = kScale;
  view.setRow(row);
  row.scale = scale_ = kScale * std::min(1.0, (width() - kFoot * 2) / view.idealRowWidth());
  view.setRow(row);
  view.refresh(SnapshotFixture::sources());
  const QSizeF slot(view.idealRowWidth(), theme::kDockHeight * scale_);
  view.resize(QSize(static_cast<int>(std::ceil(slot.width())), static_cast<int>(std::ceil(slot.height())))
                  .grownBy(view.margins()));
  const double ratio = devicePixelRatioF();
  dock_ = QPixmap(view.size() * ratio);
  dock_.setDevicePixelRatio(ratio);
  dock_.fill(Qt::transparent);
  view.render(&dock_, QPoint(), QRegion(), QWidget::DrawChildren);
}

void DockScene::resizeEvent(QResizeEvent* event) {
  if (event->size().width() != event->oldSize().width()) dock_ = {};
  QWidget::resizeEvent(event);
}

void DockScene::paintEvent(QPaintEvent*) {
  if (dock_.devicePixelRatio() != devicePixelRatioF() || dock_.isNull()) render();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(rect()), kSceneCorner, kSceneCorner);
  painter.setClipPath(outline);
  LayoutPicture::paintLake(painter, rect());
  const QSizeF size = dock_.deviceIndependentSize();
  const double below = (size.height() - theme::kDockHeight * scale_) / 2;  // The shadow's share.
  painter.drawPixmap(QPointF(std::round((width() - size.width()) / 2), height() - kFoot + below - size.height()),
                     dock_);
  painter.setClipping(false);
  drawInnerLine(painter, rect(), kSceneCorner, 1, SceneColors().rim);
}

}  // namespace tarnwick
