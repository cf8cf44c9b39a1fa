#include "views/settings/TimeField.h"

#include <QKeyEvent>
#include <QTime>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidth = 72;
constexpr int kDay = 24 * 60;
constexpr int kStep = 15;
constexpr int kPage = 60;

QString written(int minutes) { return QString::asprintf("%02d:%02d", minutes / 60, minutes % 60); }

}  // namespace

TimeField::TimeField(const QString& label, QWidget* parent) : TextField(label, parent) {
  setFixedWidth(kWidth);
  setAlignment(Qt::AlignCenter);
  setMaxLength(5);
  // A screen reader sets the text, which the toolkit does not count as an edit.
  connect(this, &QLineEdit::textChanged, this, &TimeField::written);
}

void TimeField::setMinutes(int minutes) {
  minutes_ = minutes;
  if (isWriting_) return;
  const QSignalBlocker quiet(this);
  setText(tarnwick::written(minutes));
}

void TimeField::written() {
  isWriting_ = true;
  QTime time = QTime::fromString(text().trimmed(), u"H:m"_s);
  if (!time.isValid()) time = QTime::fromString(text().trimmed(), u"H.m"_s);
  const int minutes = time.isValid() ? time.hour() * 60 + time.minute() : minutes_;
  if (std::exchange(minutes_, minutes) != minutes) Q_EMIT minutesChanged(minutes);
  setValid(time.isValid());
}

void TimeField::setValid(bool valid) {
  setFaulty(!valid);
  if (std::exchange(isValid_, valid) != valid) Q_EMIT validityChanged();
}

void TimeField::settle() {
  isWriting_ = false;
  setMinutes(minutes_);
  setValid(true);
}

void TimeField::step(int minutes) {
  minutes_ = ((minutes_ + minutes) % kDay + kDay) % kDay;
  Q_EMIT minutesChanged(minutes_);
  settle();
}

void TimeField::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      return step(kStep);
    case Qt::Key_Down:
      return step(-kStep);
    case Qt::Key_PageUp:
      return step(kPage);
    case Qt::Key_PageDown:
      return step(-kPage);
    case Qt::Key_Escape:
      if (isValid_) break;
      return settle();
    default:
      break;
  }
  TextField::keyPressEvent(event);
}

void TimeField::focusOutEvent(QFocusEvent* event) {
  TextField::focusOutEvent(event);
  if (isValid_) settle();
}

}  // namespace tarnwick
