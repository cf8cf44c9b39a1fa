#pragma once

#include <QPointer>
#include <QRect>
#include <chrono>
#include <memory>

#include "dock/DockContent.h"
#include "motion/SpringDriver.h"

class QWindow;

namespace tarnwick {

class FrameClock;
class MovingPicture;

/// Holds a dock's content and moves it in and out of sight. The window that it fills stands still; what slides beyond
/// it is cut off. While shown and at rest it is nothing but the content in its place; while hidden it shows nothing and
/// takes no clicks; in between, a picture of the content slides and fades, and clicks land on what is seen. Where
/// windows cannot be translucent nothing fades, and the outline moves along instead.
///
/// A dock that begins hidden has its content painted once, unseen, when the start is over: fonts, glyphs and icons are
/// there then when it is first called.
///
/// It must be the window itself. Until `animate` is called it is hidden.
class DockContentContainer final : public DockContent {
  Q_OBJECT
 public:
  /// After which nothing of the program's start is left to wait for.
  static constexpr std::chrono::milliseconds kStart{600};

  DockContentContainer(std::unique_ptr<DockContent> content, std::unique_ptr<FrameClock> clock,
                       std::chrono::milliseconds start = kStart);
  ~DockContentContainer() override;

  /// Where the content lies at rest, its margins included, in this widget's coordinates. As long as none is set, the
  /// content fills this widget.
  void setRestingFrame(const QRect& frame);
  QRect restingFrame() const;
  /// How far the content moves between hidden and shown, in device-independent pixels, and which way it goes to hide.
  void setTravel(double travel, bool slidesDown);
  /// Nothing travels any more; it only fades.
  void setReduceMotion(bool reduceMotion);

  /// Shows the content (1) or hides it (0), by the reveal's spring or at once.
  void animate(double to, bool animated);
  /// Gives the content the focus of the keyboard, as soon as it is shown: what is hidden cannot have it.
  void focusContent();
  /// 0 hidden, 1 shown. It may pass 1.
  double progress() const { return progress_; }
  const SpringDriver& driver() const { return driver_; }
  DockContent& content() const { return *content_; }
  /// How far the content is seen from its resting place now, downwards, before it is rounded to pixels.
  double offset() const;

  void configure(const DockGeometry& geometry) override;
  /// Those of the content.
  QMargins margins() const override;
  /// The content's, moved to where it is seen; empty while hidden.
  QRegion outline() const override;
  QRegion inputRegion() const override;

 Q_SIGNALS:
  void pointerLeft();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What of the progress can be seen.
  struct Look {
    bool isHidden = true;
    int shift = 0;    // Device pixels, downwards.
    int opacity = 0;  // 0 to 255.

    bool isAtRest() const { return !isHidden && shift == 0 && opacity == 255; }
    bool operator==(const Look&) const = default;
  };

  Look look() const;
  void apply();
  void warmUpSoon();
  void placeContent();
  int shapeShift() const;
  void takeShape();
  QRegion placed(const QRegion& region) const;

  DockContent* content_;
  MovingPicture* picture_;
  QRect restingFrame_;
  double travel_ = 0;
  bool slidesDown_ = true;
  bool reduceMotion_ = false;
  bool isComposited_ = true;
  double progress_ = 0;
  Look look_;
  QRegion contentOutline_;  ///< As it was when the content's shape changed last: it is asked for in every frame.
  QRegion contentInput_;
  QPointer<QWindow> watched_;
  std::chrono::milliseconds start_;
  bool focusIsWanted_ = false;
  bool isWarm_ = false;  ///< The content was painted, or is about to be.
  SpringDriver driver_;
};

}  // namespace tarnwick
