#pragma once

#include <QDate>
#include <QHash>
#include <QLocale>
#include <QWidget>

namespace tarnwick {

/// A month of days, with dots below those that hold something. One day is chosen; the mouse, the arrows, Page keys and
/// Home move it, and the month follows.
class MonthGrid final : public QWidget {
  Q_OBJECT
 public:
  explicit MonthGrid(QWidget* parent = nullptr);

  /// Whose words and whose first day of the week are used.
  void setWords(const QLocale& locale);
  /// The first call chooses the day too, and so does a new day while the old today is chosen.
  void setToday(const QDate& today);
  /// How many things each day holds.
  void setCounts(const QHash<QDate, int>& counts);
  void setChosen(const QDate& day);
  const QDate& chosen() const { return chosen_; }
  /// The first day of the month that is shown.
  const QDate& month() const { return month_; }
  /// Shows another month: 1 for the next one, -1 for the one before. The chosen day goes along.
  void turn(int months);
  QSize sizeHint() const override;

  static constexpr int kDays = 7;   ///< In a row.
  static constexpr int kWeeks = 6;  ///< That are shown, whatever the month needs of them.
  /// The day in the first cell.
  QDate firstCell() const;
  /// Where a cell is, counted from the first.
  QRectF cellOf(int index) const;
  /// The day at a point; none where there is no cell.
  QDate dayAt(QPointF point) const;
  /// What one reads of a day: its date, and how much it holds.
  QString words(const QDate& day) const;
  /// The day of the week in a column.
  QString columnWords(int column) const;

 Q_SIGNALS:
  void chosenChanged();
  void monthChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void describe();
  void paintDay(QPainter& painter, int index) const;

  QLocale locale_;
  QDate today_;
  QDate chosen_;
  QDate month_;
  QDate hovered_;
  QHash<QDate, int> counts_;
  int wheel_ = 0;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
