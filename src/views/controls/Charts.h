#pragma once

#include <QList>
#include <QProgressBar>
#include <QWidget>
#include <functional>
#include <optional>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// A share of a whole as a bar.
class ProgressBar final : public QProgressBar {
  Q_OBJECT
 public:
  explicit ProgressBar(const QString& label, QWidget* parent = nullptr);

  /// From 0 to 1.
  void setShare(double share);
  /// In place of the look's accent.
  void setAccent(const std::optional<Accent>& accent);
  void setBarHeight(int height);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<Accent> accent_;
  int barHeight_;
};

/// One line of a chart, oldest value first.
struct ChartSeries {
  QList<double> values;
  std::optional<Accent> accent;  ///< The look's where absent.
  QString name = {};             ///< Told with its values where it stands beside another.
  bool operator==(const ChartSeries&) const = default;
};

/// A history as a line or as bars over its whole width, between hairlines, with a word at either end below. What it
/// holds is told where the pointer is, and to the keyboard: the arrows go from value to value.
class ChartView final : public QWidget {
  Q_OBJECT
 public:
  enum class Kind { Line, Bars };
  explicit ChartView(const QString& label, Kind kind = Kind::Line, QWidget* parent = nullptr);

  void setSeries(const QList<ChartSeries>& series);
  /// How many values fill the width; fewer are at its end. 0: as many as there are.
  void setDepth(int depth);
  /// What the full height means; the largest value where absent.
  void setMaximum(const std::optional<double>& maximum);
  /// What its foot means; 0 unless set otherwise. Lower values are at the foot.
  void setMinimum(double minimum);
  void setEnds(const QString& begin, const QString& end);
  void setChartHeight(int height);
  /// How a value is written. With it the value that is pointed at is told, and what top and foot mean; without it
  /// nothing is, and the keyboard passes over the chart.
  void setWords(std::function<QString(double value)> words);
  /// When or where a value was that stands so many before the last: "5 days ago". Empty where that is not known.
  void setPlaces(std::function<QString(qsizetype before)> places);
  /// All that is told of what is pointed at; empty where nothing is.
  QString pointedWords() const;
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QRectF plot() const;
  double highest() const;
  /// How high a value stands, from 0 to 1.
  double shareOf(double value) const;
  /// How far the values of a series are apart, and the gap between two bars.
  double step(const QRectF& box, qsizetype count) const;
  double gap() const;
  /// Where the middle of a value is that stands so many before the last of `count`.
  double middleOf(const QRectF& box, qsizetype before, qsizetype count) const;
  /// How many values can be pointed at.
  qsizetype count() const { return series_.isEmpty() ? 0 : series_.first().values.size(); }
  void point(qsizetype before);
  QString pointedValues() const;
  QString pointedPlace() const;
  QColor colorOf(const ChartSeries& series) const;
  void paintLine(QPainter& painter, const QRectF& box, const ChartSeries& series) const;
  void paintBars(QPainter& painter, const QRectF& box, const ChartSeries& series) const;
  void paintPointed(QPainter& painter, const QRectF& box) const;
  QRectF paintWord(QPainter& painter, const QString& word, QPointF place, double side, const QString& aside = {}) const;

  Kind kind_;
  QList<ChartSeries> series_;
  int depth_ = 0;
  std::optional<double> maximum_;
  double minimum_ = 0;
  std::function<QString(double value)> words_;
  std::function<QString(qsizetype before)> places_;
  qsizetype pointed_ = -1;   ///< So many before the last, which stays where it is when others follow; -1 for none.
  bool byKeyboard_ = false;  ///< Whether the keyboard has brought the focus here.
  QString begin_;
  QString end_;
  int chartHeight_ = 64;
};

}  // namespace tarnwick
