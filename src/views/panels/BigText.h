#pragma once

#include <QPainter>
#include <QPointF>
#include <QString>
#include <QWidget>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// A figure at any size, with the digits of the display style. `alignment` says which end `baseline` is. Returns the
/// width that it takes.
double drawBigText(QPainter& painter, const QString& text, QPointF baseline, double size, const QColor& color,
                   Qt::Alignment alignment = Qt::AlignLeft);
double bigTextWidth(const QString& text, double size);

/// A result that is as large as its place allows, or a sentence there.
class ResultView final : public QWidget {
  Q_OBJECT
 public:
  explicit ResultView(QWidget* parent = nullptr);

  /// The same number from its longest form to its shortest.
  void setResult(const QStringList& forms, const QString& unit = {});
  void setSentence(const QString& sentence);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStringList forms_;
  QString unit_;
  QString sentence_;
};

}  // namespace tarnwick
