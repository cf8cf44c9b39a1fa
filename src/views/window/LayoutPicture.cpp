#include "views/window/LayoutPicture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>
#include <utility>

#include "views/controls/ControlLook.h"
#include "views/theme/Glass.h"
#include "views/theme/SceneColors.h"

namespace tarnwick {
namespace {

// The grid that everything is drawn on.
constexpr double kWidth = 120;
constexpr double kHeight = 76;
constexpr double kPictureCorner = 7;
constexpr double kBar = 4.6;
constexpr double kHorizon = 51;
constexpr double kMiddle = kWidth / 2;

const QString kWay = QStringLiteral("way");

constexpr QSizeF kDock{56.5, 10.2};
constexpr QSizeF kSystemDock{72, 9.2};
constexpr double kAtBottom = 61;  // The tops of docks at the edges of the screen.
constexpr double kAtTop = 8.5;
constexpr double kBelow = kHeight + 2;
constexpr double kAbovePicture = -12;
constexpr double kSystemTop = 62;

constexpr double kPauseSeconds = 0.8;
constexpr int kTravels = 6;  // Three times there and back.

/// Where things are and how strong they are; what has no strength is not drawn.
struct Scene {
  QPointF dock{kMiddle, kAtBottom};  // The middle of its top.
  double system = 0;                 // How bright the system's dock is.
  double systemTop = kSystemTop;
  double slash = 0;
  QPointF place{kMiddle, kAtTop};  // Of a dashed outline, like dock.
  double dashes = 0;
  double arrows = 0;
  double pointer = 0;
  QPointF pointerTip{};
};

double mixed(double a, double b, double share) { return a + (b - a) * share; }
QPointF mixed(QPointF a, QPointF b, double share) { return a + (b - a) * share; }

Scene mixed(const Scene& a, const Scene& b, double share) {
  return {
      mixed(a.dock, b.dock, share),     mixed(a.system, b.system, share),   mixed(a.systemTop, b.systemTop, share),
      mixed(a.slash, b.slash, share),   mixed(a.place, b.place, share),     mixed(a.dashes, b.dashes, share),
      mixed(a.arrows, b.arrows, share), mixed(a.pointer, b.pointer, share), mixed(a.pointerTip, b.pointerTip, share)};
}

constexpr double kFaint = 0.24;
constexpr double kBright = 0.6;
constexpr double kDashesFaint = 0.58;

Scene atRest(DockLayout layout) {
  switch (layout) {
    case DockLayout::Swap:
      return {.dock = {kMiddle, 48}, .system = kFaint, .arrows = 1};
    case DockLayout::RevealBottom:
      return {.dock = {kMiddle, 46}, .system = kBright, .arrows = 1};
    case DockLayout::Fixed:
      return {.dashes = kDashesFaint};
    case DockLayout::RevealTop:
      return {.dock = {kMiddle, kAtTop}, .arrows = 1};
    case DockLayout::Replace:
      return {.system = kFaint, .systemTop = 43, .slash = 1};
    case DockLayout::ReplaceAutoHide:
      return {.dock = {kMiddle, 69}, .place = {kMiddle, 49.8}, .dashes = 0.92, .arrows = 1};
    case DockLayout::Floating:
      return {
          .dock = {74.3, 34}, .place = {42.2, 17.6}, .dashes = kDashesFaint, .pointer = 1, .pointerTip = {76, 48.6}};
  }
  return {};
}

/// A dock that is fixed stays where it is: the dashes say where else it can be.
bool travels(DockLayout layout) { return layout != DockLayout::Fixed; }

Scene atTheOtherEnd(DockLayout layout) {
  Scene scene = atRest(layout);
  switch (layout) {
    case DockLayout::Swap:
      scene.dock.setY(kBelow);
      scene.system = kBright;
      scene.arrows = 0;
      break;
    case DockLayout::RevealBottom:
      scene.dock.setY(kBelow);
      break;
    case DockLayout::RevealTop:
      scene.dock.setY(kAbovePicture);
      break;
    case DockLayout::Replace:
      scene = {.dock = {kMiddle, kBelow}, .system = kBright};
      break;
    case DockLayout::Fixed:
      break;
    case DockLayout::Floating:
      std::swap(scene.dock, scene.place);
      scene.pointerTip += scene.dock - scene.place;
      break;
    case DockLayout::ReplaceAutoHide:
      scene.dock = scene.place;
      scene.dashes = 0;
      scene.arrows = 0;
      break;
  }
  return scene;
}

QColor strength(QColor color, double share) {
  color.setAlphaF(static_cast<float>(color.alphaF() * share));
  return color;
}

QRectF below(QPointF topMiddle, QSizeF size) { return {topMiddle - QPointF(size.width() / 2, 0), size}; }

void drawLake(QPainter& painter, const SceneColors& colors) {
  QLinearGradient sky(0, 0, 0, kHorizon);
  sky.setColorAt(0, colors.skyTop);
  sky.setColorAt(0.74, colors.skyMiddle);
  sky.setColorAt(1, colors.skyGlow);
  painter.fillRect(QRectF(0, 0, kWidth, kHorizon + 1), sky);
  // Sky and hills reach below the water's edge, so that nothing shines through between them.
  QPainterPath hills(QPointF(0, kHorizon + 1));
  hills.lineTo(0, 49.6);
  hills.cubicTo(8, 40, 19, 35.6, 29, 35.6);
  hills.cubicTo(46, 35.6, 56, 46.6, 70, 46.6);
  hills.cubicTo(84, 46.6, 98, 37.4, kWidth, 41.4);
  hills.lineTo(kWidth, kHorizon + 1);
  painter.fillPath(hills, colors.hill);
  QLinearGradient water(0, kHorizon, 0, kHeight);
  water.setColorAt(0, colors.waterTop);
  water.setColorAt(1, colors.waterBottom);
  painter.fillRect(QRectF(0, kHorizon, kWidth, kHeight - kHorizon), water);
}

void drawDock(QPainter& painter, const QRectF& box, const SceneColors& colors) {
  drawRounded(painter, box, 3.8, colors.dock);
  double x = box.left() + 2.8;
  bool isFirst = true;
  for (const double width : {7.0, 14.0, 7.0, 7.0, 6.2}) {
    drawRounded(painter, QRectF(x, box.top() + 2.6, width, 5), 1.7, isFirst ? colors.accentTile : colors.tile);
    x += width + 2.5;
    isFirst = false;
  }
}

void drawSystemDock(QPainter& painter, const Scene& scene, const SceneColors& colors) {
  if (scene.system <= 0) return;
  const QRectF box = below({kMiddle, scene.systemTop}, kSystemDock);
  drawRounded(painter, box, 3, strength(colors.ink, scene.system * 0.85));
  const QColor icon = strength(colors.ink, std::min(0.94, scene.system * 1.6));
  for (int i = 0; i < 6; ++i) drawRounded(painter, QRectF(box.left() + 4 + i * 11, box.top() + 2.1, 5, 5), 1.4, icon);
}

/// An upright arrow from `top` down to `bottom`, or the other way.
void drawArrow(QPainter& painter, double x, double top, bool isUp) {
  constexpr double length = 9.6;
  constexpr double head = 3.7;
  const double tip = isUp ? top : top + length;
  const double barb = isUp ? tip + head : tip - head;
  painter.drawLine(QPointF(x, top), QPointF(x, top + length));
  painter.drawPolyline(QPolygonF{{x - head, barb}, {x, tip}, {x + head, barb}});
}

void drawArrows(QPainter& painter, DockLayout layout, double share, const SceneColors& colors) {
  if (share <= 0) return;
  painter.setPen(QPen(strength(colors.ink, share), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (layout == DockLayout::Swap) {
    drawArrow(painter, 18.6, 48.2, true);
    drawArrow(painter, 100.8, 48, false);
  }
  if (layout == DockLayout::RevealBottom) drawArrow(painter, kMiddle, 30.4, true);
  if (layout == DockLayout::RevealTop) drawArrow(painter, kMiddle, 25.2, false);
  if (layout == DockLayout::ReplaceAutoHide) drawArrow(painter, kMiddle, 35.2, true);
}

void drawPointer(QPainter& painter, QPointF tip, const SceneColors& colors) {
  const QPolygonF shape{{0, 0}, {0, 10.2}, {2.5, 8}, {4.4, 11.8}, {6.3, 10.8}, {4.5, 7.1}, {7.8, 6.8}};
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.ink);
  painter.drawPolygon(shape.translated(tip));
}

void drawScene(QPainter& painter, DockLayout layout, const Scene& scene) {
  static const SceneColors colors;
  drawLake(painter, colors);
  if (scene.dashes > 0) {
    QPen dashes(strength(colors.ink, scene.dashes), 1, Qt::CustomDashLine, Qt::FlatCap);
    dashes.setDashPattern({2.6, 2.2});
    painter.setPen(dashes);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(below(scene.place, kDock), 3.8, 3.8);
  }
  drawDock(painter, below(scene.dock, kDock), colors);
  drawSystemDock(painter, scene, colors);
  painter.fillRect(QRectF(0, 0, kWidth, kBar), colors.bar);
  drawArrows(painter, layout, scene.arrows, colors);
  if (scene.slash > 0) {
    painter.setPen(QPen(strength(colors.ink, scene.slash), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(21.6, 52.8), QPointF(98.4, 41.8));
  }
  if (scene.pointer > 0) drawPointer(painter, scene.pointerTip, colors);
}

}  // namespace

LayoutPicture::LayoutPicture(DockLayout layout, QSize size, QWidget* parent)
    : QWidget(parent),
      layout_(layout),
      pause_(
          animator_, kPauseSeconds, [] {}, [this] { travelOn(); }) {
  setFixedSize(size);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  connect(&travel_, &SpringSet::moved, this, qOverload<>(&QWidget::update));
  connect(&travel_, &SpringSet::rested, this, &LayoutPicture::arrive);
}

void LayoutPicture::paintLake(QPainter& painter, const QRectF& box) {
  painter.save();
  painter.translate(box.topLeft());
  painter.scale(box.width() / kWidth, box.height() / kHeight);
  drawLake(painter, SceneColors());
  painter.restore();
}

void LayoutPicture::setAtTop(bool atTop) {
  if (std::exchange(atTop_, atTop) != atTop) update();
}

void LayoutPicture::setMoving(bool moving) {
  if (wanted_ == moving) return;
  wanted_ = moving;
  if (moving)
    play();
  else
    rest();
}

void LayoutPicture::setReduceMotion(bool reduce) {
  reduceMotion_ = reduce;
  if (reduce) rest();
}

void LayoutPicture::play() {
  if (!wanted_ || !travels(layout_) || reduceMotion_ || isMoving_ || !isVisible()) return;
  if (!animator_.hasClock()) animator_.setClock(makeClockFor(*this));
  isMoving_ = true;
  travels_ = 0;
  travelOn();
}

void LayoutPicture::travelOn() {
  travel_.setRatio(width() * devicePixelRatioF());
  travel_.animate(kWay, travels_ % 2 == 0 ? 1 : 0);
}

void LayoutPicture::arrive() {
  if (!isMoving_) return;
  if (++travels_ == kTravels) {
    rest();
    return;
  }
  pause_.restart();
}

void LayoutPicture::rest() {
  isMoving_ = false;
  pause_.jump(0);
  travel_.clear();
  update();
}

void LayoutPicture::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  play();
}

void LayoutPicture::hideEvent(QHideEvent* event) {
  rest();
  QWidget::hideEvent(event);
}

void LayoutPicture::paintEvent(QPaintEvent*) {
  const double corner = kPictureCorner * width() / kWidth;
  const double ratio = devicePixelRatioF();
  Scene scene = mixed(atRest(layout_), atTheOtherEnd(layout_), travel_.value(kWay));
  if (layout_ == DockLayout::Fixed && atTop_) std::swap(scene.dock, scene.place);
  QPixmap picture(size() * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  {
    QPainter inner(&picture);
    inner.setRenderHint(QPainter::Antialiasing);
    inner.save();
    inner.scale(width() / kWidth, height() / kHeight);
    drawScene(inner, layout_, scene);
    inner.restore();
    // Taking the corners away keeps them smooth, where a clip would leave steps.
    QPainterPath corners;
    corners.addRect(QRectF(rect()).adjusted(-1, -1, 1, 1));
    corners.addRoundedRect(QRectF(rect()), corner, corner);
    inner.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    inner.fillPath(corners, Qt::black);
  }
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawPixmap(0, 0, picture);
  drawInnerLine(painter, rect(), corner, 1, SceneColors().rim);
}

}  // namespace tarnwick
