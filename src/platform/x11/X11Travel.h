#pragma once

#include <QPoint>
#include <QPointF>
#include <QtGlobal>

namespace tarnwick {

/// Says when it is worth asking where the pointer is. Raw motion says how far a mouse went; as long as that agrees
/// with where the pointer is then found, it need not be asked before it can have reached anything. A tablet or a remote
/// control tells places instead of ways, which never agrees for long: there every motion asks. Pure; root pixels.
class X11Travel {
 public:
  /// Whether the motion that a device reports calls for a question.
  bool moved(quint16 device, const QPointF& way);
  /// A question was sent.
  void asked() { isAsking_ = true; }
  /// The pointer is there, `distance` away from anything of interest.
  void found(const QPoint& place, double distance);
  /// Forgets the distance: something else is of interest now.
  void reset() { left_ = 0; }

 private:
  quint16 device_ = 0;
  int agreements_ = 0;
  bool isAsking_ = false;
  bool isCertain_ = false;  ///< That all of `way_` lies behind `place_`.
  QPoint place_;
  QPointF way_;
  double left_ = 0;
  double meanwhile_ = 0;  ///< Gone while a question was open.
};

}  // namespace tarnwick
