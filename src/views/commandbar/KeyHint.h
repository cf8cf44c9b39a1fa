#pragma once

#include <QList>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <utility>

#include "views/theme/Typography.h"

namespace tarnwick {

struct ControlLook;

/// What keys do, as "↩ open · Ctrl+R reveal": the keys drawn as caps, the words between them.
class KeyHint {
 public:
  /// A part between blanks is a key where it is an arrow, joins keys with "+" or begins with "⌘".
  explicit KeyHint(const QString& text);

  double width() const { return width_; }
  /// In the middle of the height of a box as wide as it.
  void draw(QPainter& painter, const QRectF& box, const ControlLook& look, bool mirrored) const;

 private:
  struct Part {
    TextLine line;
    double x = 0;
    double width = 0;
    bool isKey = false;
    std::pair<double, double> combination{};  ///< Where the keys begin and end to which it belongs.
  };
  void add(const QString& text, bool isKey, double gap);

  QList<Part> parts_;
  double width_ = 0;
};

}  // namespace tarnwick
