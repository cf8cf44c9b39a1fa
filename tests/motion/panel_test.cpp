#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QSignalSpy>

#include "base/ProbeCounters.h"
#include "support/TestFrameClock.h"
#include "views/panels/PanelPresentation.h"

namespace tarnwick {
namespace {

using test::TestFrameClock;

class PlainPanel final : public QWidget {
 public:
  QSize sizeHint() const override { return {200, 100}; }
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::green); }
};

struct PanelPresentationTest : ::testing::Test {
  PanelPresentationTest() {
    panel.setAttribute(Qt::WA_TranslucentBackground);
    panel.resize(panel.sizeHint());
    panel.show();
    QApplication::processEvents();
    ProbeCounters::reset();
    ProbeCounters::setArmed(true);
  }
  ~PanelPresentationTest() override { ProbeCounters::setArmed(false); }

  /// Where the panel is seen: everything that is not clear, in the window's coordinates.
  QRectF seen() {
    const QImage image = panel.grab().toImage();
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (qAlpha(image.pixel(x, y)) > 0) found |= QRect(x, y, 1, 1);
      }
    }
    const double ratio = panel.devicePixelRatioF();
    return {QPointF(found.topLeft()) / ratio, QSizeF(found.size()) / ratio};
  }
  void moveTo(double progress) {
    panel.animate(1, true);
    while (panel.progress() < progress) clock->beat();
  }

  TestFrameClock* clock = new TestFrameClock;
  PanelPresentation panel{std::make_unique<PlainPanel>(), std::unique_ptr<FrameClock>(clock)};
};

TEST_F(PanelPresentationTest, GrowsOutOfItsAnchorAndFades) {
  EXPECT_TRUE(seen().isEmpty());
  panel.setAnchor({0.25, 1});
  moveTo(0.4);
  const double scale = 0.92 + 0.08 * panel.progress();
  const QRectF now = seen();
  EXPECT_NEAR(now.width(), 200 * scale, 2);
  EXPECT_NEAR(now.height(), 100 * scale, 2);
  EXPECT_NEAR(now.left(), 50 - 50 * scale, 1);
  EXPECT_NEAR(now.bottom(), 100, 0.5);
  EXPECT_NEAR(qAlpha(panel.grab().toImage().pixel(60, 80)), panel.progress() * 255, 1.6);
  clock->beat(5);
  EXPECT_EQ(seen(), QRectF(0, 0, 200, 100));
  EXPECT_EQ(panel.grab().toImage().pixel(0, 0), QColor(Qt::green).rgba());
  EXPECT_EQ(ProbeCounters::snapshot().value(QStringLiteral("movingPicture")), 1);
}

TEST_F(PanelPresentationTest, TellsWhenItIsGone) {
  QSignalSpy vanished(&panel, &PanelPresentation::vanished);
  moveTo(0.5);
  panel.animate(0, true);
  EXPECT_EQ(vanished.count(), 0);
  clock->beat(5);
  EXPECT_EQ(vanished.count(), 1);
  EXPECT_TRUE(seen().isEmpty());
}

TEST_F(PanelPresentationTest, HasPlainerWays) {
  panel.setReduceMotion(true);
  moveTo(0.4);
  EXPECT_EQ(seen(), QRectF(0, 0, 200, 100));
  panel.setComposited(false);
  EXPECT_EQ(panel.progress(), 1) << "it arrives at once";
  EXPECT_FALSE(panel.mask().contains(QPoint(0, 0))) << "the window is cut to round corners";
  EXPECT_TRUE(panel.mask().contains(QPoint(0, panel.height() / 2)));
  panel.animate(0, true);
  EXPECT_EQ(panel.progress(), 0);
  EXPECT_FALSE(clock->isRunning());
  panel.setComposited(true);
  EXPECT_TRUE(panel.mask().isEmpty());
}

}  // namespace
}  // namespace tarnwick
