#include "views/families/timers/TimerFace.h"

#include <algorithm>
#include <cmath>

#include "views/controls/ControlTheme.h"
#include "views/panels/BigText.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kFaceRadius = 76;
constexpr double kFaceStroke = 8;
constexpr double kRingSpace = 118;  ///< For the figure.
constexpr double kFigureDrop = 4;   ///< Of its baseline below the centre.
constexpr double kWordDrop = 25;
constexpr double kDotsDrop = 41;
constexpr double kDot = 2.6;
constexpr double kDotPitch = 11.5;
constexpr double kPresent = 0.5;  ///< The strength of the session that runs.

}  // namespace

TimerFace::TimerFace(Shape shape, QWidget* parent) : QWidget(parent), shape_(shape) {
  setFixedHeight(sizeHint().height());
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize TimerFace::sizeHint() const {
  return {200, shape_ == Shape::Ring ? static_cast<int>(kFaceRadius * 2 + kFaceStroke) : theme::kPanelFigureHeight};
}

void TimerFace::setFacts(const TimerFacts& facts) {
  const bool same = facts.figure() == facts_.figure() && facts.share == facts_.share && facts.word == facts_.word &&
                    facts.session == facts_.session && facts.round == facts_.round && facts.phase == facts_.phase;
  facts_ = facts;
  if (same) return;
  setAccessibleName(u"%1, %2"_s.arg(facts.figure(), facts.word));
  update();
}

void TimerFace::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (shape_ == Shape::Ring) {
    paintRing(painter);
    return;
  }
  drawBigText(painter, facts_.figure(), {width() / 2.0, height() / 2.0 + theme::kPanelFigure * 0.36},
              theme::kPanelFigure, lookOf(*this).palette.primary, Qt::AlignHCenter);
}

void TimerFace::paintRing(QPainter& painter) const {
  const ControlLook& look = lookOf(*this);
  const QPointF centre(width() / 2.0, height() / 2.0);
  const QRectF ring(centre.x() - kFaceRadius, centre.y() - kFaceRadius, kFaceRadius * 2, kFaceRadius * 2);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(look.palette.track, kFaceStroke));
  painter.drawEllipse(ring);
  if (facts_.share > 0) {
    constexpr int turn = 360 * 16;
    painter.setPen(QPen(look.accentColor(), kFaceStroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, turn / 4, -static_cast<int>(std::lround(turn * facts_.share)));
  }
  const QString figure = facts_.figure();
  const double size = theme::kPanelFigure * std::min(1.0, kRingSpace / bigTextWidth(figure, theme::kPanelFigure));
  drawBigText(painter, figure, centre + QPointF(0, kFigureDrop), size, look.palette.primary, Qt::AlignHCenter);
  TextLine(facts_.phase.isEmpty() ? facts_.word : facts_.phase, TextStyle::Body)
      .drawCentred(painter, centre + QPointF(0, kWordDrop), look.palette.secondary);

  double x = centre.x() - kDotPitch * (facts_.round - 1) / 2;
  painter.setPen(Qt::NoPen);
  for (int i = 0; i < facts_.round; ++i, x += kDotPitch) {
    const bool present = i == facts_.session && !facts_.rests && !facts_.fresh;
    painter.setBrush(i < facts_.session ? look.accentColor()
                     : present          ? faded(look.accentColor(), kPresent)
                                        : look.palette.track);
    painter.drawEllipse(QPointF(x, centre.y() + kDotsDrop), kDot, kDot);
  }
}

}  // namespace tarnwick
