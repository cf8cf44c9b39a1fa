#pragma once

#include <QList>
#include <functional>
#include <optional>

#include "motion/Fade.h"
#include "views/dock/DockRow.h"
#include "views/dock/RowLayout.h"

namespace tarnwick {

/// How the tiles of a row swell under the pointer. It follows the pointer once a frame, however often the mouse tells
/// of its way, and only in steps that a device pixel shows. The row and its layout are borrowed.
class Magnifier final {
 public:
  /// `swells` tells which items do at all; `changed` is called for each item that is drawn larger or smaller now.
  Magnifier(const DockRow& row, const RowLayout& layout, Animator& animator, std::function<bool(qsizetype item)> swells,
            std::function<void(qsizetype item)> changed);

  /// Device pixels per unit.
  void setRatio(double ratio) { ratio_ = ratio; }
  /// Where the pointer is over the row; none where it is elsewhere or does something else.
  void point(std::optional<double> x);
  /// The row is laid out differently.
  void update();
  /// How many times larger an item is drawn than it is.
  double of(qsizetype item) const;

 private:
  /// Keeps the pointer's pace to that of the frames.
  class Follower final : public Animation {
   public:
    explicit Follower(Magnifier& magnifier) : magnifier_(magnifier) {}
    ~Follower() override { magnifier_.animator_.stop(*this); }
    void follow();
    bool advance(double seconds) override;
    void finish() override {}

   private:
    Magnifier& magnifier_;
    bool moved_ = false;
    bool isFirst_ = false;
  };

  void goToPointer();

  const DockRow& row_;
  const RowLayout& layout_;
  Animator& animator_;
  std::function<bool(qsizetype)> swells_;
  std::function<void(qsizetype)> changed_;
  double ratio_ = 1;
  Fade swell_;  ///< From 0, nobody points here, to 1.
  Follower follower_{*this};
  std::optional<double> pointer_;
  double followed_ = 0;  ///< Where the tiles take the pointer to be.
  QList<double> drawn_;  ///< By item.
};

}  // namespace tarnwick
