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
  bool operator==(const ChartSeries&) const = default;
};

/// A history as a line or as bars over its whole width, between hairlines, with a word at either end below.
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
  /// How a value is written. With it the value under the pointer is told, and what top and foot mean; without it
  /// nothing is.
  void setWords(std::function<QString(double value)> words);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QRectF plot() const;
  double highest() const;
  /// How high a value stands, from 0 to 1.
  double shareOf(double value) const;
  /// How far the values of a series are apart, and the gap between two bars.
  double step(const QRectF& box, qsizetype count) const;
  double gap() const;
  void point(qsizetype value);
  QColor colorOf(const ChartSeries& series) const;
  void paintLine(QPainter& painter, const QRectF& box, const ChartSeries& series) const;
  void paintBars(QPainter& painter, const QRectF& box, const ChartSeries& series) const;
  void paintPointed(QPainter& painter, const QRectF& box) const;
  QRectF paintWord(QPainter& painter, const QString& word, QPointF place, double side) const;

  Kind kind_;
  QList<ChartSeries> series_;
  int depth_ = 0;
  std::optional<double> maximum_;
  double minimum_ = 0;
  std::function<QString(double value)> words_;
  qsizetype pointed_ = -1;  ///< Of the first series; -1 for none.
  QString begin_;
  QString end_;
  int chartHeight_ = 64;
};

}  // namespace tarnwick
