#pragma once

#include <QPointF>
#include <QWidget>
#include <memory>

#include "motion/SpringDriver.h"

namespace tarnwick {

class FrameClock;
class MovingPicture;

/// Holds a small panel's content and lets it grow out of a point and fade in, and back. While shown and at rest it is
/// nothing but the content, which fills it. It must be the window itself; until `animate` is called nothing is shown.
class PanelPresentation final : public QWidget {
  Q_OBJECT
 public:
  static constexpr double kLeastScale = 0.92;

  PanelPresentation(std::unique_ptr<QWidget> content, std::unique_ptr<FrameClock> clock);
  ~PanelPresentation() override;

  /// The point that stays in its place, as fractions of the content's size: (0.5, 1) is the middle of the lower edge.
  void setAnchor(const QPointF& anchor);
  /// Nothing grows any more; it only fades.
  void setReduceMotion(bool reduceMotion);
  /// Where windows cannot be translucent, everything comes and goes at once, and the window is cut to a pane's outline.
  void setComposited(bool composited);

  /// Shows the content (1) or hides it (0), by the spring of a small panel or at once.
  void animate(double to, bool animated);
  /// 0 hidden, 1 shown.
  double progress() const { return progress_; }
  QWidget& content() const { return *content_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The content is hidden now. The window's owner may close it, not within this signal.
  void vanished();

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void apply();
  void cut();

  QWidget* content_;
  MovingPicture* picture_;
  QPointF anchor_{0.5, 1};
  bool reduceMotion_ = false;
  bool isComposited_ = true;
  double progress_ = 0;
  SpringDriver driver_;
};

}  // namespace tarnwick
