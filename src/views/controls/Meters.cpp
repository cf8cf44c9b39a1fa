#include "views/controls/Meters.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLevelHeight = 38;
constexpr int kLowHeight = 20;  ///< Where there is more than one row.
constexpr qsizetype kInARow = 32;
constexpr int kMostRows = 6;
constexpr double kLevelCorner = 6;
constexpr int kRowGap = 4;

constexpr int kBarHeight = 10;
constexpr double kPartGap = 2;
constexpr int kBelowBar = 8;
constexpr int kLegendLine = 20;
constexpr qsizetype kLegendColumns = 2;
constexpr double kDotSize = 8;
constexpr double kDotGap = 8;
constexpr double kColumnGap = 16;
constexpr double kShades[] = {1, 0.55, 0.3};

double known(double share) { return std::isfinite(share) ? std::clamp(share, 0.0, 1.0) : 0; }

}  // namespace

LevelBars::LevelBars(const QString& label, QWidget* parent) : QWidget(parent), label_(label) {
  setAccessibleName(label);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(sizeHint().height());
}

int LevelBars::rows() const {
  const qsizetype wanted = (levels_.size() + kInARow - 1) / kInARow;
  return static_cast<int>(std::clamp<qsizetype>(wanted, 1, kMostRows));
}

void LevelBars::setLevels(const QList<double>& levels) {
  if (levels == levels_) return;
  levels_ = levels;
  QStringList words;
  for (const double level : levels) words << LocalFigures::percent(std::lround(known(level) * 100));
  setAccessibleDescription(words.join(u", "_s));
  setFixedHeight(sizeHint().height());
  update();
}

QSize LevelBars::sizeHint() const {
  return {200, rows() == 1 ? kLevelHeight : rows() * (kLowHeight + kRowGap) - kRowGap};
}

void LevelBars::setAlarm(double level) {
  alarm_ = level;
  update();
}

void LevelBars::paintEvent(QPaintEvent*) {
  if (levels_.isEmpty()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const qsizetype inARow = (levels_.size() + rows() - 1) / rows();
  const auto count = static_cast<double>(inARow);
  const double gap = inARow <= 8 ? 8 : inARow <= 16 ? 4 : 2;
  const double bar = std::max(1.0, (width() - gap * (count - 1)) / count);
  const double high = rows() == 1 ? kLevelHeight : kLowHeight;
  const double corner = std::min(kLevelCorner, bar / 2);
  for (qsizetype i = 0; i < levels_.size(); ++i) {
    const QRectF box(static_cast<double>(i % inARow) * (bar + gap), static_cast<double>(i / inARow) * (high + kRowGap),
                     bar, high);
    drawRounded(painter, box, corner, look.palette.track);
    const double level = known(levels_[i]) * high;
    if (level < 0.5) continue;
    QRectF filled = box;
    filled.setTop(box.bottom() - std::max(level, std::min(corner, high)));
    drawRounded(painter, filled, std::min(corner, filled.height() / 2),
                levels_[i] > alarm_ ? look.palette.accent(Accent::Red) : look.accentColor());
  }
}

PartedBar::PartedBar(const QString& label, QWidget* parent) : QWidget(parent), label_(label) {
  setAccessibleName(label);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PartedBar::setParts(const QList<Part>& parts) {
  if (parts == parts_) return;
  parts_ = parts;
  QStringList words;
  for (const Part& part : parts) words << part.name + u' ' + part.amount;
  setAccessibleDescription(words.join(u", "_s));
  setFixedHeight(sizeHint().height());
  update();
}

QSize PartedBar::sizeHint() const {
  const auto lines = static_cast<int>((parts_.size() + kLegendColumns - 1) / kLegendColumns);
  return {200, kBarHeight + (lines > 0 ? kBelowBar + lines * kLegendLine : 0)};
}

QColor PartedBar::colorOf(qsizetype part) const {
  const ControlLook& look = lookOf(*this);
  if (part + 1 == parts_.size()) return look.palette.track;
  return faded(look.accentColor(), kShades[std::min<std::size_t>(static_cast<std::size_t>(part), 2)]);
}

void PartedBar::paintBar(QPainter& painter) const {
  const QRectF box(0, 0, width(), kBarHeight);
  QPainterPath outline;
  outline.addRoundedRect(box, box.height() / 2, box.height() / 2);
  painter.save();
  painter.setClipPath(outline);
  const Mirroring mirror(*this);
  double left = 0;
  for (qsizetype i = 0; i < parts_.size(); ++i) {
    const bool last = i + 1 == parts_.size();
    const double right = last ? box.width() : left + known(parts_[i].share) * box.width();
    const double end = last ? right : right - kPartGap;
    if (end > left) painter.fillRect(mirror(QRectF(left, 0, end - left, box.height())), colorOf(i));
    left = std::max(left, right);
  }
  painter.restore();
}

void PartedBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  paintBar(painter);
  const Mirroring mirror(*this);
  const double column = (width() - kColumnGap) / kLegendColumns;
  for (qsizetype i = 0; i < parts_.size(); ++i) {
    const QRectF line(static_cast<double>(i % kLegendColumns) * (column + kColumnGap),
                      kBarHeight + kBelowBar + static_cast<double>(i / kLegendColumns) * kLegendLine, column,
                      kLegendLine);
    const QRectF dot(line.left(), line.center().y() - kDotSize / 2, kDotSize, kDotSize);
    drawRounded(painter, mirror(dot), kDotSize / 2, colorOf(i));
    const TextLine amount(parts_[i].amount, TextStyle::ListRow);
    mirror.end(painter, amount, {line.right(), line.center().y() + amount.capHeight() / 2}, look.palette.primary);
    const QRectF name(dot.right() + kDotGap, line.top(), line.right() - amount.width() - dot.right() - kDotGap * 2,
                      line.height());
    drawTextIn(painter, mirror(name), parts_[i].name, TextStyle::Caption, look.palette.secondary, mirror.reading());
  }
}

}  // namespace tarnwick
