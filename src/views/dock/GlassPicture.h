#pragma once

#include <QObject>
#include <QPainter>
#include <QPixmap>

#include "files/LatestWork.h"
#include "views/dock/DockRow.h"

namespace tarnwick {

/// The user's picture on the glass of a dock: it covers the glass, blurred and with a veil that keeps what is on it
/// readable. It is made off the main thread whenever it has to look different; the last one shows until then, and none
/// where the file cannot be read.
class GlassPicture final : public QObject {
  Q_OBJECT
 public:
  /// Paints it within `glass`, which is a part of `whole`, the glass at its largest. `ratio` is that of the screen. A
  /// light dock has a light veil.
  void paint(QPainter& painter, const QRectF& glass, const QRectF& whole, const DockPicture& look, double corner,
             double ratio, bool light);

 Q_SIGNALS:
  /// It looks different now.
  void made();

 private:
  struct Key {
    DockPicture look;
    QSize size;  // In device pixels.
    double ratio = 1;
    bool light = false;
    bool operator==(const Key&) const = default;
  };

  static QImage render(const Key& key);
  void make(const Key& key);

  Key key_;
  QPixmap picture_;
  LatestWork work_;
};

}  // namespace tarnwick
