#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// Several levels beside each other, each a bar that fills from its foot; many are laid out in rows.
class LevelBars final : public QWidget {
  Q_OBJECT
 public:
  explicit LevelBars(const QString& label, QWidget* parent = nullptr);

  /// From 0 to 1.
  void setLevels(const QList<double>& levels);
  /// Above which level a bar warns by its colour.
  void setAlarm(double level);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int rows() const;

  QString label_;
  QList<double> levels_;
  double alarm_ = 1;
};

/// A whole in parts: a bar in shades of the accent, each paler than the one before and the last left empty, and below
/// it what each part is and how much.
class PartedBar final : public QWidget {
  Q_OBJECT
 public:
  struct Part {
    QString name;
    QString amount;
    double share = 0;  ///< Of the whole, from 0 to 1.

    bool operator==(const Part&) const = default;
  };

  explicit PartedBar(const QString& label, QWidget* parent = nullptr);

  void setParts(const QList<Part>& parts);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor colorOf(qsizetype part) const;
  void paintBar(QPainter& painter) const;

  QString label_;
  QList<Part> parts_;
};

}  // namespace tarnwick
