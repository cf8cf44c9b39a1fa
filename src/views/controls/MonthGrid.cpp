#include "views/controls/MonthGrid.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>

#include "base/LocalFigures.h"
#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/ControlWords.h"
#include "views/controls/MonthAccessible.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kCellWidth = 41;
constexpr double kCellHeight = 34;
constexpr double kLettersHeight = 18;
constexpr double kLettersMiddle = 7;
constexpr double kBelow = 3;  ///< What the last row of cells has too much.
constexpr double kDisc = 28;
constexpr double kDot = 3;
constexpr double kDotPitch = 5;
constexpr double kDotsBelow = 12.5;
constexpr int kMostDots = 3;
constexpr int kWheelStep = 120;

}  // namespace

MonthGrid::MonthGrid(QWidget* parent) : QWidget(parent) {
  installMonthAccessibility();
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(sizeHint().height());
  setAccessibleName(ControlWords::tr("Month"));
}

QSize MonthGrid::sizeHint() const {
  return {static_cast<int>(kCellWidth * kDays), static_cast<int>(kLettersHeight + kCellHeight * kWeeks - kBelow)};
}

void MonthGrid::setWords(const QLocale& locale) {
  if (locale == locale_) return;
  locale_ = locale;
  describe();
}

void MonthGrid::setToday(const QDate& today) {
  if (today == today_) return;
  const bool follows = chosen_ == today_;
  today_ = today;
  if (follows) setChosen(today);
  update();
}

void MonthGrid::setCounts(const QHash<QDate, int>& counts) {
  if (counts == counts_) return;
  counts_ = counts;
  describe();
}

void MonthGrid::setChosen(const QDate& day) {
  if (day == chosen_ || !day.isValid()) return;
  chosen_ = day;
  const QDate month(day.year(), day.month(), 1);
  const bool turned = month != month_;
  month_ = month;
  describe();
  if (hasFocus()) {
    QAccessibleEvent focusEvent(this, QAccessible::Focus);
    focusEvent.setChild(static_cast<int>(firstCell().daysTo(chosen_)));
    QAccessible::updateAccessibility(&focusEvent);
  }
  if (turned) Q_EMIT monthChanged();
  Q_EMIT chosenChanged();
}

void MonthGrid::turn(int months) { setChosen(chosen_.addMonths(months)); }

QDate MonthGrid::firstCell() const {
  return month_.addDays(-((month_.dayOfWeek() - locale_.firstDayOfWeek() + kDays) % kDays));
}

QRectF MonthGrid::cellOf(int index) const {
  int column = index % kDays;
  if (layoutDirection() == Qt::RightToLeft) column = kDays - 1 - column;
  const double width = static_cast<double>(this->width()) / kDays;
  return {width * column, kLettersHeight + kCellHeight * (index / kDays), width, kCellHeight};
}

QDate MonthGrid::dayAt(QPointF point) const {
  for (int i = 0; i < kDays * kWeeks; ++i)
    if (cellOf(i).contains(point)) return firstCell().addDays(i);
  return {};
}

QString MonthGrid::words(const QDate& day) const {
  const int count = counts_.value(day);
  QString words = locale_.toString(day, QLocale::LongFormat);
  if (count == 1) words += u", "_s + ControlWords::tr("1 event");
  if (count > 1) words += u", "_s + ControlWords::tr("%1 events").arg(LocalFigures::number(count, locale_));
  return words;
}

QString MonthGrid::columnWords(int column) const {
  return locale_.standaloneDayName(firstCell().addDays(column).dayOfWeek());
}

void MonthGrid::describe() {
  setAccessibleDescription(words(chosen_));
  update();
}

