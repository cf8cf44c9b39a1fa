#pragma once

#include <QList>
#include <QProgressBar>
#include <QWidget>
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
  void setEnds(const QString& begin, const QString& end);
  void setChartHeight(int height);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double highest() const;
  QColor colorOf(const ChartSeries& series) const;
  void paintLine(QPainter& painter, const QRectF& box, const ChartSeries& series) const;
  void paintBars(QPainter& painter, const QRectF& box, const ChartSeries& series) const;

  Kind kind_;
  QList<ChartSeries> series_;
  int depth_ = 0;
  std::optional<double> maximum_;
  QString begin_;
  QString end_;
  int chartHeight_ = 64;
};

}  // namespace tarnwick
