#pragma once

#include <QImage>

#include "desktop/TestDesk.h"

namespace tarnwick::testing {

/// What is the same on every Wayland compositor.
class CompositorDesk : public TestDesk {
 public:
  void showTwo() override {}
  void showOne() override {}
  QRect display(int number) override;
  // On a window in the middle, and beside the panels of the starter dock.
  QPoint away() const override { return {450, 200}; }
  bool passesClicksOn() const override { return false; }
  void settle() override;
  bool isPainted(QPoint place) override;
  bool takesClicks(QPoint place, QWidget& window) override;
  std::unique_ptr<OtherWindow> bar(int thickness) override;

 protected:
  /// Of one display, in device pixels.
  virtual QImage screenshot(const QString& display) = 0;
};

}  // namespace tarnwick::testing