void MonthGrid::paintEvent(QPaintEvent*) {
  if (!month_.isValid()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  for (int i = 0; i < kDays; ++i) {
    const QRectF cell = cellOf(i);
    drawTextIn(painter, QRectF(cell.left(), 0, cell.width(), kLettersMiddle * 2),
               locale_.standaloneDayName(firstCell().addDays(i).dayOfWeek(), QLocale::NarrowFormat),
               TextStyle::TabLabel, look.palette.secondary, Qt::AlignHCenter);
  }
  for (int i = 0; i < kDays * kWeeks; ++i) paintDay(painter, i);
}

void MonthGrid::paintDay(QPainter& painter, int index) const {
  const Palette& palette = lookOf(*this).palette;
  const QColor accent = lookOf(*this).accentColor();
  const QDate day = firstCell().addDays(index);
  const QRectF cell = cellOf(index);
  const bool inMonth = day.month() == month_.month();
  const bool free = !locale_.weekdays().contains(static_cast<Qt::DayOfWeek>(day.dayOfWeek()));
  QColor ink = !inMonth ? palette.tertiary : free ? palette.secondary : palette.primary;
  QRectF disc(0, 0, kDisc, kDisc);
  disc.moveCenter(cell.center());
  if (day == today_) {
    drawRounded(painter, disc, kDisc / 2, accent);
    ink = palette.inkOnAccent;
  } else if (day == chosen_) {
    drawRounded(painter, disc, kDisc / 2, palette.tab);
  } else if (day == hovered_) {
    drawRounded(painter, disc, kDisc / 2, palette.button);
  }
  if (day == chosen_ && hasFocus() && byKeyboard_)
    drawFocusLine(painter, disc.adjusted(-2, -2, 2, 2), kDisc / 2 + 2, lookOf(*this));
  drawTextIn(painter, cell, locale_.toString(day.day()), day == today_ ? TextStyle::BodyStrong : TextStyle::Body, ink,
             Qt::AlignHCenter);
  const int dots = std::min(counts_.value(day), kMostDots);
  if (dots == 0 || day == today_) return;
  const double first = cell.center().x() - kDotPitch * (dots - 1) / 2;
  for (int i = 0; i < dots; ++i) {
    const QPointF centre(first + kDotPitch * i, cell.center().y() + kDotsBelow);
    drawRounded(painter, QRectF(centre.x() - kDot / 2, centre.y() - kDot / 2, kDot, kDot), kDot / 2,
                inMonth ? accent : palette.tertiary);
  }
}

void MonthGrid::mousePressEvent(QMouseEvent* event) {
  byKeyboard_ = false;
  if (event->button() == Qt::LeftButton) setChosen(dayAt(event->position()));
}

void MonthGrid::mouseMoveEvent(QMouseEvent* event) {
  const QDate day = dayAt(event->position());
  if (day == hovered_) return;
  hovered_ = day;
  update();
}

void MonthGrid::leaveEvent(QEvent*) {
  hovered_ = {};
  update();
}

void MonthGrid::wheelEvent(QWheelEvent* event) {
  wheel_ += event->angleDelta().y();
  if (const int steps = wheel_ / kWheelStep; steps != 0) {
    wheel_ -= steps * kWheelStep;
    turn(-steps);
  }
  event->accept();
}

void MonthGrid::keyPressEvent(QKeyEvent* event) {
  const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
  byKeyboard_ = true;
  switch (event->key()) {
    case Qt::Key_Left:
      return setChosen(chosen_.addDays(-forward));
    case Qt::Key_Right:
      return setChosen(chosen_.addDays(forward));
    case Qt::Key_Up:
      return setChosen(chosen_.addDays(-kDays));
    case Qt::Key_Down:
      return setChosen(chosen_.addDays(kDays));
    case Qt::Key_PageUp:
      return turn(-1);
    case Qt::Key_PageDown:
      return turn(1);
    case Qt::Key_Home:
      return setChosen(today_);
    default:
      QWidget::keyPressEvent(event);
  }
}

void MonthGrid::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QWidget::focusInEvent(event);
  update();
}

}  // namespace tarnwick
