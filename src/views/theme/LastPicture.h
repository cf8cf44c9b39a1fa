#pragma once

#include <QPixmap>
#include <QWidget>
#include <memory>

#include "desktop/FrameClock.h"

namespace tarnwick {

/// What something looked like when it closed, going in its place. Clicks go through it; it deletes itself.
class LastPicture final : public QWidget {
  Q_OBJECT
 public:
  /// Of a window, in front of the window `owner`, or of a widget within that. Without a clock nothing is left.
  static void leave(QWidget& of, QWidget& owner, std::unique_ptr<FrameClock> clock);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  LastPicture(QWidget& of, QWidget& owner);

  QPixmap picture_;
};

}  // namespace tarnwick
